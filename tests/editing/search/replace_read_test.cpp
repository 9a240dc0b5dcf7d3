#include "tvx/editing/search/replace_read.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class ReplaceReadTest : public EditingFixture {
 protected:
  /// Replaces the first place where a text stands, as a reader sees it.
  std::string replaced(std::string_view html, std::u16string_view sought, std::u16string_view text) {
    load(html);
    const ReadText read(host);
    const std::size_t at = read.text().find(sought);
    if (at == std::u16string::npos) return "not found in " + to_utf8(read.text());
    const auto pieces = read.pieces_of(at, at + sought.size());
    if (!may_replace(pieces)) return "may not be changed";
    const std::string before = this->html();
    {
      const dom::UndoStep step(document->journal(), u"Replace");
      replace_read(pieces, text);
    }
    const std::string after = this->html();
    document->journal().undo();
    EXPECT_EQ(this->html(), before) << "after undo";
    document->journal().redo();
    EXPECT_EQ(to_utf8(reparsed(after)), after) << "parsed again";
    return to_utf8(dom::serialise_children(host, dom::Letters::Lower));
  }
};

TEST_F(ReplaceReadTest, TheStyleOfTheFirstLetterStays) {
  EXPECT_EQ(replaced("<p>one <b>two</b> three</p>", u"two", u"2"), "<p>one <b>2</b> three</p>");
  EXPECT_EQ(replaced("<p>o<b>n</b>e</p>", u"one", u"1"), "<p>1</p>");
  EXPECT_EQ(replaced("<p>x<b>on</b>e<i>!</i></p>", u"one", u"1"), "<p>x<b>1</b><i>!</i></p>");
  EXPECT_EQ(replaced("<p><i>a</i><b>bc</b></p>", u"ab", u"x"), "<p><i>x</i><b>c</b></p>");
}

TEST_F(ReplaceReadTest, WhatIsLeftEmptyGoes) {
  EXPECT_EQ(replaced("<p>a <b><i>one</i></b> b</p>", u"one ", u""), "<p>a b</p>");
  EXPECT_EQ(replaced("<p>a<a id=\"here\">one</a>b</p>", u"one", u""), "<p>a<a id=\"here\"></a>b</p>");
}

TEST_F(ReplaceReadTest, BlanksStaySeen) {
  EXPECT_EQ(replaced("<p>a one b</p>", u"one", u""), "<p>a&nbsp; b</p>");
  EXPECT_EQ(replaced("<p>aone</p>", u"one", u"  x "), "<p>a&nbsp; x&nbsp;</p>");
  EXPECT_EQ(replaced("<pre>a one b</pre>", u"one", u"  "), "<pre>a    b</pre>");
}

TEST_F(ReplaceReadTest, WhiteSpaceWithinTheHitGoesWithIt) {
  EXPECT_EQ(replaced("<p>one\n   two</p>", u"one two", u"3"), "<p>3</p>");
}

TEST_F(ReplaceReadTest, ALineThatHoldsNothingAnyMoreKeepsItsHeight) {
  EXPECT_EQ(replaced("<p>one</p><p>b</p>", u"one", u""), "<p><br></p><p>b</p>");
  EXPECT_EQ(replaced("<p><b>one</b></p>", u"one", u""), "<p><br></p>");
  EXPECT_EQ(replaced("<ul><li>one</li></ul>", u"one", u""), "<ul><li><br></li></ul>");
}

TEST_F(ReplaceReadTest, IslandsAndWhatIsOutsideAreNotChanged) {
  EXPECT_EQ(replaced("<p>a <span contenteditable=\"false\">one</span></p>", u"one", u"x"),
            "may not be changed");
  EXPECT_EQ(replaced("<p>a o<span contenteditable=\"false\">n</span>e</p>", u"one", u"x"),
            "may not be changed");
}

}  // namespace tvx::editing::test
