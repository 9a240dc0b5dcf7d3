#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

/// The mouse of a client without a screen: what it takes as a whole, and what its drags do.
class MouseMethod : public Conversation {
 protected:
  /// The number of the first element with that id.
  int number_of(const std::string& id) {
    for (int i = 0;; ++i) {
      const Json element = object("docHTML.all.item(" + std::to_string(i) + ")");
      if (element.is_null()) break;
      if (element.value("id", "") == id) return i;
    }
    ADD_FAILURE() << "no element " << id;
    return 0;
  }
  Json mouse(Json params) { return result("mouse", std::move(params)); }
  std::string html() { return get("DocumentHTML").get<std::string>(); }
  void undo() { result("call", {{"name", "undo_document"}}); }
};

TEST_F(MouseMethod, AClickOnAnImageSelectsItAndTellsInOrder) {
  set("DocumentHTML", "<P id=\"p\">a<IMG id=\"i\">b</P>");
  mouse({{"kind", "click"}, {"element", number_of("i")}});
  EXPECT_EQ(object("docHTML.selection.type"), "Control");
  int clicks = 0;
  for (const Json& event : told_of("event"))
    if (event["params"]["name"] == "DocumentClick") ++clicks;
  EXPECT_EQ(clicks, 0) << "of the last request only";
  mouse({{"kind", "click"}, {"element", number_of("p")}});
  EXPECT_EQ(object("docHTML.selection.type"), "None");
}

TEST_F(MouseMethod, ADragOfAHandleSizes) {
  set("DocumentHTML", "<P>a<IMG id=\"i\">b</P><P><INPUT id=\"f\"></P>");
  const int image = number_of("i");
  mouse(
      {{"kind", "drag"}, {"element", image}, {"handle", "se"}, {"to", {{"x", 120}, {"y", 20 * image + 60}}}});
  EXPECT_EQ(html(), "<P>a<IMG id=\"i\" width=\"120\" height=\"60\">b</P><P><INPUT id=\"f\"></P>");
  mouse({{"kind", "drag"}, {"element", number_of("f")}, {"handle", "e"}, {"to", {{"x", 300}, {"y", 0}}}});
  EXPECT_EQ(
      html(),
      "<P>a<IMG id=\"i\" width=\"120\" height=\"60\">b</P><P><INPUT id=\"f\" style=\"width: 300px\"></P>");
  EXPECT_EQ(get("IsDirty"), true);
  undo();
  undo();
  EXPECT_EQ(html(), "<P>a<IMG id=\"i\">b</P><P><INPUT id=\"f\"></P>");
}

TEST_F(MouseMethod, ADragOfAColumnsEdgeSizesBothColumns) {
  const std::string before =
      "<TABLE><TBODY><TR><TD id=\"a\" width=\"100\">1</TD><TD width=\"80\">2</TD></TR><TR><TD>3</TD><TD "
      "id=\"z\">4</TD></TR></TBODY></TABLE>";
  set("DocumentHTML", before);
  mouse({{"kind", "drag"}, {"element", number_of("a")}, {"handle", "column"}, {"to", {{"x", 130}}}});
  EXPECT_EQ(html(),
            "<TABLE><TBODY><TR><TD id=\"a\" width=\"130\">1</TD><TD width=\"50\">2</TD></TR><TR><TD "
            "width=\"130\">3</TD><TD id=\"z\" width=\"50\">4</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(get("IsDirty"), true);
  undo();
  EXPECT_EQ(html(), before);
  EXPECT_EQ(
      failure("mouse",
              {{"kind", "drag"}, {"element", number_of("z")}, {"handle", "column"}, {"to", {{"x", 9}}}}),
      5);
}

TEST_F(MouseMethod, AnotherHandleIsNone) {
  set("DocumentHTML", "<IMG id=\"i\">");
  EXPECT_EQ(
      failure("mouse", {{"kind", "drag"}, {"element", number_of("i")}, {"handle", "up"}, {"to", {{"x", 1}}}}),
      -32602);
}

TEST_F(MouseMethod, ADragMovesSelectedTextAndWithControlCopiesIt) {
  set("DocumentHTML", "<P id=\"a\">one two</P><P id=\"b\">other</P>");
  result("select", {{"start", {{0, 0}, 3}}, {"end", {{0, 0}, 7}}});
  mouse({{"kind", "drag"},
         {"element", number_of("a")},
         {"to", {{"element", number_of("b")}, {"place", {{1, 0}, 5}}}}});
  EXPECT_EQ(html(), "<P id=\"a\">one</P><P id=\"b\">other two</P>");
  undo();
  EXPECT_EQ(html(), "<P id=\"a\">one two</P><P id=\"b\">other</P>");
  result("select", {{"start", {{0, 0}, 3}}, {"end", {{0, 0}, 7}}});
  mouse({{"kind", "drag"},
         {"element", number_of("a")},
         {"ctrl", true},
         {"to", {{"element", number_of("b")}, {"place", {{1, 0}, 5}}}}});
  EXPECT_EQ(html(), "<P id=\"a\">one two</P><P id=\"b\">other two</P>");
}

TEST_F(MouseMethod, ADragMovesAnImage) {
  set("DocumentHTML", "<P>a<IMG id=\"i\">b</P><P id=\"t\">other</P>");
  mouse({{"kind", "drag"}, {"element", number_of("i")}, {"to", {{"element", number_of("t")}}}});
  EXPECT_EQ(html(), "<P>ab</P><P id=\"t\"><IMG id=\"i\">other</P>");
  EXPECT_EQ(object("docHTML.selection.type"), "Control");
}

TEST_F(MouseMethod, APositionedElementMovesByTheWay) {
  set("DocumentHTML", "<P>text</P><IMG id=\"i\" style=\"position: absolute; left: 10px; top: 20px\">");
  const int image = number_of("i");
  const Json drag{{"kind", "drag"}, {"element", image}, {"to", {{"x", 35}, {"y", 20 * image + 4}}}};
  mouse(drag);
  EXPECT_EQ(html(), "<P>text</P><IMG id=\"i\" style=\"position: absolute; left: 45px; top: 24px\">");
}

TEST_F(MouseMethod, ADropBringsWhatAnotherProgramGives) {
  set("DocumentHTML", "<P id=\"p\">one</P>");
  mouse({{"kind", "drop"}, {"element", number_of("p")}, {"data", {{"text", "new "}}}});
  EXPECT_EQ(html(), "<P id=\"p\">new one</P>");
  mouse(
      {{"kind", "drop"}, {"element", number_of("p")}, {"data", {{"html", "<B>bold</B>"}, {"text", "bold"}}}});
  EXPECT_EQ(html(), "<P id=\"p\"><B>bold</B>new one</P>");
}

TEST_F(MouseMethod, WithTheEditorDisabledNothingIsMoved) {
  set("DocumentHTML", "<P>a<IMG id=\"i\">b</P>");
  set("EditorEnabled", false);
  const std::string before = html();
  const int image = number_of("i");
  mouse({{"kind", "drag"}, {"element", image}, {"handle", "e"}, {"to", {{"x", 120}}}});
  mouse({{"kind", "drop"}, {"element", image}, {"data", {{"text", "new"}}}});
  EXPECT_EQ(html(), before);
}

TEST_F(MouseMethod, SelectTakesAControl) {
  set("DocumentHTML", "<P>a<IMG id=\"i\">b</P>");
  EXPECT_EQ(result("select", {{"control", number_of("i")}})["type"], "Control");
  EXPECT_EQ(result("select", {{"none", true}})["type"], "None");
}

}  // namespace
}  // namespace tvx::automation::test
