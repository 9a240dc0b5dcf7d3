#include "editing/typing.h"

#include <functional>

#include "editing/editing_fixture.h"
#include "editing/keyboard.h"

namespace tvx::editing::test {

class Typing : public EditingFixture {
 protected:
  void expect_gesture(std::string_view before, const std::function<void()>& gesture, std::string_view after) {
    load(before);
    const std::string first = marked();
    gesture();
    EXPECT_EQ(marked(), after) << "from " << before;
    expect_laws(first);
  }
  void expect_typed(std::string_view before, std::u16string_view text, std::string_view after) {
    expect_gesture(
        before, [&] { type_text(editor, text); }, after);
  }
  void expect_enter(std::string_view before, std::string_view after) {
    expect_gesture(
        before, [&] { press_enter(editor); }, after);
  }
  void expect_backspace(std::string_view before, std::string_view after) {
    expect_gesture(
        before, [&] { delete_backward(editor); }, after);
  }
  void expect_delete(std::string_view before, std::string_view after) {
    expect_gesture(
        before, [&] { delete_forward(editor); }, after);
  }
  std::size_t steps() const { return document->journal().depth(); }
};

TEST_F(Typing, WritesIntoTheText) {
  expect_typed("<p>fo[]o</p>", u"xy", "<P>foxy[]o</P>");
  expect_typed("<p>[]foo</p>", u"a", "<P>a[]foo</P>");
  expect_typed("<p>foo<b>bar</b>[]</p>", u"a", "<P>foo<B>bar</B>a[]</P>");
  expect_typed("<p>{}<br></p>", u"a", "<P>a[]</P>");
}

TEST_F(Typing, ReplacesWhatIsSelected) {
  expect_typed("<p>f[o]o</p>", u"xy", "<P>fxy[]o</P>");
  expect_typed("<p>fo[o</p><p>b]ar</p>", u"x", "<P>fox[]ar</P>");
  expect_typed("<p><b>[foo]</b></p>", u"x", "<P><B>x[]</B></P>");
}

TEST_F(Typing, SpacesStayVisible) {
  expect_typed("<p>foo[]</p>", u" ", "<P>foo&nbsp;[]</P>");
  expect_typed("<p>foo[]</p>", u"  ", "<P>foo &nbsp;[]</P>");
  expect_typed("<p>foo&nbsp;[]</p>", u"b", "<P>foo b[]</P>");
  expect_typed("<p>foo[]</p>", u" bar baz", "<P>foo bar baz[]</P>");
  expect_typed("<pre>foo[]</pre>", u"  ", "<PRE>foo  []</PRE>");
}

TEST_F(Typing, ALineBreakIsEnter) {
  expect_typed("<p>foo[]</p>", u"a\nb", "<P>fooa</P><P>b[]</P>");
  expect_typed("<p>foo[]</p>", u"a\r\nb", "<P>fooa</P><P>b[]</P>");
}

TEST_F(Typing, AddressesBecomeLinks) {
  expect_typed("<p>see http://a.b/c.[]</p>", u" ",
               "<P>see <A href=\"http://a.b/c\">http://a.b/c</A>.&nbsp;[]</P>");
  expect_typed("<p>me@a.b[]</p>", u" ", "<P><A href=\"mailto:me@a.b\">me@a.b</A>&nbsp;[]</P>");
  expect_typed("<p>http://[]</p>", u" ", "<P>http://&nbsp;[]</P>");
}

TEST_F(Typing, TakesThePendingLook) {
  load("<p>foo[]</p>");
  editor.execute(u"bold");
  type_text(editor, u"ab");
  type_text(editor, u"c");
  EXPECT_EQ(marked(), "<P>foo<B>abc[]</B></P>");
  editor.execute(u"bold");
  type_text(editor, u"d");
  EXPECT_EQ(marked(), "<P>foo<B>abc</B>d[]</P>");
}

TEST_F(Typing, ARunIsOneStep) {
  load("<p>foo[]</p>");
  for (const char16_t c : std::u16string_view(u"some words")) type_text(editor, std::u16string_view(&c, 1));
  EXPECT_EQ(steps(), 1u);
  press_key(editor, {.key = u"ArrowLeft"});
  type_text(editor, u"x");
  EXPECT_EQ(steps(), 2u);
  press_enter(editor);
  type_text(editor, u"y");
  EXPECT_EQ(steps(), 4u);
  expect_laws("<P>foo[]</P>");
}

TEST_F(Typing, OverwriteTakesTheCharacterBehind) {
  load("<p>a[]bc</p>");
  editor.set_overwrite(true);
  type_text(editor, u"x");
  EXPECT_EQ(marked(), "<P>ax[]c</P>");
  type_text(editor, u"yz");
  EXPECT_EQ(marked(), "<P>axyz[]</P>");
  editor.set_overwrite(false);
}

TEST_F(Typing, EnterSplitsBlocks) {
  expect_enter("<p>foo[]bar</p>", "<P>foo</P><P>[]bar</P>");
  expect_enter("<p>foo[]</p>", "<P>foo</P><P>{}<BR></P>");
  expect_enter("<p><b>fo[]o</b></p>", "<P><B>fo</B></P><P><B>[]o</B></P>");
  expect_enter("<h1>foo[]</h1>", "<H1>foo</H1><P>{}<BR></P>");
  expect_enter("<h1>fo[]o</h1>", "<H1>fo</H1><H1>[]o</H1>");
  expect_enter("<pre>a[]b</pre>", "<PRE>a<BR>[]b</PRE>");
  expect_enter("<blockquote><p>foo[]</p></blockquote>", "<BLOCKQUOTE><P>foo</P><P>{}<BR></P></BLOCKQUOTE>");
}

TEST_F(Typing, EnterInListsMakesItemsAndLeavesFromAnEmptyOne) {
  expect_enter("<ul><li>foo[]</li></ul>", "<UL><LI>foo</LI><LI>{}<BR></LI></UL>");
  expect_enter("<ul><li>foo</li><li>{}<br></li></ul>", "<UL><LI>foo</LI></UL><P>{}<BR></P>");
  expect_enter("<dl><dt>foo[]</dt></dl>", "<DL><DT>foo</DT><DD>{}<BR></DD></DL>");
}

TEST_F(Typing, EnterInACellStaysInTheCell) {
  expect_enter("<table><tbody><tr><td>fo[]o</td></tr></tbody></table>",
               "<TABLE><TBODY><TR><TD><P>fo</P><P>[]o</P></TD></TR></TBODY></TABLE>");
}

TEST_F(Typing, BackspaceTakesOneCharacterAsSeen) {
  expect_backspace("<p>foo[]</p>", "<P>fo[]</P>");
  expect_backspace("<p>a\xF0\x9F\x98\x80[]</p>", "<P>a[]</P>");
  expect_backspace("<p>ae\xCC\x81[]</p>", "<P>a[]</P>");
  expect_backspace("<p>a\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9[]</p>", "<P>a[]</P>");
  expect_delete("<p>a[]e\xCC\x81z</p>", "<P>a[]z</P>");
  expect_delete("<p>a[]\xF0\x9F\x98\x80z</p>", "<P>a[]z</P>");
}

TEST_F(Typing, BackspaceAndDeleteJoinBlocks) {
  expect_backspace("<p>foo</p><p>[]bar</p>", "<P>foo[]bar</P>");
  expect_delete("<p>foo[]</p><p>bar</p>", "<P>foo[]bar</P>");
  expect_backspace("<ul><li>[]foo</li></ul>", "<P>[]foo</P>");
  expect_backspace("<table><tbody><tr><td>a</td><td>[]b</td></tr></tbody></table>",
                   "<TABLE><TBODY><TR><TD>a</TD><TD>[]b</TD></TR></TBODY></TABLE>");
}

TEST_F(Typing, WordsGoWhole) {
  expect_gesture(
      "<p>one two[]</p>", [&] { delete_word_backward(editor); }, "<P>one&nbsp;[]</P>");
  expect_gesture(
      "<p>[]one two</p>", [&] { delete_word_forward(editor); }, "<P>[]&nbsp;two</P>");
  expect_gesture(
      "<p>one t<b>wo</b>[]</p>", [&] { delete_word_backward(editor); }, "<P>one&nbsp;[]</P>");
  expect_gesture(
      "<p>one</p><p>[]two</p>", [&] { delete_word_backward(editor); }, "<P>one[]two</P>");
}

TEST_F(Typing, AParagraphRemainsWhenAllIsDeleted) {
  expect_gesture(
      "<h1>[foo</h1><ul><li>bar</li></ul><p>baz]</p>", [&] { delete_backward(editor); }, "<H1>{}<BR></H1>");
  expect_gesture(
      "{<p>foo</p><p>bar</p>}", [&] { delete_backward(editor); }, "<P>{}<BR></P>");
  expect_gesture(
      "{<table><tbody><tr><td>a</td></tr></tbody></table>}", [&] { delete_forward(editor); },
      "<P>{}<BR></P>");
  expect_gesture(
      "[foo]", [&] { delete_forward(editor); }, "<P>{}<BR></P>");
}

TEST_F(Typing, TabGoesThroughATableAndAddsARow) {
  load("<table><tbody><tr><td>[]a</td><td>b</td></tr></tbody></table>");
  press_tab(editor, false);
  EXPECT_EQ(marked(), "<TABLE><TBODY><TR><TD>a</TD><TD>[]b</TD></TR></TBODY></TABLE>");
  press_tab(editor, true);
  EXPECT_EQ(marked(), "<TABLE><TBODY><TR><TD>[]a</TD><TD>b</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(steps(), 0u);
  expect_gesture(
      "<table><tbody><tr id=\"r\"><td align=\"left\">a</td><td>[]b</td></tr></tbody></table>",
      [&] { press_tab(editor, false); },
      "<TABLE><TBODY><TR id=\"r\"><TD align=\"left\">a</TD><TD>b</TD></TR>"
      "<TR><TD align=\"left\">{}<BR></TD><TD><BR></TD></TR></TBODY></TABLE>");
  load("<p>[]a</p>");
  EXPECT_FALSE(press_tab(editor, false));
}

TEST_F(Typing, KeysFindTheirGestures) {
  load("<p>ab[]</p>");
  EXPECT_EQ(press_key(editor, {.key = u"c", .text = u"c"}), KeyResult::Done);
  EXPECT_EQ(marked(), "<P>abc[]</P>");
  EXPECT_EQ(press_key(editor, {.key = u"z", .control = true}), KeyResult::Done);
  EXPECT_EQ(marked(), "<P>ab[]</P>");
  EXPECT_EQ(press_key(editor, {.key = u"Z", .control = true, .shift = true}), KeyResult::Done);
  EXPECT_EQ(marked(), "<P>abc[]</P>");
  EXPECT_EQ(press_key(editor, {.key = u"ArrowUp"}), KeyResult::AskView);
  EXPECT_EQ(press_key(editor, {.key = u"Home"}), KeyResult::AskView);
  EXPECT_EQ(press_key(editor, {.key = u"F5"}), KeyResult::NotMine);
  EXPECT_EQ(press_key(editor, {.key = u"ArrowLeft", .shift = true}), KeyResult::Done);
  EXPECT_EQ(press_key(editor, {.key = u"b", .control = true}), KeyResult::Done);
  EXPECT_EQ(html(), "<P>ab<B>c</B></P>");
}

}  // namespace tvx::editing::test
