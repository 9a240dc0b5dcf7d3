#include "tvx/editing/gestures/typing.h"

#include <functional>

#include "editing/editing_fixture.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/gestures/keyboard.h"

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

TEST_F(Typing, BetweenBlocksBeginsTheLineBehind) {
  load("<P>Really[] here</P>");
  const std::string first = marked();
  run({"insertHorizontalRule"});
  type_text(editor, u"x");
  EXPECT_EQ(marked(), "<P>Really</P><HR><P>x[] here</P>");
  expect_laws(first);
  expect_typed("<P>a</P>{}<UL><LI>b</LI></UL>", u"x", "<P>a</P><UL><LI>x[]b</LI></UL>");
  expect_typed("a{}<P>b</P>", u"x", "ax[]<P>b</P>");
}

// A host can put the caret there; what is written in it is in no page.
TEST_F(Typing, WithinALineBreakGoesBesideIt) {
  load("<P><BR></P><P>x</P>");
  editor.selection().collapse({host.first_child()->first_child(), 0});
  type_text(editor, u"one");
  EXPECT_EQ(marked(), "<P>one[]</P><P>x</P>");
  load("<P>a<IMG>b</P>");
  editor.selection().collapse({dom::child_at(*host.first_child(), 1), 0});
  run({"insertText", "c"});
  EXPECT_EQ(html(), "<P>ac<IMG>b</P>");
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

TEST_F(Typing, ASpaceTakesAllOfThePendingLook) {
  load("<p><i><b>red[]</b></i></p>");
  editor.execute(u"italic");
  editor.execute(u"bold");
  type_text(editor, u" house");
  EXPECT_EQ(marked(), "<P><I><B>red</B></I> house[]</P>");
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

// The white space of the source stays where nothing that is seen has gone.
TEST_F(Typing, BackspaceAtTheStartOfThePageOrACellIsNoStep) {
  for (const char* start : {"\n<p>[]a</p>\n", "\n<center>\n<p>[]a</p></center>",
                            "\n<div>\n\n<div>\n<p><b>[]a</b></p></div></div>",
                            "<p>x</p>\n<table>\n<tbody><tr>\n<td>[]a</td></tr></tbody></table>",
                            "<dl><dt>x</dt></dl>\n<table>\n<tbody><tr>\n<td>a</td>\n<td>\n<p>[]b</p></td></"
                            "tr></tbody></table>"}) {
    load(start);
    const std::string before = marked();
    delete_backward(editor);
    EXPECT_EQ(marked(), before);
    EXPECT_EQ(steps(), 0u) << start;
  }
  load("<pre>a\n\n<b>[]b</b></pre>");
  delete_backward(editor);
  EXPECT_EQ(html(), "<PRE>a\n<B>b</B></PRE>");
}

TEST_F(Typing, ATableThatIsSelectedByBackspaceKeepsTheSpaceBesideIt) {
  load("<table><tbody><tr><td>a</td></tr></tbody></table>\n\n<p>[]b</p>");
  const std::string before = html();
  delete_backward(editor);
  EXPECT_EQ(html(), before);
  EXPECT_EQ(steps(), 0u);
  ASSERT_FALSE(editor.selection().collapsed());
  delete_backward(editor);
  EXPECT_EQ(html(), "\n\n<P>b</P>");
}

TEST_F(Typing, AParagraphInThePlaceOfATableStandsBeforeTheSpaceAfterIt) {
  expect_gesture(
      "\n{<table><tbody><tr><td>a</td></tr></tbody></table>}\n\n", [&] { delete_forward(editor); },
      "\n<P>{}<BR></P>\n\n");
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

TEST_F(Typing, TabTakesAListItemDeeperAndBack) {
  expect_gesture(
      "<ul><li>a</li><li>b[]c</li></ul>", [&] { press_tab(editor, false); },
      "<UL><LI>a<UL><LI>b[]c</LI></UL></LI></UL>");
  expect_gesture(
      "<ul><li>a</li><ul><li>b[]c</li></ul></ul>", [&] { press_tab(editor, true); },
      "<UL><LI>a</LI><LI>b[]c</LI></UL>");
  expect_gesture(
      "<ol><li>a</li><li>[b</li><li>c]</li></ol>", [&] { press_tab(editor, false); },
      "<OL><LI>a<OL><LI>[b</LI><LI>c]</LI></OL></LI></OL>");
  load("<ul><li>a[]</li></ul>");
  EXPECT_TRUE(press_tab(editor, true));
  EXPECT_EQ(marked(), "<UL><LI>a[]</LI></UL>") << "the outermost list is left by Enter";
  load("<table><tbody><tr><td><ul><li>a[]</li></ul></td><td>b</td></tr></tbody></table>");
  EXPECT_TRUE(press_tab(editor, false));
  EXPECT_EQ(marked(), "<TABLE><TBODY><TR><TD><UL><LI>a</LI></UL></TD><TD>[]b</TD></TR></TBODY></TABLE>")
      << "in a table Tab walks its cells";
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

// --- tables ---

TEST_F(Typing, TheRowAddedHasACellUnderEachColumn) {
  const auto tab = [&] { press_tab(editor, false); };
  expect_gesture(
      "<table><tbody><tr><td>a</td><td>b</td><td>c</td></tr><tr><td colspan=\"2\">d</td><td>[]e</td></tr>"
      "</tbody></table>",
      tab,
      "<TABLE><TBODY><TR><TD>a</TD><TD>b</TD><TD>c</TD></TR><TR><TD colspan=\"2\">d</TD><TD>e</TD></TR>"
      "<TR><TD colspan=\"2\">{}<BR></TD><TD><BR></TD></TR></TBODY></TABLE>");
  // A cell of two rows ends with the table: a cell of its own continues it.
  expect_gesture(
      "<table><tbody><tr><td rowspan=\"2\">a</td><td>b</td></tr><tr><td>[]c</td></tr></tbody></table>", tab,
      "<TABLE><TBODY><TR><TD rowspan=\"2\">a</TD><TD>b</TD></TR><TR><TD>c</TD></TR>"
      "<TR><TD>{}<BR></TD><TD><BR></TD></TR></TBODY></TABLE>");
  // A cell that reaches below the table's end stands in the new row as well.
  expect_gesture(
      "<table><tbody><tr><td rowspan=\"3\">a</td><td>b</td></tr><tr><td>[]c</td></tr></tbody></table>", tab,
      "<TABLE><TBODY><TR><TD rowspan=\"3\">a</TD><TD>b</TD></TR><TR><TD>c</TD></TR>"
      "<TR><TD>{}<BR></TD></TR></TBODY></TABLE>");
}

TEST_F(Typing, TheRowAddedBehindAHeadIsABody) {
  expect_gesture(
      "<table><thead><tr><th>a</th><th>[]b</th></tr></thead></table>", [&] { press_tab(editor, false); },
      "<TABLE><THEAD><TR><TH>a</TH><TH>b</TH></TR></THEAD><TBODY><TR><TD>{}<BR></TD><TD><BR></TD></TR>"
      "</TBODY></TABLE>");
  expect_gesture(
      "<table><tbody><tr><td>a</td></tr></tbody><tfoot><tr><td>[]f</td></tr></tfoot></table>",
      [&] { press_tab(editor, false); },
      "<TABLE><TBODY><TR><TD>a</TD></TR></TBODY><TFOOT><TR><TD>f</TD></TR><TR><TD>{}<BR></TD></TR></TFOOT>"
      "</TABLE>");
}

TEST_F(Typing, TabGoesFromAHeadIntoTheBodyAndPassesTablesWithin) {
  load(
      "<table><thead><tr><th>[]h</th></tr></thead><tbody><tr><td>x<table><tbody><tr><td>in</td></tr></"
      "tbody></"
      "table>"
      "</td><td>out</td></tr></tbody></table>");
  press_tab(editor, false);
  press_tab(editor, false);
  EXPECT_NE(marked().find("[]out"), std::string::npos) << marked();
  press_tab(editor, true);
  press_tab(editor, true);
  EXPECT_NE(marked().find("[]h"), std::string::npos) << marked();
  press_tab(editor, true);
  EXPECT_NE(marked().find("[]h"), std::string::npos) << "there is nothing before the first cell";
  EXPECT_EQ(steps(), 0u);
}

TEST_F(Typing, DeletionStopsAtATablesEdges) {
  const std::string table = "<TABLE><TBODY><TR><TD>a</TD><TD>b</TD></TR></TBODY></TABLE>";
  expect_backspace("<TABLE><TBODY><TR><TD>[]a</TD><TD>b</TD></TR></TBODY></TABLE>",
                   "<TABLE><TBODY><TR><TD>[]a</TD><TD>b</TD></TR></TBODY></TABLE>");
  expect_delete("<TABLE><TBODY><TR><TD>a[]</TD><TD>b</TD></TR></TBODY></TABLE>",
                "<TABLE><TBODY><TR><TD>a[]</TD><TD>b</TD></TR></TBODY></TABLE>");
  // The first stroke selects the table and is no step; the second takes it.
  load(table + "<P>[]x</P>");
  delete_backward(editor);
  EXPECT_EQ(marked(), "{" + table + "}<P>x</P>");
  EXPECT_EQ(steps(), 0u);
  delete_backward(editor);
  EXPECT_EQ(html(), "<P>x</P>");
  expect_laws("{" + table + "}<P>x</P>");
  load("<P>x[]</P>" + table);
  delete_forward(editor);
  EXPECT_EQ(marked(), "<P>x</P>{" + table + "}");
}

TEST_F(Typing, ASelectedTableGoesWithOneStroke) {
  for (const auto& stroke :
       std::vector<std::function<void()>>{[&] { delete_backward(editor); }, [&] { delete_forward(editor); },
                                          [&] { run({"delete"}); }, [&] { run({"forwardDelete"}); }}) {
    load("<P>a</P><TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE><P>b</P>");
    editor.selection().select_control(*dom::as<dom::Element>(dom::child_at(host, 1)));
    const std::string first = html();
    stroke();
    EXPECT_EQ(html(), "<P>a</P><P>b</P>");
    EXPECT_TRUE(document->journal().undo());
    EXPECT_EQ(html(), first);
    EXPECT_EQ(editor.selection().control(), dom::child_at(host, 1));
  }
}

TEST_F(Typing, TextTakesThePlaceOfASelectedImage) {
  load("<P>a<IMG src=\"i\">b</P>");
  editor.selection().select_control(*dom::as<dom::Element>(dom::child_at(*host.first_child(), 1)));
  const std::string first = marked();
  type_text(editor, u"x");
  EXPECT_EQ(marked(), "<P>ax[]b</P>");
  expect_laws(first);
}

// --- lists, headings, quotes ---

TEST_F(Typing, AnEmptyItemLeavesItsListLevelByLevel) {
  const std::string list = "<UL><LI>a<UL><LI>b</LI><LI>{}<BR></LI></UL></LI></UL>";
  expect_enter(list, "<UL><LI>a<UL><LI>b</LI></UL></LI><LI>{}<BR></LI></UL>");
  expect_gesture(
      list,
      [&] {
        press_enter(editor);
        press_enter(editor);
      },
      "<UL><LI>a<UL><LI>b</LI></UL></LI></UL><P>{}<BR></P>");
}

TEST_F(Typing, ShiftEnterBreaksTheLine) {
  const auto shift_enter = [&] { press_shift_enter(editor); };
  expect_gesture("<P>a[]b</P>", shift_enter, "<P>a<BR>[]b</P>");
  expect_gesture("<P>a[]</P>", shift_enter, "<P>a<BR>{}<BR></P>");
  expect_gesture("<UL><LI>a[]b</LI></UL>", shift_enter, "<UL><LI>a<BR>[]b</LI></UL>");
  expect_gesture("<P>a[bc]d</P>", shift_enter, "<P>a<BR>[]d</P>");
}

TEST_F(Typing, ThePendingLookOutlivesEnter) {
  load("<P>a[]</P>");
  run({"bold"});
  press_enter(editor);
  type_text(editor, u"b");
  EXPECT_EQ(marked(), "<P>a</P><P><B>b[]</B></P>");
}

// --- Overwrite ---

TEST_F(Typing, OverwriteEndsAtTheLineAndTakesWholeCharacters) {
  const auto over = [&](std::string_view before, std::u16string_view text, std::string_view after) {
    load(before);
    const std::string first = marked();
    editor.set_overwrite(true);
    type_text(editor, text);
    editor.set_overwrite(false);
    EXPECT_EQ(marked(), after) << before;
    expect_laws(first);
  };
  over("<P>a[]\xF0\x9F\x98\x80z</P>", u"x", "<P>ax[]z</P>");
  over("<P>a[]e\xCC\x81z</P>", u"x", "<P>ax[]z</P>");
  over("<P>ab[]</P><P>c</P>", u"x", "<P>abx[]</P><P>c</P>");
  over("<P>a[b]c</P>", u"x", "<P>ax[]c</P>");
  over("<P>a[]b</P>", u"\U0001F600", "<P>a\xF0\x9F\x98\x80[]</P>");
}

// --- shortcuts, as keys ---

TEST_F(Typing, ShortcutsRunTheirCommands) {
  const auto press = [&](std::u16string key, bool shift = false) {
    return press_key(editor, {.key = std::move(key), .control = true, .shift = shift});
  };
  load("<P>[a]</P>");
  press(u"b");
  press(u"I");
  press(u"u");
  EXPECT_EQ(html(), "<P><U><I><B>a</B></I></U></P>");
  for (int i = 0; i < 3; ++i) press(u"z");
  EXPECT_EQ(marked(), "<P>[a]</P>");
  press(u"y");
  press(u"z", true);
  EXPECT_EQ(html(), "<P><I><B>a</B></I></P>");
  press(u"a");
  EXPECT_EQ(marked(), "{<P><I><B>a</B></I></P>}");
  EXPECT_EQ(press(u"k"), KeyResult::AskLink);
  EXPECT_EQ(press(u"b", true), KeyResult::NotMine);
}

TEST_F(Typing, WordDeletionStopsAtBlocks) {
  expect_gesture(
      "<P>one</P><P>two[]</P>", [&] { delete_word_backward(editor); }, "<P>one</P><P>{}<BR></P>");
  expect_gesture(
      "<P>one[]</P><P>two</P>", [&] { delete_word_forward(editor); }, "<P>one[]two</P>");
  expect_gesture(
      "<P>a [bc d]e</P>", [&] { delete_word_forward(editor); }, "<P>a []e</P>");
}

// --- undo and the host's own changes ---

TEST_F(Typing, UndoGoesThroughWhatTheHostDidInBetween) {
  load("<P>a[]</P>");
  const std::string first = marked();
  type_text(editor, u"b");
  dom::insert(host, document->create_text(u"host"));
  type_text(editor, u"c");
  dom::set_attribute(*dom::as<dom::Element>(host.first_child()), dom::names::align, u"center");
  EXPECT_EQ(marked(), "<P align=\"center\">abc[]</P>host");
  EXPECT_EQ(steps(), 4u);
  expect_laws(first);
}

TEST_F(Typing, WhatTheHostTookAwayDoesNotHinderTyping) {
  load("<P>a</P><P>b[]</P>");
  type_text(editor, u"c");
  dom::remove(*host.last_child());
  type_text(editor, u"d");
  press_enter(editor);
  expect_laws("<P>a</P><P>b[]</P>");
}

}  // namespace tvx::editing::test
