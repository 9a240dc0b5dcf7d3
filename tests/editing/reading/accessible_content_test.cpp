#include "tvx/editing/reading/accessible_content.h"

#include <gmock/gmock.h>

#include "editing/editing_fixture.h"
#include "tvx/editing/reading/accessible_kind.h"

namespace tvx::editing::test {

using testing::ElementsAre;

class AccessibleContentTest : public EditingFixture {
 protected:
  /// Of the host's first child; what is offered by itself is written as "*".
  std::string read(std::string_view html) {
    load(html);
    return text_of(*content(first()));
  }
  dom::Element& first() { return *dom::as<dom::Element>(host.first_child()); }
  static std::unique_ptr<AccessibleContent> content(dom::Element& element) {
    return std::make_unique<AccessibleContent>(element);
  }
  static std::string text_of(const AccessibleContent& content) {
    if (!content.has_text()) return "-";
    std::u16string text = content.text();
    std::ranges::replace(text, AccessibleContent::object, u'*');
    return to_utf8(text);
  }
  static std::vector<std::string> names(const AccessibleContent& content) {
    std::vector<std::string> all;
    for (const dom::Element* child : content.children()) all.push_back(to_utf8(child->name().text()));
    return all;
  }
};

TEST_F(AccessibleContentTest, ALineIsTheTextThatIsSeen) {
  EXPECT_EQ(read("<p>  one\n <b>two <i> three</i></b> <!-- x --> </p>"), "one two three");
  EXPECT_EQ(read("<p>a<span style='display:none'>x</span>b</p>"), "ab");
  EXPECT_EQ(read("<p>a&nbsp; b</p>"), "a\u00A0 b");
  EXPECT_EQ(read("<pre>a  b\n c</pre>"), "a  b\n c");
}

TEST_F(AccessibleContentTest, BreaksDivideLinesAndTheOneThatHoldsALineOpenIsNothing) {
  EXPECT_EQ(read("<p>a<br>b<br></p>"), "a\nb");
  EXPECT_EQ(read("<p><br></p>"), "");
  EXPECT_EQ(read("<p>a <br> b</p>"), "a\nb");
}

TEST_F(AccessibleContentTest, TheTextOfALinkIsPartOfTheLine) {
  load("<p>see <a href=x>the <img src=y> page</a> or <a name=z>that</a></p>");
  EXPECT_EQ(text_of(*content(first())), "see the * page or that");
  EXPECT_THAT(names(*content(first())), ElementsAre("a"));
  dom::Element& link = *content(first())->children().front();
  EXPECT_EQ(text_of(*content(link)), "the * page");
  EXPECT_THAT(names(*content(link)), ElementsAre("img"));
}

TEST_F(AccessibleContentTest, ThingsInALineAreOneUnitEach) {
  EXPECT_EQ(read("<p>a<img>b<input><select><option>no</select></p>"), "a*b**");
  EXPECT_THAT(names(*content(first())), ElementsAre("img", "input", "select"));
}

TEST_F(AccessibleContentTest, AnItemWithALineAndAListHasBoth) {
  load("<ul>\n<li>one\n<ul><li>in</ul>\n more</li>\n</ul>");
  EXPECT_EQ(text_of(*content(first())), "-");
  dom::Element& item = *content(first())->children().front();
  EXPECT_EQ(text_of(*content(item)), "one*more");
  EXPECT_THAT(names(*content(item)), ElementsAre("ul"));
}

TEST_F(AccessibleContentTest, WhatHoldsOnlyBlocksHasNoTextAndWhatIsEmptyHas) {
  EXPECT_EQ(read("<div> <p>a</p> <p>b</p> </div>"), "-");
  EXPECT_EQ(read("<blockquote></blockquote>"), "");
  EXPECT_EQ(read("<ul></ul>"), "-");
}

TEST_F(AccessibleContentTest, TheCellsOfATableAreItsChildrenWhateverTheirRows) {
  load("<table><caption>c</caption><tbody><tr><th>a<td>b</tr> <tr><td colspan=2>d</table>");
  EXPECT_EQ(text_of(*content(first())), "-");
  EXPECT_THAT(names(*content(first())), ElementsAre("caption", "th", "td", "td"));
}

TEST_F(AccessibleContentTest, PositionsGoBothWays) {
  load("<p>a  b<b>c</b><img>d</p>");
  const auto read = content(first());
  ASSERT_EQ(text_of(*read), "a bc*d");
  for (Offset offset = 0; offset <= read->text().size(); ++offset)
    EXPECT_EQ(read->offset_of(read->position(offset)), offset);
  dom::Node* text = first().first_child();
  EXPECT_EQ(read->position(1), (dom::Boundary{text, 1}));
  EXPECT_EQ(read->position(3), (dom::Boundary{text, 4}));  // where a caret writes on in the same style
  EXPECT_EQ(read->range_of(3, 4).start.node->parent_element()->tag(), dom::Tag::B);
  EXPECT_EQ(read->offset_of({text, 2}), 2u);  // white space that isn't seen
  EXPECT_EQ(read->offset_of({&host, 0}), 0u);
  EXPECT_EQ(read->offset_of({&host, 1}), 6u);
}

TEST_F(AccessibleContentTest, LinesEndAtBreaksAndBlocks) {
  load("<ul><li>one<br>two<ul><li>in</ul>more</li></ul>");
  dom::Element& item = *content(first())->children().front();
  const auto read = content(item);
  ASSERT_EQ(text_of(*read), "one\ntwo*more");
  using Line = std::pair<Offset, Offset>;
  EXPECT_EQ(read->line_at(0), Line(0, 4));
  EXPECT_EQ(read->line_at(3), Line(0, 4));
  EXPECT_EQ(read->line_at(4), Line(4, 7));
  EXPECT_EQ(read->line_at(7), Line(7, 8));
  EXPECT_EQ(read->line_at(8), Line(8, 12));
  EXPECT_EQ(read->line_at(12), Line(8, 12));
}

TEST_F(AccessibleContentTest, KindsAndNamesSayWhatElementsAre) {
  load(
      "<h3>a</h3><div>b</div><div><p>c</p></div><img src='x/dog.png'><img alt=''><img alt='A dog'>"
      "<label for=f>Your name</label><input id=f name=n><input type=checkbox name=c title=Yes>"
      "<table><tr><th>h<th>i</tr><tr><th>j<td>k</table>");
  std::vector<dom::Element*> all;
  for (dom::Element* element : document->all()) all.push_back(element);
  const auto nth = [&](dom::Tag tag, std::size_t n) -> dom::Element& {
    for (dom::Element* element : all)
      if (element->tag() == tag && n-- == 0) return *element;
    throw std::out_of_range("no such element");
  };
  using dom::Tag;
  EXPECT_EQ(accessible_kind(nth(Tag::H3, 0)), AccessibleKind::Heading);
  EXPECT_EQ(heading_level(nth(Tag::H3, 0)), 3);
  EXPECT_EQ(accessible_name(nth(Tag::Img, 0)), u"dog.png");
  EXPECT_EQ(accessible_name(nth(Tag::Img, 1)), u"");
  EXPECT_EQ(accessible_name(nth(Tag::Img, 2)), u"A dog");
  EXPECT_EQ(accessible_name(nth(Tag::Input, 0)), u"Your name");
  EXPECT_EQ(accessible_name(nth(Tag::Input, 1)), u"Yes");
  EXPECT_EQ(accessible_kind(nth(Tag::Input, 1)), AccessibleKind::CheckBox);
  EXPECT_EQ(accessible_kind(nth(Tag::Th, 0)), AccessibleKind::ColumnHeader);
  EXPECT_EQ(accessible_kind(nth(Tag::Th, 2)), AccessibleKind::RowHeader);
}

TEST_F(AccessibleContentTest, ADeepPageNeedsNoStack) {
  std::string deep;
  for (int i = 0; i < 50000; ++i) deep += "<span>";
  load("<p>a" + deep + "b</p>");
  EXPECT_EQ(text_of(*content(first())), "ab");
}

}  // namespace tvx::editing::test
