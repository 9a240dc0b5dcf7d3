#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

class MemberMethods : public Conversation {};

TEST_F(MemberMethods, PropertiesReadAsANewControlHasThem) {
  EXPECT_EQ(get("EditorEnabled"), true);
  EXPECT_EQ(get("basEurl"), "http://");
  EXPECT_EQ(get("BorderStyle"), 1);
  EXPECT_EQ(get("SelectionBorderStyle"), 0);
  EXPECT_GE(get("hwnd").get<int>(), 1'000'000);
}

TEST_F(MemberMethods, ASetPropertyIsToldBeforeTheAnswer) {
  set("FTPPort", 2121);
  ASSERT_EQ(told_of("propertyChanged").size(), 1u);
  EXPECT_EQ(told_of("propertyChanged")[0], (Json{{"instance", 1}, {"key", "FTPPort"}}));
  EXPECT_EQ(get("FTPPort"), 2121);
}

TEST_F(MemberMethods, ValuesAreConvertedOrRefused) {
  set("FTPPort", "99");
  EXPECT_EQ(get("FTPPort"), 99);
  set("FTPPassive", -1);
  EXPECT_EQ(get("FTPPassive"), true);
  EXPECT_EQ(failure("set", {{"name", "FTPPort"}, {"value", "many"}}), 13);
  EXPECT_EQ(failure("set", {{"name", "FTPPort"}, {"value", 3e9}}), 6);
  EXPECT_EQ(failure("set", {{"name", "FTPHost"}, {"value", nullptr}}), 13);
  EXPECT_EQ(failure("set", {{"name", "FTPHost"}}), -32602);
}

TEST_F(MemberMethods, WhatCantBeSetSaysSo) {
  for (const char* name : {"IsDirty", "allHTML", "DocumentText", "FTPActionInProgress", "DOM",
                           "HighlightDOMSelection", "showDocumentBackgroundImage"})
    EXPECT_EQ(failure("set", {{"name", name}, {"value", true}}), 382) << name;
  EXPECT_EQ(failure("set", {{"name", "hwnd"}, {"value", 1}}), 383);
  EXPECT_EQ(failure("set", {{"name", "Nothing"}, {"value", 1}}), 438);
  EXPECT_EQ(failure("get", {{"name", "bold_document"}}), 438);
}

TEST_F(MemberMethods, CallsGiveTheirArgumentsBack) {
  EXPECT_EQ(result("call", {{"name", "InCodeView"}, {"args", {true}}}),
            (Json{{"result", nullptr}, {"args", {false}}}));
  EXPECT_EQ(failure("call", {{"name", "InCodeView"}}), 450);
  EXPECT_EQ(failure("call", {{"name", "FTPPort"}}), 438);
}

TEST_F(MemberMethods, TheDocumentGoesInAndComesOut) {
  set("DocumentHTML", "<p>one</p>");
  EXPECT_EQ(get("DocumentHTML"), "<P>one</P>");
  ASSERT_EQ(told_of("event").size(), 1u);
  EXPECT_EQ(told_of("event")[0], (Json{{"instance", 1},
                                       {"name", "BeforeGetDocumentHTML"},
                                       {"args", {{"CurrentDocumentHTML", "<P>one</P>"}}}}));
  EXPECT_EQ(get("IsDirty"), false);
}

TEST_F(MemberMethods, AnAnswerStandsUntilItIsTakenAway) {
  set("DocumentHTML", "<p>one</p>");
  result("answer", {{"event", "beforegetdocumenthtml"}, {"set", {{"currentDocumentHTML", "mine"}}}});
  EXPECT_EQ(get("DocumentHTML"), "mine");
  EXPECT_EQ(get("DocumentHTML"), "mine");
  result("answer", {{"event", "BeforeGetDocumentHTML"}, {"set", nullptr}});
  EXPECT_EQ(get("DocumentHTML"), "<P>one</P>");
  EXPECT_EQ(failure("answer", {{"event", "Nothing"}, {"set", Json::object()}}), 438);
  EXPECT_EQ(failure("answer", {{"event", "Error"}, {"set", {{"nothing", 1}}}}), 438);
}

TEST_F(MemberMethods, AnExpectedEventRunsRequestsInside) {
  set("DocumentHTML", "<p>one</p>");
  const Json inner{{"jsonrpc", "2.0"}, {"id", "in"}, {"method", "get"}, {"params", {{"name", "IsDirty"}}}};
  const Json expected = result(
      "expect",
      {{"on", "event:BeforeGetDocumentHTML"}, {"set", {{"CurrentDocumentHTML", "once"}}}, {"do", {inner}}});
  EXPECT_EQ(get("DocumentHTML"), "once");
  ASSERT_EQ(told_of("seen").size(), 1u);
  const Json seen = told_of("seen")[0];
  EXPECT_EQ(seen["id"], expected["id"]);
  EXPECT_EQ(seen["seen"]["args"]["CurrentDocumentHTML"], "<P>one</P>");
  EXPECT_EQ(seen["did"][0]["result"]["value"], false);
  EXPECT_EQ(get("DocumentHTML"), "<P>one</P>") << "it was expected once";
}

TEST_F(MemberMethods, DialogsNobodyExpectsAreCancelled) {
  const Json answer = result("call", {{"name", "Open_document"}, {"args", {"", false}}});
  EXPECT_EQ(answer["args"][0], "");
  ASSERT_EQ(told_of("modal").size(), 1u);
  EXPECT_EQ(told_of("modal")[0]["kind"], "open");
  EXPECT_EQ(told_of("modal")[0]["name"], "Open HTML File");
}

TEST_F(MemberMethods, AnExpectedDialogIsAnsweredAndTold) {
  result("expect", {{"on", "open"}, {"result", "/nowhere/page.html"}});
  const Json answer = result("call", {{"name", "Open_document"}, {"args", {"", false}}});
  EXPECT_EQ(answer["args"][0], "/nowhere/page.html");
  ASSERT_EQ(told_of("seen").size(), 1u);
  EXPECT_EQ(told_of("seen")[0]["seen"]["captions"], Json::array({"Open HTML File"}));
  EXPECT_EQ(failure("expect", {{"on", "weather"}}), 445);
}

TEST_F(MemberMethods, APrintingIsExpectedAndTold) {
  const Json expected = result("expect", {{"on", "print"}, {"times", 2}});
  result("call", {{"name", "print_Document"}, {"args", {false}}});
  ASSERT_EQ(told_of("seen").size(), 1u);
  EXPECT_EQ(told_of("seen")[0]["id"], expected["id"]);
  EXPECT_EQ(told_of("seen")[0]["seen"], (Json{{"dialog", true}}));
  EXPECT_EQ(told_of("modal").size(), 1u);
  result("call", {{"name", "print_Document"}, {"args", {true}}});
  EXPECT_EQ(told_of("seen")[0]["seen"], (Json{{"dialog", false}}));
  EXPECT_EQ(told_of("event").size(), 0u);
}

TEST_F(MemberMethods, AFailingPrinterIsToldByItsNumber) {
  result("fault", {{"operation", "QueryStatusWB"}, {"result", 0}, {"times", 1}});
  result("call", {{"name", "print_Document"}, {"args", {true}}});
  ASSERT_EQ(told_of("event").size(), 1u);
  EXPECT_EQ(told_of("event")[0]["args"]["errNo"], 16384);
  result("fault", {{"operation", "QueryStatusWB"}, {"error", {5, "no printer"}}, {"times", 1}});
  result("call", {{"name", "print_Document"}, {"args", {true}}});
  EXPECT_EQ(told_of("event")[0]["args"],
            (Json{{"errNo", 16385}, {"errDesc", "An error occured whilst attempting to print"}}));
}

TEST_F(MemberMethods, TheSelectionIsReadSetAndInsertedAtByName) {
  set("DocumentHTML", "<p>one two three</p>");
  EXPECT_EQ(result("call", {{"name", "selectText"}, {"args", {4, 3}}})["result"], "two");
  EXPECT_EQ(result("call", {{"name", "GetCurrentSelection"}, {"args", {false}}})["result"], "two");
  result("call", {{"name", "FormatSelection"}, {"args", {"<i>", "</i>"}}});
  EXPECT_EQ(get("DocumentHTML"), "<P>one <I>two</I> three</P>");
  result("call", {{"name", "InsertAtCursor"}, {"args", {"<b>x</b>", 0}}});
  EXPECT_EQ(get("IsDirty"), true);
  EXPECT_EQ(failure("call", {{"name", "InsertAtCursor"}, {"args", {"<b>x</b>"}}}), 450);
}

TEST_F(MemberMethods, FaultsAreOrderedByName) {
  EXPECT_EQ(result("fault", {{"operation", "WriteTextFile"}, {"error", {70, "Permission denied"}}}),
            Json::object());
  EXPECT_EQ(failure("fault", {{"operation", "WriteTextFile"}}), -32602);
  EXPECT_EQ(failure("fault", {{"operation", "WriteTextFile"}, {"error", {70}}}), -32602);
}

}  // namespace
}  // namespace tvx::automation::test
