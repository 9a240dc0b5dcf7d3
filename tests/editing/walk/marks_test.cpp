#include "tvx/editing/walk/marks.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class Marks : public EditingFixture {
 protected:
  void expect_round_trip(const std::string& text) {
    load(text);
    EXPECT_EQ(marked(), text);
  }
};

TEST_F(Marks, ComeBackAsTheyWere) {
  for (const char* text : {"<P>o[n]e</P>", "<P>[]</P>", "one[]", "{}one", "{<P>one</P>}", "<P>one</P>{}",
                           "{}", "<!--a[b]c-->", "<P>o[ne</P><P>t]wo</P>", "one{<BR>}two", "{<BR>}<BR>"}) {
    expect_round_trip(text);
  }
}

TEST_F(Marks, StandWhereTheySay) {
  load("<P>o[n]e</P>");
  const dom::Node* text = host.first_child()->first_child();
  EXPECT_EQ(editor.selection().anchor(), (dom::Boundary{const_cast<dom::Node*>(text), 1}));
  EXPECT_EQ(editor.selection().focus(), (dom::Boundary{const_cast<dom::Node*>(text), 2}));
  load("<P>one</P>{}<P>two</P>");
  EXPECT_EQ(editor.selection().anchor(), (dom::Boundary{&host, 1}));
  EXPECT_EQ(dom::length_of(host), 2u) << "the text that held the marks is gone";
}

TEST_F(Marks, TheEndMayComeFirst) {
  load("a]b[c");
  EXPECT_EQ(editor.selection().anchor().offset, 2u);
  EXPECT_EQ(editor.selection().focus().offset, 1u);
  EXPECT_EQ(marked(), "a[b]c");
}

TEST_F(Marks, AttributesServeWhereNoTextCanStand) {
  load("<TABLE><TBODY data-start=0 data-end=1><TR><TD>a</TABLE>");
  EXPECT_EQ(html(), "<TABLE><TBODY><TR><TD>a</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(marked(), "<TABLE><TBODY>{<TR><TD>a</TD></TR>}</TBODY></TABLE>");
}

TEST_F(Marks, NoMarksNoSelection) {
  load("o[n]e");
  load("one");
  EXPECT_EQ(editor.selection().type(), SelectionType::None);
}

TEST_F(Marks, LoadingIsNoStep) {
  load("o[n]e");
  EXPECT_FALSE(document->journal().can_undo());
}

}  // namespace tvx::editing::test
