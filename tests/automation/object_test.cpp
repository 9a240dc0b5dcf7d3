#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

class ObjectPaths : public Conversation {};

TEST_F(ObjectPaths, LeadThroughTheDocument) {
  set("DocumentHTML", "<p id=a>one <a href=x>two</a></p><p>three</p>");
  EXPECT_EQ(object("docHTML.readyState"), "complete");
  EXPECT_EQ(object("docHTML.designMode"), "On");
  EXPECT_EQ(object("docHTML.body.innerText"), "one two\n\nthree");
  EXPECT_EQ(object("docHTML.all.tags(\"p\").length"), 2);
  EXPECT_EQ(object("docHTML.all.tags('P').item(1).innerHTML"), "three");
  EXPECT_EQ(object("docHTML.links(0).getAttribute(\"href\")"), "x");
  const Json element = object("docHTML.getElementById('a')");
  EXPECT_EQ(element["object"], "element");
  EXPECT_EQ(element["tag"], "P");
  EXPECT_EQ(element["id"], "a");
  EXPECT_EQ(object("docHTML.all(" + element["sourceIndex"].dump() + ").id"), "a");
  EXPECT_EQ(object("docHTML.getElementById('none')"), nullptr);
}

TEST_F(ObjectPaths, AttributesReadAsTheyAreAndAddressesWhole) {
  set("DocumentHTML", "<p lang='http://h/a/../b'>one</p><a href='http://h/a/../b'>two</a><a name=b>b</a>");
  EXPECT_EQ(object("docHTML.all.tags('p')(0).lang"), "http://h/a/../b");
  EXPECT_EQ(object("docHTML.all.tags('a')(0).href"), "http://h/b");
  EXPECT_EQ(object("docHTML.all.tags('a')(1).href"), "");
}

TEST_F(ObjectPaths, ElementsAreGivenByTheirNumber) {
  set("DocumentHTML", "<p>one <b>two</b></p>");
  const int body = object("docHTML.body.sourceIndex").get<int>();
  const auto contains = [](Json element) {
    return Json{{"path", "docHTML.body.children(0).contains"}, {"args", {std::move(element)}}};
  };
  EXPECT_EQ(result("object", contains({{"object", "element"}, {"sourceIndex", body + 2}}))["value"], true);
  EXPECT_EQ(result("object", contains({{"object", "element"}, {"sourceIndex", body}}))["value"], false);
  EXPECT_EQ(failure("object", contains({{"object", "element"}, {"sourceIndex", body + 3}})), 5)
      << "the last one is the B";
  EXPECT_EQ(failure("object", contains({{"object", "element"}})), 13);
  EXPECT_EQ(failure("object", contains({{"object", "element"}, {"sourceIndex", "1"}})), 13);
  EXPECT_EQ(failure("object", contains({{"object", "range"}, {"sourceIndex", 1}})), 13);
  EXPECT_EQ(failure("object", contains({{"sourceIndex", 1}})), 13);
}

TEST_F(ObjectPaths, CommandsNeedNoMoreThanTheirName) {
  result("document.load", {{"html", "<p>[one]</p>"}});
  EXPECT_EQ(object("docHTML.execCommand('bold')"), true);
  EXPECT_EQ(object("docHTML.execCommand('italic', false)"), true);
  EXPECT_EQ(object("docHTML.execCommand('foreColor', false, 'red')"), true);
  EXPECT_EQ(
      result("object", {{"path", "docHTML.execCommand"}, {"args", {"underline", nullptr, nullptr}}})["value"],
      true);
  EXPECT_EQ(object("docHTML.body.innerText"), "one");
  EXPECT_EQ(failure("object", {{"path", "docHTML.execCommand()"}}), 450);
}

TEST_F(ObjectPaths, Write) {
  set("DocumentHTML", "<p>one</p>");
  result("object", {{"path", "docHTML.body.children(0).style.color"}, {"set", "red"}});
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<P style=\"color: red\">one</P>");
  result("object", {{"path", "docHTML.title"}, {"set", "T"}});
  EXPECT_EQ(object("docHTML.title"), "T");
  EXPECT_EQ(failure("object", {{"path", "docHTML.readyState"}, {"set", "x"}}), 383);
}

TEST_F(ObjectPaths, ReachTheToolbars) {
  EXPECT_EQ(object("Toolbar1.Buttons.Count"), 29);
  EXPECT_EQ(object("Toolbar1.Buttons(10).Key"), "Bold");
  EXPECT_EQ(object("Toolbar1.Buttons(\"Bold\").Index"), 10);
  EXPECT_EQ(object("Toolbar1.Buttons(10).Value"), 0);
  EXPECT_EQ(failure("object", {{"path", "Toolbar1.Buttons(99).Value"}}), 5);
}

TEST_F(ObjectPaths, ReachRoutinesAndMembers) {
  EXPECT_EQ(result("object", {{"path", "EncodeURL"}, {"args", {"a b"}}})["value"], "a%20b");
  EXPECT_EQ(object("ReplaceAll('a','b','banana',true)"), "bbnbnb");
  EXPECT_EQ(object("WBrowser.ReadyState"), 4);
  EXPECT_EQ(object("WBrowser.object.Document.readyState"), "complete");
  EXPECT_EQ(object("FTPPort"), 21);
}

TEST_F(ObjectPaths, FailWithTheSystemsNumbers) {
  EXPECT_EQ(failure("object", {{"path", "nobody"}}), 438);
  EXPECT_EQ(failure("object", {{"path", "docHTML.nobody"}}), 438);
  EXPECT_EQ(failure("object", {{"path", "docHTML.title.x"}}), 424);
  EXPECT_EQ(failure("object", {{"path", "docHTML.getElementById('none').id"}}), 91);
  for (const char* path : {"", ".", "a..b", "a(", "a(1", "a('x)", "a)", "a(b)"})
    EXPECT_EQ(failure("object", {{"path", path}}), 5) << path;
}

class Gestures : public Conversation {};

TEST_F(Gestures, AToolbarButtonActsAsPressedByTheUser) {
  result("document.load", {{"html", "<p>[one]</p>"}});
  result("press", {{"toolbar", "Toolbar1"}, {"key", "Bold"}});
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<P><B>one</B></P>");
  const std::vector<Json> events = told_of("event");
  result("answer", {{"event", "ToolButtonClick"}, {"set", {{"cancel", true}}}});
  result("press", {{"toolbar", "Toolbar1"}, {"key", "Italic"}});
  ASSERT_EQ(told_of("event").size(), 1u);
  EXPECT_EQ(told_of("event")[0]["args"]["buttonName"], "Italic");
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<P><B>one</B></P>");
}

TEST_F(Gestures, AButtonThatNobodySeesIsNotPressed) {
  result("document.load", {{"html", "<p>[one]</p>"}});
  set("showFormattingToolbar1", false);
  EXPECT_EQ(failure("press", {{"toolbar", "Toolbar1"}, {"key", "Bold"}}), 5);
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<P>one</P>");
  set("showFormattingToolbar1", true);
  result("press", {{"toolbar", "Toolbar1"}, {"key", "Bold"}});
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<P><B>one</B></P>");
}

TEST_F(Gestures, AClickTellsTheHostOfItsElement) {
  set("DocumentHTML", "<p id=a>one</p>");
  const Json place = object("docHTML.getElementById('a').sourceIndex");
  const Json answer = result("mouse", {{"kind", "click"}, {"element", place}});
  EXPECT_EQ(answer["allowed"], true);
  EXPECT_EQ(answer["element"]["id"], "a");
  bool clicked = false;
  for (const Json& event : told_of("event"))
    if (event["name"] == "DocumentClick") clicked = event["args"]["CurrentElement"]["id"] == "a";
  EXPECT_TRUE(clicked);
  set("EditorEnabled", false);
  EXPECT_EQ(result("mouse", {{"kind", "click"}, {"x", 0}, {"y", -1}})["allowed"], false);
}

TEST_F(Gestures, SelectionsAreMadeByPlace) {
  set("DocumentHTML", "<p>one</p><img>");
  EXPECT_EQ(result("select", {{"start", {{0, 0}, 1}}, {"end", {{0, 0}, 3}}})["type"], "Text");
  EXPECT_EQ(result("document.dump", {{"marks", true}})["html"], "<P>o[ne]</P><IMG>");
  const Json image = object("docHTML.images(0).sourceIndex");
  EXPECT_EQ(result("select", {{"control", image}})["type"], "Control");
  EXPECT_EQ(result("select", {{"none", true}})["type"], "None");
  EXPECT_EQ(failure("select", {{"start", {{7, 0}, 1}}}), 5);
  EXPECT_EQ(failure("select", {{"start", 7}}), -32602);
}

TEST_F(Gestures, NavigationIsTheHostsDecision) {
  EXPECT_EQ(result("navigate", {{"url", "about:blank"}})["cancelled"], true);
  ASSERT_FALSE(told_of("event").empty());
  EXPECT_EQ(told_of("event")[0]["name"], "BeforeNavigate");
  EXPECT_EQ(told_of("event")[0]["args"]["CancelNavigate"], true);
  result("answer", {{"event", "BeforeNavigate"}, {"set", {{"CancelNavigate", false}}}});
  EXPECT_EQ(result("navigate", {{"url", "about:blank"}}),
            (Json{{"cancelled", false}, {"url", "about:blank"}}));
  result("navigate", {{"url", "http://nowhere/"}, {"event", "NavigateError"}});
  ASSERT_EQ(told_of("event").size(), 1u);
  EXPECT_EQ(told_of("event")[0]["args"]["errNo"], 20000);
}

}  // namespace
}  // namespace tvx::automation::test
