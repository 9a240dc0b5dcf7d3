#include "tvx/editing/gestures/line_moves.h"

#include "editing/editing_fixture.h"

/// Where moves by a line come by, from the anchor of a selection to its focus; the same position stands for
/// no further line.
namespace tvx::editing::test {

class LineMoves : public EditingFixture {
 protected:
  /// The document with a caret at the gap that was found; nothing if none was.
  std::string gap(std::string_view marked_from_to, Direction direction) {
    load(marked_from_to);
    const Selection& selection = editor.selection();
    const auto found = gap_between_lines(selection.anchor(), selection.focus(), direction);
    if (!found) return {};
    editor.selection().collapse(*found);
    return marked();
  }
  std::string down(std::string_view from_to) { return gap(from_to, Direction::Forward); }
  std::string up(std::string_view from_to) { return gap(from_to, Direction::Backward); }

  static constexpr std::string_view table = "<TABLE><TBODY><TR><TD>b</TD></TR></TBODY></TABLE>";
};

TEST_F(LineMoves, ATableThatEndsOrStartsThePageIsLeft) {
  EXPECT_EQ(down("<p>a</p><table><tbody><tr><td>b[]</td></tr></tbody></table>"),
            "<P>a</P>" + std::string(table) + "{}");
  EXPECT_EQ(up("<table><tbody><tr><td>b[]</td></tr></tbody></table><p>a</p>"),
            "{}" + std::string(table) + "<P>a</P>");
  EXPECT_EQ(down("<div><table><tbody><tr><td>b[]</td></tr></tbody></table> </div>"),
            "<DIV>" + std::string(table) + "{} </DIV>");
}

TEST_F(LineMoves, ARuleThatEndsOrStartsThePageIsPassed) {
  EXPECT_EQ(down("<p>a[]</p><hr>"), "<P>a</P><HR>{}");
  EXPECT_EQ(up("<hr><p>[]a</p>"), "{}<HR><P>a</P>");
  EXPECT_EQ(down("<p>a[]</p><div><hr></div>"), "<P>a</P><DIV><HR>{}</DIV>");
}

TEST_F(LineMoves, BetweenTwoTablesOrRulesTheCaretStops) {
  EXPECT_EQ(down("<table><tbody><tr><td>b[</td></tr></tbody></table><hr><p>]a</p>"),
            std::string(table) + "{}<HR><P>a</P>");
  EXPECT_EQ(down("<p>[a</p><hr><!--c--><hr><p>b]</p>"), "<P>a</P><HR>{}<!--c--><HR><P>b</P>");
  EXPECT_EQ(up("<p>]a</p><hr><hr><p>b[</p>"), "<P>a</P><HR>{}<HR><P>b</P>");
}

TEST_F(LineMoves, FromOneGapTheWayGoesToTheNext) {
  EXPECT_EQ(down("<hr>{<hr><p>]a</p>"), "");
  EXPECT_EQ(down("<hr>{}<hr>"), "<HR><HR>{}");
  EXPECT_EQ(down("<hr><hr>{}"), "");
}

TEST_F(LineMoves, WhereALineIsBesideThereIsNoGap) {
  EXPECT_EQ(down("<div><table><tbody><tr><td>b[</td></tr></tbody></table></div><p>]a</p>"), "");
  EXPECT_EQ(down("<p>a[</p><div><table><tbody><tr><td>]b</td></tr></tbody></table></div>"), "");
  EXPECT_EQ(down("<p>a[</p><hr><p>]b</p>"), "");
  EXPECT_EQ(down("<p>a[]</p>"), "");
}

TEST_F(LineMoves, TheCellsOfARowAreNoLinesOnTheWay) {
  const std::string_view inner = "<table><tbody><tr><td>x</td></tr></tbody></table>";
  EXPECT_EQ(down("<table><tbody><tr><td>b[</td><td>" + std::string(inner) +
                 "</td></tr><tr><td>]c</td></tr></tbody></table>"),
            "");
}

TEST_F(LineMoves, ATableInACellIsLeftByOneStep) {
  EXPECT_EQ(
      down("<table><tbody><tr><td>a<table><tbody><tr><td>b[]</td></tr></tbody></table></td><td>c</td></tr>"
           "</tbody></table>"),
      "<TABLE><TBODY><TR><TD>a" + std::string(table) + "{}</TD><TD>c</TD></TR></TBODY></TABLE>");
}

TEST_F(LineMoves, AnIslandIsPassedOrStoodBeside) {
  const auto passed = [&](std::string_view from, Direction direction) -> std::string {
    load(from);
    const auto found = past_island(editor.selection().focus(), direction);
    if (!found) return "none";
    editor.selection().collapse(found->place);
    return (found->in_line ? "in line " : "") + marked();
  };
  EXPECT_EQ(passed("<p>a</p><div contenteditable=false><p>w[]</p></div>", Direction::Forward),
            "<P>a</P><DIV contenteditable=\"false\"><P>w</P></DIV>{}");
  EXPECT_EQ(passed("<p>a</p><div contenteditable=false>w[]</div>", Direction::Backward),
            "<P>a</P>{}<DIV contenteditable=\"false\">w</DIV>");
  EXPECT_EQ(passed("<p>a<span contenteditable=false>wi[]de</span></p>", Direction::Forward),
            "in line <P>a<SPAN contenteditable=\"false\">wide</SPAN>{}</P>");
  EXPECT_EQ(passed("<p>a<span contenteditable=false>w[]ide</span></p>", Direction::Forward),
            "in line <P>a{}<SPAN contenteditable=\"false\">wide</SPAN></P>");
  EXPECT_EQ(passed("<p>a[]</p>", Direction::Forward), "none");
}

}  // namespace tvx::editing::test
