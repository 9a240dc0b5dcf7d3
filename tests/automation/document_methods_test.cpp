#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

class DocumentMethods : public Conversation {
 protected:
  void load(std::string_view html, std::string_view host = "body") {
    result("document.load", {{"html", html}, {"host", host}});
  }
  std::string dump(bool marks = true) {
    return result("document.dump", {{"marks", marks}, {"letters", "lower"}})["html"].get<std::string>();
  }
};

TEST_F(DocumentMethods, ContentWithMarksIsLoadedAndDumped) {
  load("<p>Hello [world]</p>");
  EXPECT_EQ(dump(), "<p>Hello [world]</p>");
  EXPECT_EQ(dump(false), "<p>Hello world</p>");
  EXPECT_EQ(result("document.dump")["html"], "<P>Hello world</P>");
}

// Public cases were made in a page of the standards' mode; a body has its document's own.
TEST_F(DocumentMethods, TheModeOfThePageIsThatOfItsHost) {
  load("<p>[x]</p>", "div");
  EXPECT_EQ(object("docHTML.compatMode"), "CSS1Compat");
  load("<p>[x]</p>", "body");
  EXPECT_EQ(object("docHTML.compatMode"), "BackCompat");
}

TEST_F(DocumentMethods, CommandsRunAndAnswer) {
  for (const char* host : {"body", "div"}) {
    load("<p>Hello [world]</p>", host);
    EXPECT_EQ(result("document.exec", {{"command", "bold"}})["returned"], true);
    EXPECT_EQ(dump(), "<p>Hello <b>[world]</b></p>") << host;
    const Json answer = result("document.query", {{"command", "BOLD"}});
    EXPECT_EQ(answer["state"], true);
    EXPECT_EQ(answer["platform"], -1);
  }
}

TEST_F(DocumentMethods, UnknownCommandsAreNotSupported) {
  load("<p>[x]</p>");
  EXPECT_EQ(result("document.exec", {{"command", "fly"}})["returned"], false);
  EXPECT_EQ(result("document.query", {{"command", "fly"}}), (Json{{"supported", false},
                                                                  {"enabled", false},
                                                                  {"indeterm", false},
                                                                  {"state", false},
                                                                  {"value", ""},
                                                                  {"platform", nullptr}}));
}

TEST_F(DocumentMethods, NothingOutsideTheHostCanBeEdited) {
  load("<p>[x]</p>", "div");
  EXPECT_EQ(result("document.query", {{"command", "bold"}})["enabled"], true);
  EXPECT_EQ(object("docHTML.body.children(1).innerHTML"), "test");
  result("select", {{"start", {{1, 0}, 0}}, {"end", {{1, 0}, 2}}});
  EXPECT_EQ(result("document.query", {{"command", "bold"}})["enabled"], false);
}

TEST_F(DocumentMethods, LoadingLeavesTheControlsTextsAlone) {
  set("DocumentHTML", "<p>mine</p>");
  load("<p>[x]</p>");
  EXPECT_EQ(object("originalHTML"), "<p>mine</p>");
  EXPECT_EQ(get("IsDirty"), false);
  EXPECT_EQ(result("document.exec", {{"command", "undo"}})["returned"], false) << "there is nothing to undo";
  EXPECT_EQ(dump(false), "<p>x</p>");
}

TEST_F(DocumentMethods, ASheetIsSeenByCommands) {
  result("document.load", {{"html", "<p class=b>[x]</p>"}, {"sheet", ".b { font-weight: bold }"}});
  EXPECT_EQ(result("document.query", {{"command", "bold"}})["state"], true);
  load("<p class=b>[x]</p>");
  EXPECT_EQ(result("document.query", {{"command", "bold"}})["state"], false);
}

TEST_F(DocumentMethods, KeysGoTheWholeRoad) {
  load("<p>one[]</p>");
  result("document.type", {{"text", " two\nthree"}});
  EXPECT_EQ(dump(false), "<p>one two</p><p>three</p>");
  EXPECT_EQ(get("IsDirty"), true);
  result("document.key", {{"key", "z"}, {"ctrl", true}});
  ASSERT_EQ(told_of("event").size(), 1u);
  EXPECT_EQ(told_of("event")[0]["args"], (Json{{"KeyCode", 90}, {"Shift", false}, {"Control", true}}));
  EXPECT_NE(dump(false), "<p>one two</p><p>three</p>");
  EXPECT_EQ(failure("document.key", {{"key", "NoSuchKey"}}), 5);
}

TEST_F(DocumentMethods, TextOfEveryScriptIsTyped) {
  const std::string texts[] = {"\u00E4\u00F6\u00FC\u00DF \u00C4",
                               "\u043F\u0440\u0438\u0432\u0435\u0442",
                               "a\U0001F600b",
                               "e\u0301n\u0303",
                               "\u4F60\u597D",
                               "\u20AC\u2013"};
  for (const std::string& text : texts) {
    load("<p>x[]</p>");
    result("document.type", {{"text", text}});
    EXPECT_EQ(dump(false), "<p>x" + text + "</p>");
    load("<p>x[]</p>");
    result("document.type", {{"text", text + "\n" + text}});
    EXPECT_EQ(dump(false), "<p>x" + text + "</p><p>" + text + "</p>");
  }
}

TEST_F(DocumentMethods, AKeyThatNoUsKeyboardHasIsAKeyWithoutANumber) {
  for (const std::string key : {"\u00E4", "\u0436", "\U0001F600", "\u0301"}) {
    load("<p>x[]</p>");
    result("document.key", {{"key", key}});
    ASSERT_EQ(told_of("event").size(), 1u) << key;
    EXPECT_EQ(told_of("event")[0]["args"]["KeyCode"], 255) << key;
    EXPECT_EQ(dump(false), "<p>x" + key + "</p>");
  }
}

TEST_F(DocumentMethods, KeysTypeWhatTheWindowsKeysType) {
  load("<p>x[]</p>");
  result("document.type", {{"text", "\"!~^"}});
  EXPECT_EQ(dump(false), "<p>x\"!~^</p>");
  result("document.key", {{"key", "Enter"}});
  EXPECT_EQ(told_of("event")[0]["args"]["KeyCode"], 13);
  result("document.key", {{"key", "F5"}});
  EXPECT_EQ(told_of("event")[0]["args"]["KeyCode"], 116);
  EXPECT_EQ(dump(false), "<p>x\"!~^</p><p><br></p>");
}

TEST_F(DocumentMethods, NoKeyOfTheUsersChangesADisabledEditor) {
  set("useEnterAsBR", true);
  set("DocumentHTML", "<P contenteditable=\"true\">one</P>");
  result("clipboard", {{"set", {{"1", "pasted"}}}});
  set("EditorEnabled", false);
  const Json before = object("docHTML.body.innerHTML");
  const Json keys[] = {{{"key", "x"}},
                       {{"key", "Enter"}},
                       {{"key", " "}, {"shift", true}},
                       {{"key", "v"}, {"ctrl", true}},
                       {{"key", "x"}, {"ctrl", true}},
                       {{"key", "b"}, {"ctrl", true}},
                       {{"key", "z"}, {"ctrl", true}},
                       {{"key", "Tab"}},
                       {{"key", "Backspace"}},
                       {{"key", "Delete"}}};
  for (const Json& key : keys) {
    result("select", {{"start", {{0, 0}, 1}}, {"end", {{0, 0}, 2}}});
    result("document.key", key);
    EXPECT_EQ(told_of("event").size(), 1u) << key << ": the host hears of it all the same";
    EXPECT_EQ(object("docHTML.body.innerHTML"), before) << key;
  }
  result("document.type", {{"text", "more"}});
  EXPECT_EQ(object("docHTML.body.innerHTML"), before);
  result("call", {{"name", "InsertAtCursor"}, {"args", {"<I>host</I>", 1}}});
  EXPECT_NE(object("docHTML.body.innerHTML"), before) << "calls of the host act";
}

TEST_F(DocumentMethods, ADisabledEditorStillCopies) {
  set("DocumentHTML", "<P>one</P>");
  set("EditorEnabled", false);
  result("select", {{"start", {{0, 0}, 0}}, {"end", {{0, 0}, 3}}});
  result("document.key", {{"key", "c"}, {"ctrl", true}});
  EXPECT_EQ(result("clipboard")["formats"].value("1", Json()), "one");
}

TEST_F(DocumentMethods, ALetGoKeyTypesNothing) {
  load("<p>one[]</p>");
  result("document.key", {{"key", "a"}, {"up", true}});
  EXPECT_EQ(dump(), "<p>one[]</p>");
  EXPECT_TRUE(told_of("event").empty());
  EXPECT_EQ(get("IsDirty"), true);
}

TEST_F(DocumentMethods, TextsAreParsedWholeAndInTheirContext) {
  EXPECT_EQ(result("document.parse", {{"html", "x"}})["tree"],
            "| <html>\n|   <head>\n|   <body>\n|     \"x\"");
  EXPECT_EQ(result("document.parse", {{"html", "<td>x"}, {"context", "tr"}})["tree"], "| <td>\n|   \"x\"");
  EXPECT_EQ(result("document.parse", {{"html", "<g>"}, {"context", "svg svg"}})["tree"], "| <svg g>");
}

TEST_F(DocumentMethods, ALinkIsAskedFor) {
  result("document.load", {{"html", "<p>[one] <a href=\"old\">two</a></p>"}, {"host", "body"}});
  result("expect", {{"on", "link"}, {"result", "http://a.b/"}});
  EXPECT_EQ(result("document.exec", {{"command", "CreateLink"}, {"ui", true}})["returned"], true);
  ASSERT_EQ(told_of("seen").size(), 1u);
  EXPECT_EQ(told_of("seen")[0]["seen"]["texts"], Json::array({""}));
  EXPECT_EQ(result("document.dump")["html"],
            "<P><A href=\"http://a.b/\">one</A> <A href=\"old\">two</A></P>");
  // Nobody expects it: cancelled.
  EXPECT_EQ(result("document.exec", {{"command", "CreateLink"}, {"ui", true}})["returned"], false);
}

}  // namespace
}  // namespace tvx::automation::test
