#include "conversation.h"

namespace tvx::automation::test {
namespace {

class Popups : public Conversation {
 protected:
  void load(const char* html) { set("DocumentHTML", html); }
  int place_of(const char* tag) {
    return object(std::string("docHTML.all.tags(\"") + tag + "\").item(0).sourceIndex").get<int>();
  }
  Json right_press(const char* tag) {
    return result("mouse", {{"kind", "press"}, {"button", "right"}, {"element", place_of(tag)}});
  }
};

TEST_F(Popups, ARightPressSaysWhichMenuOpened) {
  load("<p>text<a href='x'>link</a></p>");
  EXPECT_EQ(right_press("P")["popup"], "mnuMisc");
  EXPECT_EQ(told_of("modal").at(0), (Json{{"kind", "popup"}, {"name", "mnuMisc"}}));
  EXPECT_EQ(right_press("A")["popup"], "mnuLinks");
  EXPECT_EQ(result("mouse", {{"kind", "press"}, {"element", place_of("P")}})["popup"], nullptr);
}

TEST_F(Popups, AnItemIsChosenAndWhatStoodThereIsTold) {
  load("<p>see <a href='x'>this</a></p>");
  const Json id = result("expect", {{"on", "popup:mnuLinks"}, {"choose", "mnuLinkRemove"}})["id"];
  right_press("A");
  EXPECT_EQ(get("DocumentHTML"), "<P>see this</P>");
  right_press("P");
  const Json seen = [&] {
    load("<p>see <a href='x'>this</a></p>");
    result("expect", {{"on", "popup:mnuLinks"}});
    right_press("A");
    return told_of("seen").at(0);
  }();
  EXPECT_EQ(seen["id"], id.get<int>() + 1);
  EXPECT_EQ(seen["seen"]["items"], (Json{"mnuLinkCut", "mnuLinkCopy", "mnuLinkPaste", "mnuLinksSep1",
                                         "mnuLinkEdit", "mnuLinkRemove"}));
  EXPECT_EQ(seen["seen"]["captions"], (Json{"Cut", "Copy", "Paste", "-", "Edit Link", "Remove Link"}));
  EXPECT_EQ(seen["seen"]["enabled"], (Json{true, true, false, true, true, true})) << "nothing to paste";
  EXPECT_EQ(seen["seen"]["visible"].size(), 6u);
  EXPECT_EQ(seen["seen"]["chosen"], nullptr);
}

TEST_F(Popups, PasteGoesByTheClipboard) {
  load("<p>see <a href='x'>this</a></p>");
  result("clipboard", {{"set", {{"1", "text"}}}});
  right_press("A");
  EXPECT_EQ(object("mnuLinkPaste.Enabled"), true);
}

TEST_F(Popups, RequestsRunWhileItIsOpen) {
  load("<p>text</p>");
  result("expect",
         {{"on", "popup:mnuMisc"},
          {"choose", "Edit Source"},
          {"do", {{{"method", "object"}, {"params", {{"path", "mnuMiscSource.Enabled"}}}, {"id", 7}}}}});
  right_press("P");
  EXPECT_EQ(told_of("seen").at(0)["did"].at(0)["result"]["value"], true);
  EXPECT_EQ(told_of("event").at(0)["args"]["MenuItem"], "ContextMISCShowSource");
  EXPECT_EQ(object("inCodeView"), true);
}

TEST_F(Popups, RevertAsksThroughAMessageBox) {
  load("<p>text</p>");
  result("document.key", {{"key", "ArrowLeft"}});
  result("expect", {{"on", "popup:mnuMisc"}, {"choose", "mnuMiscRevert"}});
  result("expect", {{"on", "msgbox"}, {"press", "OK"}});
  right_press("P");
  const Json box = told_of("seen").back()["seen"];
  EXPECT_EQ(box["captions"], (Json{"HTML Editor"}));
  EXPECT_EQ(box["texts"], (Json{"Discard Changes?"}));
  EXPECT_EQ(get("IsDirty"), false);
}

TEST_F(Popups, MenusAndItemsAreObjects) {
  EXPECT_EQ(object("mnuMisc.Caption"), "Misc");
  EXPECT_EQ(object("mnuMisc.Count"), 10);
  EXPECT_EQ(object("mnuImgNewLink.Caption"), "Insert Link");
  EXPECT_EQ(object("mnuMiscClass(0).Caption"), "(none)");
  EXPECT_EQ(object("mnuMiscClass.UBound"), 0);
  EXPECT_EQ(object("mnuT.Names"),
            (Json{"mnuTInsRow", "mnuTDelRow", "mnuS1", "mnuTInsCol", "mnuTDelCol", "mnuS2", "mnuTProp"}));
  result("object", {{"path", "mnuMiscCut.Enabled"}, {"set", false}});
  EXPECT_EQ(object("mnuMiscCut.Enabled"), false);
  result("object", {{"path", "mnuMiscClass(0).Caption"}, {"set", "(keine)"}});
  EXPECT_EQ(object("mnuMiscClass(0).Caption"), "(keine)");
  EXPECT_EQ(failure("object", {{"path", "mnuNothing.Caption"}}), 438);
  EXPECT_EQ(failure("object", {{"path", "mnuMiscClass(4).Caption"}}), 340);
  EXPECT_EQ(failure("object", {{"path", "mnuMisc.Name"}, {"set", "x"}}), 383);
}

TEST_F(Popups, TheElementPathIsPressedByItsKey) {
  load("<p>one<b>two</b></p>");
  result("mouse", {{"kind", "press"}, {"element", place_of("B")}});
  EXPECT_EQ(object("tlbDOM.Buttons.Count"), 2);
  EXPECT_EQ(object("tlbDOM.Buttons(2).Left"), 500);
  const Json key = object("tlbDOM.Buttons(1).Key");
  result("expect", {{"on", "popup:mnuToolProp"}, {"choose", "mnuClass(0)"}});
  result("press", {{"toolbar", "tlbDOM"}, {"key", key}});
  EXPECT_EQ(told_of("event").at(0)["args"]["MenuItem"], "DOMCSSClass");
  EXPECT_EQ(object("highlightElement.tagName"), "P");
  EXPECT_EQ(object("savedBorderStyle"), "");
}

TEST_F(Popups, AHostMayMakeFindVisible) {
  result("object", {{"path", "Toolbar1.Buttons(18).Visible"}, {"set", true}});
  result("expect", {{"on", "msgbox"}, {"press", "OK"}});
  result("press", {{"toolbar", "Toolbar1"}, {"key", "Find"}});
  EXPECT_EQ(told_of("seen").at(0)["seen"]["texts"], (Json{"Find"}));
  EXPECT_EQ(get("IsDirty"), true);
}

}  // namespace
}  // namespace tvx::automation::test
