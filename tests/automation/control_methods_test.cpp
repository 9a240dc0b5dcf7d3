#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

class ControlMethods : public Conversation {
 protected:
  Json control(std::string_view act, Json params = Json::object()) {
    params["do"] = act;
    return result("control", params);
  }
};

TEST_F(ControlMethods, ANewControlHasNoDocumentUntilItIsShown) {
  const Json made = control("new", {{"store", nullptr}});
  EXPECT_EQ(made["instance"], 2);
  EXPECT_EQ(result("object", {{"path", "docHTML"}, {"instance", 2}})["value"], nullptr);
  control("show", {{"instance", 2}});
  EXPECT_EQ(result("object", {{"path", "docHTML.readyState"}, {"instance", 2}})["value"], "complete");
}

TEST_F(ControlMethods, ASavedControlHasItsDocumentAtOnce) {
  control("new", {{"store", {{"DocumentHTML", "<p>stored</p>"}, {"FTPPort", 2121}, {"CSShttp", false}}}});
  EXPECT_EQ(result("get", {{"name", "DocumentHTML"}, {"instance", 2}})["value"], "<P>stored</P>");
  EXPECT_EQ(result("get", {{"name", "FTPPort"}, {"instance", 2}})["value"], 2121);
  EXPECT_EQ(result("get", {{"name", "CSShttp"}, {"instance", 2}})["value"], false);
  EXPECT_EQ(get("FTPPort"), 21) << "the first control has its own";
  control("new", {{"store", {{"FTPPort", 70000}}}});
  EXPECT_EQ(result("get", {{"name", "FTPPort"}, {"instance", 3}})["value"], 70000);
}

TEST_F(ControlMethods, AtDesignTimeThereIsNoDocument) {
  control("new", {{"mode", "design"}});
  control("show", {{"instance", 2}});
  EXPECT_EQ(result("object", {{"path", "docHTML"}, {"instance", 2}})["value"], nullptr);
  EXPECT_EQ(failure("set", {{"name", "IsDirty"}, {"value", true}, {"instance", 2}}), 387);
  EXPECT_EQ(failure("set", {{"name", "HighlightDOMSelection"}, {"value", false}, {"instance", 2}}), 0);
  EXPECT_EQ(failure("document.exec", {{"command", "bold"}, {"instance", 2}}), 91);
}

TEST_F(ControlMethods, WritingGivesWhatDiffersAndTheOrderOfAll) {
  set("FTPHost", "example.org");
  const Json written = control("write");
  EXPECT_EQ(written["store"]["FTPHost"], "example.org");
  EXPECT_FALSE(written["store"].contains("FTPUser"));
  EXPECT_EQ(written["order"][0], "DocumentHTML");
  EXPECT_EQ(written["order"][1], "FullToolBar");
}

TEST_F(ControlMethods, ASizeIsAWidthAndAHeight) {
  control("new", {{"size", {6000, 4000}}});
  control("resize", {{"size", {7000.5, 3000}}});
  for (const char* act : {"new", "resize"})
    for (const Json& wrong : {Json{6000}, Json{6000, 4000, 1}, Json{"6000", 4000}, Json{6000, nullptr}})
      EXPECT_EQ(failure("control", {{"do", act}, {"size", wrong}}), -32602) << act << wrong;
}

TEST_F(ControlMethods, ATerminatedControlIsGone) {
  control("new");
  control("terminate", {{"instance", 2}});
  EXPECT_EQ(failure("get", {{"name", "FTPPort"}, {"instance", 2}}), -32602);
  EXPECT_EQ(get("FTPPort"), 21);
}

TEST_F(ControlMethods, AControlMayEndWithinItsOwnEvent) {
  control("new");
  const Json end{{"id", 1}, {"method", "control"}, {"params", {{"do", "terminate"}, {"instance", 2}}}};
  result("expect", {{"on", "event:BeforeGetDocumentHTML"}, {"do", {end}}, {"instance", 2}});
  ask("get", {{"name", "DocumentHTML"}, {"instance", 2}});
  EXPECT_EQ(failure("get", {{"name", "FTPPort"}, {"instance", 2}}), -32602);
}

TEST_F(ControlMethods, TheWindowNumberCanBeFixed) {
  EXPECT_EQ(control("new", {{"hwnd", 7654321}})["hwnd"], 7654321);
  EXPECT_EQ(failure("control", {{"do", "dance"}}), -32602);
  EXPECT_EQ(failure("control", {{"do", "new"}, {"codepage", "none"}}), 5);
}

}  // namespace
}  // namespace tvx::automation::test
