#include "conversation.h"

/// Where things stand, told without a screen.
namespace tvx::automation::test {
namespace {

class Places : public Conversation {};

TEST_F(Places, AreThoseOfOneFixedScreen) {
  result("control", {{"do", "resize"}, {"size", {9000, 6000}}});
  set("DocumentHTML", "<p>one<b>two</b></p>");
  EXPECT_EQ(object("txtCode.picLines.Width"), 480);
  EXPECT_EQ(object("txtCode.TextBox1.Left"), 480);
  EXPECT_EQ(object("txtCode.TextBox1.Width"), 9000 - 480);
  EXPECT_EQ(object("txtCode.TextBox1.Height"), object("txtCode.Height"));
  EXPECT_EQ(object("txtCode.picLines.Height"), object("txtCode.Height"));
  EXPECT_EQ(object("txtCode.Container.Width"), 9000);
  EXPECT_EQ(object("tlbDOM.ButtonHeight"), 345);
  EXPECT_EQ(object("Toolbar1.Buttons(1).Width"), 345);
  EXPECT_EQ(object("Toolbar1.Buttons(3).Width"), 120);
  result("mouse", {{"kind", "press"}, {"element", object("docHTML.all.tags('B').item(0).sourceIndex")}});
  EXPECT_EQ(object("tlbDOM.Buttons(2).Width"), 500);
  result("expect", {{"on", "popup:mnuToolProp"}});
  result("press", {{"toolbar", "tlbDOM"}, {"key", object("tlbDOM.Buttons(2).Key")}});
  const Json seen = told_of("seen").at(0)["seen"];
  EXPECT_EQ(seen["x"], 500);
  EXPECT_EQ(seen["y"], object("Picture3.Top").get<int>() - 900);
}

TEST_F(Places, TheLibraryHasALeastSize) {
  const auto step = [](const char* path, Json set = nullptr) {
    Json params = {{"path", path}};
    if (!set.is_null()) params["set"] = set;
    return Json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "object"}, {"params", params}};
  };
  result("fault", {{"operation", "InternetAutodial"}, {"result", 0}});
  result("expect", {{"on", "dialog:frmLibraryImage"},
                    {"do",
                     {step("frmLibraryImage.Width", 100), step("frmLibraryImage.Height", 100),
                      step("frmLibraryImage.Width"), step("frmLibraryImage.Height"), step("lstImage.Height"),
                      step("frmLibraryImage.Height", 9000), step("lstImage.Height"), step("cmdCancel.Top"),
                      step("fLib.Caption"), step("fLib.lFTP.TransferType")}}});
  result("call", {{"name", "insertImageFromURL"}, {"args", {""}}});
  Json did;
  for (const Json& seen : told_of("seen")) did = seen["did"];
  ASSERT_EQ(did.size(), 10u) << did.dump();
  const auto value = [&](int place) { return did[static_cast<std::size_t>(place)]["result"]["value"]; };
  EXPECT_EQ(value(2), 3750);
  EXPECT_EQ(value(3), 4485);
  EXPECT_EQ(value(6).get<int>() - value(4).get<int>(), 9000 - 4485) << "the list follows";
  EXPECT_LT(value(7).get<int>(), 9000);
  EXPECT_EQ(value(8), "Remote Images");
  EXPECT_EQ(value(9), 1);
}

TEST_F(Places, OfElementsAreTheirRows) {
  set("DocumentHTML", "<p>one<b>two</b></p>");
  const int bold = object("docHTML.all.tags('B').item(0).sourceIndex").get<int>();
  const auto at = [&](int x, int y) {
    return object("docHTML.elementFromPoint(" + std::to_string(x) + "," + std::to_string(y) + ")");
  };
  EXPECT_EQ(at(5, 20 * bold)["tag"], "B");
  EXPECT_EQ(at(5, 20 * bold + 19)["tag"], "B");
  EXPECT_EQ(at(5, 20 * bold - 1)["tag"], "P");
  EXPECT_EQ(at(5, 20 * bold + 20), nullptr) << "the last element";
  EXPECT_EQ(at(-1, 20 * bold), nullptr);
  // A selection that no mouse has made is at its caret's parent: the element path follows the keys.
  result("select", {{"start", {{0, 1, 0}, 1}}, {"end", {{0, 1, 0}, 1}}});
  EXPECT_EQ(object("lastEvent.clientY"), 20 * bold);
  result("document.key", {{"key", "Home"}});
  EXPECT_EQ(object("lastEvent.clientY"), 20 * (bold - 1));
  EXPECT_EQ(object("highlightElement.tagName"), "P");
}

}  // namespace
}  // namespace tvx::automation::test
