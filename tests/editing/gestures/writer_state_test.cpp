#include "tvx/editing/gestures/writer_state.h"

#include "editing/editing_fixture.h"

/// How the buttons of commands stand for selected cells.
namespace tvx::editing::test {

class WriterState : public EditingFixture {
 protected:
  bool state(std::u16string_view command) { return state_as_writer(editor, command); }
  /// Both cells of the first column are selected, and the one beside the first stands between them.
  void load_column(std::string_view first, std::string_view beside, std::string_view below) {
    load("<table><tr>" + std::string(first) + std::string(beside) + "<tr>" + std::string(below) +
         "<td>z</table>");
  }
};

TEST_F(WriterState, WhatStandsBetweenSelectedCellsCountsForNothing) {
  load_column("<td><b>[a</b>", "<td>x", "<td><b>b]</b>");
  EXPECT_TRUE(state(u"BOLD"));
  EXPECT_FALSE(editor.state(u"bold")) << "a host asks for all that is between the ends";
  EXPECT_FALSE(state(u"italic"));
  load_column("<td><b>[a</b>", "<td><b>x</b>", "<td>b]");
  EXPECT_FALSE(state(u"bold")) << "one of them isn't";
}

TEST_F(WriterState, AnEmptyCellSaysNothingOfText) {
  load_column("<td><i>[a</i>", "<td>x", "<td>]");
  EXPECT_TRUE(state(u"italic"));
}

TEST_F(WriterState, AlignmentIsThatOfEachCell) {
  load_column("<td align=right>[a", "<td>x", "<td style='text-align:right'>b]");
  EXPECT_TRUE(state(u"justifyRight"));
  EXPECT_FALSE(state(u"justifyLeft"));
  load_column("<td align=right>[a", "<td>x", "<td>b]");
  EXPECT_FALSE(state(u"justifyRight"));
  EXPECT_FALSE(state(u"justifyLeft"));
  load_column("<td align=center>[a", "<td>x", "<td align=center>]");
  EXPECT_TRUE(state(u"justifyCenter")) << "an empty cell is aligned by itself";
  load_column("<td align=center>[a", "<td align=center>x", "<td>]");
  EXPECT_FALSE(state(u"justifyCenter"));
}

TEST_F(WriterState, ListsInEachCell) {
  load_column("<td><ul><li>[a</ul>", "<td>x", "<td><ul><li>b</ul>]");
  EXPECT_TRUE(state(u"insertUnorderedList"));
  EXPECT_FALSE(state(u"insertOrderedList"));
}

TEST_F(WriterState, ElsewhereItIsTheCommandsOwn) {
  load("<p><b>[a]</b>");
  EXPECT_TRUE(state(u"bold"));
  load("<table><tr><td><b>[a]</b><td>x</table>");
  EXPECT_TRUE(state(u"bold"));
}

TEST_F(WriterState, ValuesAreThoseOfEachCell) {
  load_column("<td><font size=5 face=Arial>[a</font>", "<td>x", "<td><font size=5>b]</font>");
  EXPECT_EQ(value_as_writer(editor, u"FontSize"), u"5");
  EXPECT_EQ(value_as_writer(editor, u"FontName"), u"");
  load_column("<td><font color=red>[a</font>", "<td>x", "<td>]");
  EXPECT_EQ(value_as_writer(editor, u"ForeColor"), u"rgb(255, 0, 0)");
  EXPECT_EQ(value_as_writer(editor, u"HiliteColor"), editor.value(u"HiliteColor"));
  load("<p><font size=5>[a</font>b]");
  EXPECT_EQ(value_as_writer(editor, u"FontSize"), u"");
  load("<p><font size=5>[a]</font>b");
  EXPECT_EQ(value_as_writer(editor, u"FontSize"), u"5");
}

}  // namespace tvx::editing::test
