#include "tvx/editing/reading/accessible_tree.h"

#include <gmock/gmock.h>

#include "editing/editing_fixture.h"
#include "tvx/base/work_count.h"
#include "tvx/editing/reading/text_attributes.h"

namespace tvx::editing::test {

using testing::ElementsAre;
using testing::IsEmpty;

class AccessibleTreeTest : public EditingFixture {
 protected:
  void read(std::string_view html) {
    load(html);
    tree = std::make_unique<AccessibleTree>(*document);
  }
  dom::Element& element(dom::Tag tag, std::size_t n = 0) {
    for (dom::Element* each : document->all())
      if (each->tag() == tag && n-- == 0) return *each;
    throw std::out_of_range("no such element");
  }
  dom::Text& text(std::u16string_view data) {
    for (dom::Node* node = &host; node; node = dom::next_in_order(*node))
      if (auto* found = dom::as<dom::Text>(node); found && found->data() == data) return *found;
    throw std::out_of_range("no such text");
  }
  /// "P 3 -removed +inserted", and the children that have gone and come.
  std::vector<std::string> changes() {
    std::vector<std::string> told;
    AccessibleChanges all = tree->take_changes();
    for (const AccessibleChange& change : all.changes) {
      std::string line = to_utf8(change.element->display_name());
      if (!change.removed.empty() || !change.inserted.empty())
        line += " " + std::to_string(change.at) + " -" + to_utf8(change.removed) + " +" +
                to_utf8(change.inserted);
      for (const auto& child : change.gone) line += " gone " + to_utf8(child->display_name());
      for (const auto& child : change.come) line += " come " + to_utf8(child->display_name());
      told.push_back(line);
    }
    for (const auto& left : all.left) told.push_back("left " + to_utf8(left->display_name()));
    return told;
  }
  std::unique_ptr<AccessibleTree> tree;
};

TEST_F(AccessibleTreeTest, AnEditIsToldAsTheFewLettersThatItIs) {
  read("<p>one two</p><p>three</p>");
  tree->follow(element(dom::Tag::P));
  EXPECT_THAT(changes(), IsEmpty());
  dom::replace_data(text(u"one two"), 3, 0, u"s");
  EXPECT_THAT(changes(), ElementsAre("P 3 - +s"));
  dom::replace_data(text(u"ones two"), 0, 4, u"some");
  EXPECT_THAT(changes(), ElementsAre("P 0 -ones +some"));
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(AccessibleTreeTest, WhatNobodyFollowsIsNotTold) {
  read("<p>one</p><p>two</p>");
  tree->follow(element(dom::Tag::P, 1));
  dom::replace_data(text(u"one"), 0, 0, u"x");
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(AccessibleTreeTest, ChildrenThatComeAndGoAreTold) {
  read("<ul><li>a<li>b</ul>");
  dom::Element& list = element(dom::Tag::Ul);
  tree->follow(list);
  tree->follow(element(dom::Tag::Li, 1));
  dom::insert(list, document->create_element(dom::Tag::Li), list.first_child());
  dom::remove(element(dom::Tag::Li, 2));
  EXPECT_THAT(changes(), ElementsAre("UL gone LI come LI", "left LI"));
}

TEST_F(AccessibleTreeTest, WhatIsOnlyMovedHasNotLeft) {
  read("<blockquote><p>a</p></blockquote><blockquote><p>b</p></blockquote>");
  dom::Element& paragraph = element(dom::Tag::P);
  tree->follow(paragraph);
  tree->follow(element(dom::Tag::Blockquote, 1));
  dom::insert(element(dom::Tag::Blockquote, 1), &paragraph);
  EXPECT_THAT(changes(), ElementsAre("BLOCKQUOTE come P"));
  EXPECT_TRUE(tree->follows(paragraph));
}

TEST_F(AccessibleTreeTest, AStyleThatHidesSomethingIsHeard) {
  read("<blockquote><p>a</p></blockquote>");
  dom::Element& outer = element(dom::Tag::Blockquote);
  tree->follow(outer);
  dom::set_attribute(element(dom::Tag::P), dom::names::style, u"display:none");
  EXPECT_THAT(changes(), ElementsAre("BLOCKQUOTE gone P"));
}

TEST_F(AccessibleTreeTest, TheBorderOfTheCurrentElementIsNoEdit) {
  read("<p>a</p>");
  tree->follow(element(dom::Tag::P));
  {
    const dom::MutationScope overlay(*document, dom::MutationKind::Overlay);
    dom::set_attribute(element(dom::Tag::P), dom::names::style, u"border:1px solid");
  }
  EXPECT_FALSE(tree->changed());
  EXPECT_EQ(tree->edits(), 0u);
}

TEST_F(AccessibleTreeTest, PlacesAreThoseOfTheLine) {
  read("<p>see <a href=x>this <b>page</b></a></p><ul><li>a</li></ul>");
  const auto place = tree->place_of({&text(u"page"), 2});
  EXPECT_EQ(place.element, &element(dom::Tag::P));
  EXPECT_EQ(place.offset, 11u);
  const auto between = tree->place_of({&element(dom::Tag::Ul), 0});
  EXPECT_EQ(between.element, &element(dom::Tag::Li));
  EXPECT_EQ(between.offset, 0u);
  EXPECT_EQ(tree->parent(element(dom::Tag::A)), &element(dom::Tag::P));
  EXPECT_EQ(tree->at(text(u"page")), &element(dom::Tag::A));
}

TEST_F(AccessibleTreeTest, WhatIsInAFieldIsNobodysLine) {
  read("<p>a<select><option>b</option></select></p>");
  EXPECT_EQ(tree->at(text(u"b")), &element(dom::Tag::Select));
}

TEST_F(AccessibleTreeTest, ChildrenKnowTheirPlaces) {
  read("<ul><li>a<li>b<li>c</ul>");
  dom::Element& list = element(dom::Tag::Ul);
  for (const bool followed : {false, true}) {
    if (followed) tree->follow(list);
    EXPECT_EQ(tree->index_of(list, element(dom::Tag::Li, 2)), 2);
    EXPECT_EQ(tree->index_of(list, list), -1);
  }
  dom::remove(element(dom::Tag::Li));
  EXPECT_EQ(tree->index_of(list, element(dom::Tag::Li, 1)), 1);
}

TEST_F(AccessibleTreeTest, AttributesGoAsFarAsTheyAreTheSame) {
  read("<p lang=fr>un <b>deux</b><strong> trois</strong> quatre <a href=x>cinq</a></p>");
  dom::Element& paragraph = element(dom::Tag::P);
  const AccessibleContent& content = tree->content(paragraph);
  const AttributeRun bold = attributes_at(paragraph, content, 5, {});
  EXPECT_EQ(bold.attributes.font_weight, 700);
  EXPECT_EQ(bold.attributes.language, u"fr");
  EXPECT_EQ(content.text().substr(bold.from, bold.to - bold.from), u"deux trois");
  const AttributeRun link = attributes_at(paragraph, content, content.text().size(), {});
  EXPECT_TRUE(link.attributes.underlined);
  EXPECT_EQ(content.text().substr(link.from, link.to - link.from), u"cinq");
}

TEST_F(AccessibleTreeTest, AWrongWordIsAStretchOfItsOwn) {
  read("<p>a wrng <i>wo</i>rd</p>");
  dom::Element& paragraph = element(dom::Tag::P);
  const AccessibleContent& content = tree->content(paragraph);
  const WrongWords words = [&](const dom::Text& asked) {
    return &asked == &text(u"a wrng ") ? std::vector<std::pair<Offset, Offset>>{{2, 6}}
                                       : std::vector<std::pair<Offset, Offset>>{};
  };
  const AttributeRun wrong = attributes_at(paragraph, content, 3, words);
  EXPECT_TRUE(wrong.attributes.wrong);
  EXPECT_EQ(std::pair(wrong.from, wrong.to), (std::pair<Offset, Offset>(2, 6)));
  const AttributeRun before = attributes_at(paragraph, content, 0, words);
  EXPECT_FALSE(before.attributes.wrong);
  EXPECT_EQ(std::pair(before.from, before.to), (std::pair<Offset, Offset>(0, 2)));
  const AttributeRun after = attributes_at(paragraph, content, 6, words);
  EXPECT_EQ(std::pair(after.from, after.to), (std::pair<Offset, Offset>(6, 7)));
}

}  // namespace tvx::editing::test
