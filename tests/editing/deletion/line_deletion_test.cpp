#include "tvx/editing/deletion/line_deletion.h"

#include "editing/editing_fixture.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::editing::test {

/// Lines that are selected whole, as a triple press or Shift+Down selects them.
class LineDeletion : public EditingFixture {
 protected:
  void expect_deleted(std::string_view before, std::string_view after) {
    for (const bool forward : {false, true}) {
      load(before);
      const std::string first = marked();
      forward ? delete_forward(editor) : delete_backward(editor);
      EXPECT_EQ(marked(), after) << "from " << before;
      expect_laws(first);
    }
  }
  void expect_key(std::string_view before, bool (*key)(Editor&), std::string_view after) {
    load(before);
    const std::string first = marked();
    key(editor);
    EXPECT_EQ(marked(), after) << "from " << before;
    expect_laws(first);
  }
  void expect_backspace(std::string_view before, std::string_view after) {
    expect_key(before, delete_backward, after);
  }
  void expect_delete(std::string_view before, std::string_view after) {
    expect_key(before, delete_forward, after);
  }
};

TEST_F(LineDeletion, TheLineBehindKeepsItsBlock) {
  expect_deleted("<H1>[one</H1><P>]two</P>", "<P>[]two</P>");
  expect_deleted("<P>zero</P><P align=\"center\">[one</P><H2>two</H2><P>]three</P>",
                 "<P>zero</P><P>[]three</P>");
  expect_deleted("<P>zero</P>{<H1>one</H1>}<P>two</P>", "<P>zero</P><P>[]two</P>");
}

TEST_F(LineDeletion, ItemsGoWholeAndAListThatIsLeftEmptyGoesWithThem) {
  expect_deleted("<UL><LI>[one</LI><LI>]two</LI></UL>", "<UL><LI>[]two</LI></UL>");
  expect_deleted("<UL><LI>zero</LI><LI>[one</LI></UL><P>]two</P>", "<UL><LI>zero</LI></UL><P>[]two</P>");
  expect_deleted("<UL><LI>[one</LI></UL><P>]two</P>", "<P>[]two</P>");
  expect_deleted("<P>[one</P><UL><LI>]two</LI></UL>", "<UL><LI>[]two</LI></UL>");
  expect_deleted("<BLOCKQUOTE><P>[one</P></BLOCKQUOTE><P>]two</P>", "<P>[]two</P>");
}

TEST_F(LineDeletion, LinesOfACellStayInTheCell) {
  expect_deleted("<TABLE><TBODY><TR><TD><P>[one</P><P>]two</P></TD></TR></TBODY></TABLE>",
                 "<TABLE><TBODY><TR><TD><P>[]two</P></TD></TR></TBODY></TABLE>");
}

TEST_F(LineDeletion, WhatIsNoWholeLineIsJoined) {
  expect_deleted("<H1>o[ne</H1><P>]two</P>", "<H1>o[]two</H1>");
  expect_deleted("<H1>[one</H1><P>t]wo</P>", "<H1>[]wo</H1>");
  expect_deleted("<H1>[one]</H1><P>two</P>", "<H1>{}<BR></H1><P>two</P>");
  expect_deleted("<UL><LI>[one<UL><LI>]two</LI></UL></LI></UL>", "<UL><LI>[]two</LI></UL>");
}

// A selection that has come into another cell is one of cells.
TEST_F(LineDeletion, FromCellToCellTheTableKeepsItsShape) {
  expect_deleted("<TABLE><TBODY><TR><TD>[one</TD><TD>]two</TD></TR></TBODY></TABLE>",
                 "<TABLE><TBODY><TR><TD>{}<BR></TD><TD><BR></TD></TR></TBODY></TABLE>");
}

TEST_F(LineDeletion, WhatIsTypedOverThemTakesTheirPlace) {
  const auto expect_typed = [&](std::string_view before, std::string_view after) {
    load(before);
    const std::string first = marked();
    type_text(editor, u"x");
    EXPECT_EQ(marked(), after) << "from " << before;
    expect_laws(first);
  };
  expect_typed("<H1>[one</H1><P>]two</P>", "<H1>x[]</H1><P>two</P>");
  expect_typed("<H1>[one</H1><P>two</P><P>]three</P>", "<H1>x[]</H1><P>three</P>");
  expect_typed("<UL><LI>[one</LI><LI>]two</LI></UL>", "<UL><LI>x[]</LI><LI>two</LI></UL>");
  expect_typed("<H1>o[ne</H1><P>]two</P>", "<H1>ox[]two</H1>");
  load("<P>[one</P><P>]two</P>");
  press_enter(editor);
  EXPECT_EQ(marked(), "<P><BR></P><P>{}<BR></P><P>two</P>");
}

// --- empty lines beside a caret ---

TEST_F(LineDeletion, ARuleATableAndACellAreNoLinesToJoin) {
  expect_delete("<P>{}<BR></P><HR><P>b</P>", "<P>{}<BR></P><P>b</P>");
  load("<P>{}<BR></P><TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>");
  delete_forward(editor);
  EXPECT_EQ(marked(), "<TABLE><TBODY><TR><TD>[]x</TD></TR></TBODY></TABLE>")
      << "the empty line goes, not the table";
  expect_backspace("<TABLE><TBODY><TR><TD><BR></TD><TD>[]x</TD></TR></TBODY></TABLE>",
                   "<TABLE><TBODY><TR><TD><BR></TD><TD>[]x</TD></TR></TBODY></TABLE>");
}

}  // namespace tvx::editing::test
