#include "tvx/editing/deletion/deletion.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class Deletion : public EditingFixture {};

TEST_F(Deletion, TextAndWrappers) {
  expect_edit("<p>f[o]o</p>", {"delete"}, "<P>f[]o</P>");
  expect_edit("<p>foo<b>[bar]</b>baz</p>", {"delete"}, "<P>foo{}baz</P>");
  expect_edit("<p>[foo]</p>", {"delete"}, "<P>{}<BR></P>");
}

TEST_F(Deletion, BlocksMerge) {
  expect_edit("<p>fo[o</p><pre>b]ar</pre>", {"delete"}, "<P>fo{}ar</P>");
  expect_edit("<p>a[</p><div><p>b</p><p>c]d</p></div>", {"delete"}, "<P>a{}d</P>");
  expect_edit("<ol><li>a[b</li></ol><p>x</p><ol><li>c]d</li><li>e</li></ol>", {"delete"},
              "<OL><LI>a{}d</LI><LI>e</LI></OL>");
}

TEST_F(Deletion, TablesKeepTheirStructure) {
  expect_edit("<table><tbody><tr><td>a[b</td><td>c]d</td></tr></tbody></table>", {"delete"},
              "<TABLE><TBODY><TR><TD>a[]</TD><TD>d</TD></TR></TBODY></TABLE>");
}

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

TEST_F(Deletion, ImagesAndFieldsGoWhereverTheyStand) {
  expect_edit("<P>a<B>x<IMG>{}</B>c</P>", {"delete"}, "<P>a<B>x{}</B>c</P>");
  expect_edit("<P>a<B>{}<IMG>x</B>c</P>", {"forwardDelete"}, "<P>a<B>{}x</B>c</P>");
  expect_edit("<P>a <SELECT><OPTION>x</OPTION></SELECT>[] c</P>", {"delete"}, "<P>a&nbsp;{} c</P>");
  expect_edit("<P>a[]<INPUT>c</P>", {"forwardDelete"}, "<P>a{}c</P>");
}

TEST_F(Deletion, TheLookOfWhatWentIsTypedNext) {
  load("<p>foo<b>[bar]</b></p>");
  run({"delete"});
  run({"inserttext", "x"});
  EXPECT_EQ(marked(), "<P>foo<B>x[]</B></P>");
}

}  // namespace tvx::editing::test
