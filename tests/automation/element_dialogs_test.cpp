#include "conversation.h"

/// Conversations about the dialogs of fonts, forms, fields and images.
namespace tvx::automation::test {
namespace {

class ElementDialogs : public Conversation {
 protected:
  int place_of(const char* tag) {
    return object(std::string("docHTML.all.tags(\"") + tag + "\").item(0).sourceIndex").get<int>();
  }
  static Json request(const char* method, const Json& params) {
    return {{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}, {"params", params}};
  }
};

TEST_F(ElementDialogs, TheFontsFourValuesAreRead) {
  result("document.load", {{"html", "<p>[text]</p>"}});
  result("expect", {{"on", "dialog:frmFont"}, {"set", {{"Combo2", "5"}}}, {"press", "cmdApply"}});
  result("call", {{"name", "change_Font"}});
  EXPECT_EQ(object("FontSizeValue"), "5");
  EXPECT_EQ(object("FontFore"), "#000000");
  EXPECT_EQ(object("docHTML.all.tags('font').item(0).size"), "5");
}

TEST_F(ElementDialogs, AFormIsWrappedAndItsDialogSeen) {
  set("DocumentHTML", "<p>x</p>");
  result("expect", {{"on", "dialog:frmForm"}, {"set", {{"cboMethod", "Post"}}}, {"press", "OKButton"}});
  result("press", {{"toolbar", "Toolbar2"}, {"key", "Form"}});
  const Json seen = told_of("seen").back()["seen"];
  EXPECT_EQ(seen["texts"]["txtName"], "FORM1");
  EXPECT_EQ(seen["items"]["cboTarget"].size(), 5u);
  EXPECT_EQ(get("DocumentHTML"), "<FORM name=\"FORM1\" method=\"post\"><P>x</P></FORM>");
}

TEST_F(ElementDialogs, KeysGoToTheDialogThatIsOpen) {
  set("DocumentHTML", "<p><img src=a.png width=400 height=300></p>");
  result("mouse", {{"kind", "press"}, {"element", place_of("img")}});
  result("expect",
         {{"on", "dialog:frmImageSettings"},
          {"do",
           {request("object", {{"path", "chkConstrain.Value"}, {"set", true}}),
            request("object", {{"path", "txtWidth.SetFocus"}}),
            request("document.key", {{"key", "a"}, {"ctrl", true}}),
            request("object", {{"path", "txtWidth.SelStart"}, {"set", 0}}),
            request("object", {{"path", "txtWidth.SelLength"}, {"set", 3}}),
            request("document.type", {{"text", "2x0-0"}}), request("object", {{"path", "txtHeight.Text"}})}},
          {"press", "OKButton"}});
  result("object", {{"path", "EditImageProperties"}});
  const Json did = told_of("seen").back()["did"];
  EXPECT_EQ(did.back()["result"]["value"], "150");
  EXPECT_EQ(object("docHTML.all.tags('img').item(0).width"), 200);
}

TEST_F(ElementDialogs, AFieldsOptionsAreMade) {
  set("DocumentHTML", "<p><select></select></p>");
  result(
      "expect",
      {{"on", "dialog:frmField"},
       {"do",
        {request("object", {{"path", "cmdAddOption.Click"}}), request("document.type", {{"text", "One"}}),
         request("object", {{"path", "cmdAddOption.Click"}}), request("document.type", {{"text", "Two"}})}},
       {"press", "OKButton"}});
  result("mouse", {{"kind", "dblclick"}, {"element", place_of("select")}});
  EXPECT_EQ(get("DocumentHTML"), "<P><SELECT><OPTION>One</OPTION><OPTION>Two</OPTION></SELECT></P>");
}

}  // namespace
}  // namespace tvx::automation::test
