#include "conversation.h"

namespace tvx::automation {
namespace {

class CodeViewDoor : public test::Conversation {};

TEST_F(CodeViewDoor, KeysReachTheCodeViewWhenItIsInFront) {
  result("set", {{"name", "DocumentHTML"}, {"value", "<p>x</p>"}});
  result("call", {{"name", "show_Code"}});
  EXPECT_EQ(result("object", {{"path", "txtCode.Text"}})["value"], "<P>x</P>\r\n");
  EXPECT_EQ(result("get", {{"name", "IsDirty"}})["value"], false);
  result("document.type", {{"text", "a\tb"}});
  EXPECT_EQ(result("object", {{"path", "txtCode.Text"}})["value"], "a\tb<P>x</P>\r\n");
  result("document.key", {{"key", "z"}, {"ctrl", true}});
  EXPECT_EQ(result("object", {{"path", "txtCode.Text"}})["value"], "a\t<P>x</P>\r\n");
  EXPECT_EQ(result("get", {{"name", "IsDirty"}})["value"], true);
  result("call", {{"name", "show_Code"}});
  EXPECT_EQ(result("object", {{"path", "docHTML.body.innerHTML"}})["value"],
            "a\t<P>x</P>");  // the line end was drawn
}

TEST_F(CodeViewDoor, TheCodeViewTellsItsLinesAndItsUsersSelection) {
  result("set", {{"name", "DocumentHTML"}, {"value", "<table><tr><td>x</td></tr></table>"}});
  result("call", {{"name", "show_Code"}});
  EXPECT_EQ(result("object", {{"path", "txtCode.LineCount"}})["value"], 10);
  result("object", {{"path", "txtCode.TextBox1.SelStart"}, {"set", 9}});
  result("object", {{"path", "txtCode.TextBox1.SelLength"}, {"set", 20}});
  const Json rows = result("object", {{"path", "txtCode.LineNumbers"}})["value"];
  EXPECT_EQ(rows[0], Json({1, 2147483664u}));
  EXPECT_EQ(rows[1], Json({2, 2147483656u}));
  EXPECT_EQ(rows[2], Json({3, 2147483656u}));
  EXPECT_EQ(result("object", {{"path", "txtCode.TextBox1.SelText"}})["value"], " <TBODY>\r\n    <TR>\r\n  ");
  EXPECT_EQ(result("object", {{"path", "codeSelectionStart"}})["value"], 1);
}

TEST_F(CodeViewDoor, TheFormatterIsARoutine) {
  EXPECT_EQ(
      result("object", {{"path", "FormatHTMLSource"}, {"args", {"<TR>x</TR>", 2, false, false}}})["value"],
      "<TR>\r\n  x\r\n</TR>\r\n");
}

TEST_F(CodeViewDoor, ACodeViewThatCannotGoBackSaysSo) {
  result("set", {{"name", "DocumentHTML"}, {"value", "<p>x</p>"}});
  result("call", {{"name", "show_Code"}});
  result("object", {{"path", "txtCode.Edit"}, {"args", {"<P>y</P>"}}});
  result("fault", {{"operation", "body.innerHTML"}, {"error", {600, "refused"}}});
  result("call", {{"name", "show_Code"}});
  EXPECT_EQ(result("object", {{"path", "inCodeView"}})["value"], true);
  EXPECT_EQ(result("object", {{"path", "txtCode.InFront"}})["value"], false);
  EXPECT_EQ(result("object", {{"path", "txtCode.Attached"}})["value"], true);
}

}  // namespace
}  // namespace tvx::automation
