#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

/// Styles, sheets and their rules, reached by paths.
class StyleObjects : public Conversation {
 protected:
  void write(std::string_view path, const Json& value) { result("object", {{"path", path}, {"set", value}}); }
  std::string body() { return object("docHTML.body.innerHTML"); }
};

TEST_F(StyleObjects, ABorderIsKeptInItsParts) {
  set("DocumentHTML", "<p style='border: 1px solid red'>x</p>");
  EXPECT_EQ(object("docHTML.body.children(0).style.borderStyle"), "solid");
  EXPECT_EQ(object("docHTML.body.children(0).style.borderWidth"), "1px");
  EXPECT_EQ(object("docHTML.body.children(0).style.borderColor"), "red");
  write("docHTML.body.children(0).style.borderStyle", "Dashed");
  EXPECT_EQ(object("docHTML.body.children(0).style.borderStyle"), "dashed") << "a keyword";
  write("docHTML.body.children(0).style.borderStyle", "solid");
  EXPECT_EQ(object("docHTML.body.children(0).style.cssText"), "border: 1px solid red");
}

TEST_F(StyleObjects, ABareNumberIsInPixels) {
  set("DocumentHTML", "<p>x</p>");
  write("docHTML.body.children(0).style.borderWidth", 2);
  write("docHTML.body.children(0).style.width", "30");
  write("docHTML.body.children(0).style.zIndex", 4);
  write("docHTML.body.children(0).style.lineHeight", "2");
  EXPECT_EQ(object("docHTML.body.children(0).style.borderWidth"), "2px");
  EXPECT_EQ(object("docHTML.body.children(0).style.width"), "30px");
  EXPECT_EQ(object("docHTML.body.children(0).style.zIndex"), "4");
  EXPECT_EQ(object("docHTML.body.children(0).style.lineHeight"), "2") << "a factor";
  write("docHTML.body.children(0).style.borderWidth", "");
  write("docHTML.body.children(0).style.width", nullptr);
  EXPECT_EQ(object("docHTML.body.children(0).style.cssText"), "z-index: 4; line-height: 2");
  write("docHTML.body.children(0).style.cssText", "");
  EXPECT_EQ(body(), "<P>x</P>");
}

TEST_F(StyleObjects, WritingBackWhatWasReadChangesNothing) {
  set("DocumentHTML", "<p>x</p><p STYLE='Border-Left:3px solid blue; odd: (thing'>y</p>");
  const std::string before = body();
  for (const char* name : {"borderStyle", "borderWidth", "borderColor", "color", "cssText"})
    for (int child = 0; child < 2; ++child) {
      const std::string path = "docHTML.body.children(" + std::to_string(child) + ").style." + name;
      write(path, object(path));
    }
  EXPECT_EQ(body(), before);
}

TEST_F(StyleObjects, SheetsAndTheirRules) {
  set("DocumentHTML",
      "<style>.a, .b { color: red } @media print { .c { color: blue } } @import 'x.css'; bad { ; "
      "} p.d { }</style><p>x</p>");
  const int last = object("docHTML.styleSheets.length").get<int>() - 1;
  const std::string sheet = "docHTML.styleSheets(" + std::to_string(last) + ")";
  EXPECT_EQ(object(sheet + ".href"), "");
  EXPECT_EQ(object(sheet + ".rules(0).selectorText"), ".a, .b");
  EXPECT_EQ(object(sheet + ".rules.item(1).selectorText"), "");
  EXPECT_EQ(object("docHTML.all.tags('style').item(0).styleSheet.rules(0).selectorText"), ".a, .b");
  write(sheet + ".cssText", "p { font-weight: bold }");
  EXPECT_EQ(object(sheet + ".rules.length"), 1);
  EXPECT_EQ(object("docHTML.all.tags('p')(0).currentStyle.fontWeight"), "700");
  EXPECT_EQ(failure("object", {{"path", sheet + ".rules(9)"}}), 5);
  EXPECT_EQ(failure("object", {{"path", "docHTML.styleSheets(99)"}}), 5);
}

TEST_F(StyleObjects, ComputedValuesAreRead) {
  set("DocumentHTML", "<p style='color: red'><b>x</b></p>");
  EXPECT_EQ(object("docHTML.all.tags('b')(0).currentStyle.fontWeight"), "700");
  EXPECT_EQ(object("docHTML.all.tags('b')(0).currentStyle.color"), "rgb(255, 0, 0)");
  EXPECT_EQ(object("docHTML.all.tags('p')(0).currentStyle.display"), "block");
  EXPECT_EQ(failure("object", {{"path", "docHTML.body.currentStyle.nothing"}}), 438);
  EXPECT_EQ(failure("object", {{"path", "docHTML.body.currentStyle.color"}, {"set", "red"}}), 383);
}

}  // namespace
}  // namespace tvx::automation::test
