#include "conversation.h"

/// Whole conversations about tables: menus, the path of elements, dialogs, and what comes of them.
namespace tvx::automation::test {
namespace {

class TableDialogs : public Conversation {
 protected:
  void load(const char* html) { set("DocumentHTML", html); }
  int place_of(const char* tag) {
    return object(std::string("docHTML.all.tags(\"") + tag + "\").item(0).sourceIndex").get<int>();
  }
  void right_press(const char* tag) {
    result("mouse", {{"kind", "press"}, {"button", "right"}, {"element", place_of(tag)}});
  }
  /// Presses the element's button in the path.
  void press_in_path(const char* tag) {
    result("mouse", {{"kind", "press"}, {"element", place_of(tag)}});
    result("press", {{"toolbar", "tlbDOM"}, {"key", "KEY" + std::to_string(place_of(tag))}});
  }
};

TEST_F(TableDialogs, ANewTable) {
  load("<p>x</p>");
  result("document.load", {{"html", "<p>a[]b</p>"}});
  const Json id = result("expect", {{"on", "dialog:Frminserttable"},
                                    {"set", {{"txttablerow", "2"}, {"txttablecolumns", "1"}}},
                                    {"do",
                                     {{{"jsonrpc", "2.0"},
                                       {"id", 1},
                                       {"method", "object"},
                                       {"params", {{"path", "txtWidth.Text"}, {"set", "50"}}}}}},
                                    {"press", "cmdApply"}})["id"];
  result("call", {{"name", "Table_Document"}});
  EXPECT_EQ(told_of("modal").at(0), (Json{{"kind", "dialog"}, {"name", "Frminserttable"}}));
  const Json seen = told_of("seen").at(0);
  EXPECT_EQ(seen["id"], id);
  EXPECT_EQ(seen["seen"]["captions"]["Frminserttable"], "Table Properties");
  EXPECT_EQ(seen["seen"]["captions"]["lblWidth"], "Width (%)");
  EXPECT_EQ(seen["seen"]["texts"]["txttablecolumns"], "4");
  EXPECT_EQ(
      get("DocumentHTML"),
      "<P>a</P><TABLE width=\"50%\" cellspacing=\"0%\" border=\"1%\"><TBODY><TR><TD></TD></TR><TR><TD></TD>"
      "</TR></TBODY></TABLE><P>b</P>");
  EXPECT_EQ(get("IsDirty"), true);
}

TEST_F(TableDialogs, OneThatNobodyExpectsIsCancelled) {
  load("<p>x</p>");
  result("call", {{"name", "Table_Document"}});
  EXPECT_EQ(get("DocumentHTML"), "<P>x</P>");
  EXPECT_EQ(get("IsDirty"), false);
}

TEST_F(TableDialogs, ANumberTooLargeIsToldAndTheDialogStaysOpen) {
  load("<p>x</p>");
  result("expect",
         {{"on", "dialog:Frminserttable"},
          {"set", {{"txttablerow", "40000"}}},
          {"do",
           {{{"method", "object"}, {"params", {{"path", "cmdApply.Click"}}}, {"id", 1}},
            {{"method", "object"}, {"params", {{"path", "txttablerow.Text"}, {"set", "1"}}}, {"id", 2}}}},
          {"press", "cmdApply"}});
  result("call", {{"name", "Table_Document"}});
  const Json did = told_of("seen").at(0)["did"];
  EXPECT_EQ(did.at(0)["error"]["code"], 6);
  EXPECT_EQ(did.at(0)["error"]["message"], "Overflow");
  EXPECT_NE(get("DocumentHTML").get<std::string>().find("<TABLE"), std::string::npos);
}

TEST_F(TableDialogs, TheTablesSettings) {
  load("<table border=2><tr><td>1</table>");
  result("expect", {{"on", "popup:mnuT"}, {"choose", "mnuTProp"}});
  result("expect",
         {{"on", "dialog:Frminserttable"},
          {"do", {{{"method", "object"}, {"params", {{"path", "cmdBackColour.Click"}}}, {"id", 1}}}},
          {"press", "cmdApply"}});
  result("expect", {{"on", "color"}, {"result", "#ff0000"}});
  right_press("TABLE");
  Json seen;
  for (const Json& each : told_of("seen"))
    if (each["seen"].contains("texts") && each["seen"]["texts"].contains("txtBorderwidth"))
      seen = each["seen"];
  ASSERT_FALSE(seen.is_null());
  EXPECT_EQ(seen["texts"]["txtBorderwidth"], "2");
  EXPECT_EQ(seen["enabled"]["txttablerow"], false);
  EXPECT_EQ(seen["enabled"]["lblCellAttributes"], false);
  EXPECT_EQ(seen["enabled"]["txtWidth"], true);
  EXPECT_EQ(get("DocumentHTML"),
            "<TABLE border=\"2\" bgcolor=\"#FF0000\"><TBODY><TR><TD bgcolor=\"#FF0000\">1</TD></TR></TBODY>"
            "</TABLE>");
}

TEST_F(TableDialogs, ACellsPropertiesByThePath) {
  load("<table><tr><td align=left>1</table>");
  result("expect", {{"on", "popup:mnuToolProp"}, {"choose", "mnuToolProperties"}});
  result("expect", {{"on", "dialog:frmCellProp"},
                    {"set", {{"cboAlign", "center"}, {"txtStyle", "color: red"}}},
                    {"press", "OKButton"}});
  press_in_path("TD");
  EXPECT_EQ(get("DocumentHTML"),
            "<TABLE><TBODY><TR><TD align=\"center\" style=\"color: red\">1</TD></TR></TBODY></TABLE>");
  result("call", {{"name", "undo_document"}});
  EXPECT_EQ(get("DocumentHTML"), "<TABLE><TBODY><TR><TD align=\"left\">1</TD></TR></TBODY></TABLE>");
}

TEST_F(TableDialogs, ARowIsInsertedByThePath) {
  load("<table><tr><td>1</table>");
  result("expect", {{"on", "popup:mnuToolProp"}, {"choose", "MnuCellRowActionsInsertRowBelow"}});
  press_in_path("TR");
  EXPECT_EQ(told_of("event").at(0)["args"]["MenuItem"], "DOMCELLROWInsertRowBelow");
  EXPECT_EQ(get("DocumentHTML"), "<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD></TD></TR></TBODY></TABLE>");
}

}  // namespace
}  // namespace tvx::automation::test
