#include "tvx/editing/deletion/deletion.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class Deletion : public EditingFixture {};

TEST_F(Deletion, ATableTakenAsAWholeGoesAsAWhole) {
  const auto expect_gone = [&](std::string_view before, const Command& command, std::string_view after) {
    load(before);
    const std::string first = marked();
    for (dom::Node* node = &host; node; node = dom::next_in_order(*node, &host)) {
      if (!node->is(dom::Tag::Table)) continue;
      editor.selection().select_control(static_cast<dom::Element&>(*node));
      break;
    }
    run(command);
    EXPECT_EQ(marked(), after) << command.name;
    while (document->journal().can_undo()) document->journal().undo();
    EXPECT_EQ(editor.selection().type(), SelectionType::Control) << "taken as a whole again";
    EXPECT_NE(first.find("<TABLE>"), std::string::npos);
    while (document->journal().can_redo()) document->journal().redo();
    EXPECT_EQ(marked(), after) << "after redo";
  };
  const std::string_view table =
      "<P>a[]</P><TABLE><TBODY><TR><TD>x</TD><TD>y</TD></TR></TBODY></TABLE><P>b</P>";
  for (const char* command : {"delete", "forwardDelete"}) {
    expect_gone(table, {command}, "<P>a</P><P>[]b</P>");
    expect_gone("<P>a[]</P><TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>", {command}, "<P>a[]</P>");
  }
  expect_gone(table, {"insertText", "c"}, "<P>a</P><P>c[]b</P>");
  // Where nothing else is, a line remains.
  expect_gone("<DIV><TABLE><TBODY><TR><TD>x[]</TD></TR></TBODY></TABLE></DIV>", {"delete"},
              "<DIV>{}<BR></DIV>");
}

TEST_F(Deletion, TheLookOfWhatWentIsTypedNext) {
  load("<p>foo<b>[bar]</b></p>");
  run({"delete"});
  run({"inserttext", "x"});
  EXPECT_EQ(marked(), "<P>foo<B>x[]</B></P>");
}

}  // namespace tvx::editing::test
