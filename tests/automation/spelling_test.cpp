#include <filesystem>

#include "conversation.h"
#include "spelling/temporary_folder.h"

/// Spelling by script alone: the engine as an object, the run with its dialog, and the waves.
namespace tvx::automation::test {
namespace {

class Spelling : public Conversation {
 protected:
  Json call(const std::string& path, Json arguments) {
    return result("object", {{"path", path}, {"args", std::move(arguments)}});
  }
  Json spell_check() { return result("call", {{"name", "SpellCheck"}}); }

  spelling::TemporaryFolder folder;
  spelling::EnvironmentScope data{"XDG_DATA_HOME", folder.path()};
  spelling::EnvironmentScope locale{"LC_ALL", "C.UTF-8"};
};

TEST_F(Spelling, TheEngineAnswersWordByWord) {
  const Json right = call("clsSpell.SpellCheckWord", {"world", Json::array(), 7});
  EXPECT_EQ(right["value"], true);
  EXPECT_EQ(right["args"], (Json{"world", Json::array(), 7})) << "the count stays";
  const Json wrong = call("clsSpell.SpellCheckWord", {"recieve", Json::array(), 0});
  EXPECT_EQ(wrong["value"], false);
  EXPECT_EQ(wrong["args"][1][0], "receive");
  EXPECT_EQ(wrong["args"][2], wrong["args"][1].size());
  EXPECT_EQ(call("clsSpell.SpellCheckWord", {""})["value"], true);
  EXPECT_EQ(object("clsSpell.WordNotInstalled"), false);
}

TEST_F(Spelling, TheEngineKeepsItsLists) {
  call("clsSpell.AddWordToIgnoredList", {"Teh"});
  EXPECT_EQ(object("clsSpell.IsWordIgnored('teh')"), true);
  call("clsSpell.AddWordToChangedList", {"teh", "the"});
  call("clsSpell.AddWordToChangedList", {"teh", "other"});
  EXPECT_EQ(object("clsSpell.GetChangedWord('TEH')"), "the");
  EXPECT_EQ(object("clsSpell.IsWordChanged('tea')"), false);
  call("clsSpell.ClearIgnoredWords", Json::array());
  call("clsSpell.ClearChangedWords", Json::array());
  EXPECT_EQ(object("clsSpell.IsWordIgnored('teh')"), false);
  EXPECT_EQ(object("clsSpell.GetChangedWord('teh')"), "");
}

TEST_F(Spelling, TheEngineReadsACustomDictionary) {
  folder.write("words", "wrold\r\n");
  EXPECT_EQ(object("clsSpell.DoesFileExists('" + folder.path("words") + "')"), true);
  result("object", {{"path", "clsSpell.NameOfCustomDict"}, {"set", folder.path("words")}});
  EXPECT_EQ(object("clsSpell.SpellCheckWord('wrold')"), true);
  EXPECT_EQ(object("clsSpell.SpellCheckWord('xyzzzy')"), false);
  call("clsSpell.AppendToAddWordsFile", {folder.path("words"), "xyzzzy"});
  EXPECT_EQ(object("clsSpell.SpellCheckWord('xyzzzy')"), true);
  for (const char* stored : {"UseMainDictionaryOnly", "WordNotInstalled"}) {
    result("object", {{"path", std::string("clsSpell.") + stored}, {"set", true}});
    EXPECT_EQ(object(std::string("clsSpell.") + stored), true);
  }
  EXPECT_EQ(object("clsSpell.NameOfAddWordsDict"), "");
}

TEST_F(Spelling, TheApplicationIsDrivenByItsOperations) {
  EXPECT_EQ(object("clsSpell.application.Documents.count"), 0);
  object("clsSpell.application.Documents.Add");
  EXPECT_EQ(object("clsSpell.application.Documents.count"), 1);
  EXPECT_EQ(object("clsSpell.application.CheckSpelling('world', '')"), true);
  EXPECT_EQ(object("clsSpell.application.GetSpellingSuggestions('wrold')").at(0).is_string(), true);
  result("object", {{"path", "clsSpell.application.Language"}, {"set", "de"}});
  EXPECT_EQ(object("clsSpell.application.CheckSpelling('Stra\u00DFe', '')"), true);
  EXPECT_EQ(failure("object", {{"path", "clsSpell.application.CheckSpelling"}}), 450);
  EXPECT_EQ(failure("object", {{"path", "clsSpell.nobody"}}), 438);
}

TEST_F(Spelling, WithoutAnApplicationEveryWordIsWrong) {
  result("fault", {{"operation", "CreateObject"}, {"error", {429, "There is none"}}});
  EXPECT_EQ(object("clsSpell.SpellCheckWord('world')"), false);
  EXPECT_EQ(object("clsSpell.WordNotInstalled"), true);
  EXPECT_EQ(object("clsSpell.application"), nullptr);
  object("clsSpell.Terminate");
  EXPECT_EQ(object("clsSpell.SpellCheckWord('world')"), true) << "another one is started";
}

TEST_F(Spelling, FaultsNameTheApplicationsOperations) {
  for (const char* operation : {"Documents.Add", "CheckSpelling"}) {
    object("clsSpell.Terminate");
    result("fault", {{"operation", operation}, {"error", {5, "on purpose"}}});
    EXPECT_EQ(object("clsSpell.SpellCheckWord('world')"), false) << operation;
    EXPECT_EQ(object("clsSpell.SpellCheckWord('world')"), true) << operation;
  }
  result("fault", {{"operation", "GetSpellingSuggestions"}, {"result", 0}});
  const Json wrong = call("clsSpell.SpellCheckWord", {"wrold", {"as", "it was"}, 2});
  EXPECT_EQ(wrong["args"], (Json{"wrold", {"as", "it was"}, 0})) << "the array stays";
}

TEST_F(Spelling, TheTokeniser) {
  const Json tokens = call("clsString.TokenizeStr", {"one,two three", nullptr, nullptr, 0, 0, 0});
  EXPECT_EQ(tokens["value"], true);
  EXPECT_EQ(tokens["args"][1], (Json{1, 9}));
  EXPECT_EQ(tokens["args"][2], (Json{"one,two", "three"}));
  EXPECT_EQ(tokens["args"][3], 2);
  result("object", {{"path", "clsString.UserDelim"}, {"set", ","}});
  EXPECT_EQ(call("clsString.TokenizeStr", {"one,two three"})["args"][2], (Json{"one", "two", "three"}));
  EXPECT_EQ(call("clsString.TokenizeStr", {"abc", nullptr, nullptr, 0, 0, 4})["value"], false);
  EXPECT_EQ(call("clsString.StripCtrlCharsInStr", {"a\tb\x7F"
                                                   "c"})["value"],
            "abc");
}

TEST_F(Spelling, TheRangesOfWords) {
  set("DocumentHTML", "<p>one two</p>");
  EXPECT_EQ(object("GetWordRange(2).text"), "two");
  EXPECT_EQ(object("GetWordRange(9, 1)"), nullptr);
}

TEST_F(Spelling, ADocumentIsCheckedAndTheDialogAnswered) {
  set("DocumentHTML", "<p>The wrold is <b>rond</b>.</p><p lang=de>Ein Sazt.</p>");
  result("expect", {{"on", "dialog:frmSpelling"}, {"press", "OKButton"}});
  result("expect", {{"on", "dialog:frmSpelling"}, {"set", {{"txtOriginal", "flat"}}}, {"press", "OKButton"}});
  result("expect",
         {{"on", "dialog:frmSpelling"}, {"set", {{"lstSuggestions", "Satz"}}}, {"press", "OKButton"}});
  spell_check();
  const std::vector<Json> seen = told_of("seen");
  ASSERT_EQ(seen.size(), 3u);
  EXPECT_EQ(seen[0]["seen"]["texts"]["txtOriginal"], "wrold");
  EXPECT_EQ(seen[0]["seen"]["texts"]["txtSentence"], "The wrold is rond.");
  EXPECT_EQ(seen[0]["seen"]["enabled"]["cmdAddWord"], false);
  std::vector<std::string> words;
  for (const Json& event : told_of("event"))
    if (event["name"] == "SpellCheckWord") words.push_back(event["args"]["oldWord"]);
  EXPECT_EQ(words, (std::vector<std::string>{"The", "wrold", "is", "rond", "Ein", "Sazt"}));
  EXPECT_EQ(get("DocumentHTML"), "<P>The world is <B>flat</B>.</P><P lang=\"de\">Ein Satz.</P>");
}

TEST_F(Spelling, TheRunsOwnEngineIsMeantWhileItGoesOn) {
  folder.write("words", "");
  set("CustomDictionaryFilename", folder.path("words"));
  set("DocumentHTML", "<p>a wrold</p>");
  call("clsSpell.AddWordToIgnoredList", {"mine"});
  const auto ask = [](const char* path) {
    return Json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "object"}, {"params", {{"path", path}}}};
  };
  result("expect", {{"on", "dialog:frmSpelling"},
                    {"press", "cmdAddWord"},
                    {"do",
                     {ask("clsSpell.NameOfCustomDict"), ask("clsSpell.IsWordIgnored('mine')"),
                      ask("lstSuggestions.ListIndex")}}});
  spell_check();
  const Json did = told_of("seen").at(0)["did"];
  EXPECT_EQ(did[0]["result"]["value"], folder.path("words"));
  EXPECT_EQ(did[1]["result"]["value"], false);
  EXPECT_EQ(did[2]["result"]["value"], 0) << "the first one is chosen";
  EXPECT_EQ(folder.read("words"), "wrold\r\n");
  EXPECT_EQ(object("clsSpell.IsWordIgnored('mine')"), true) << "the script's own again";
}

TEST_F(Spelling, AScriptEndsTheRun) {
  set("DocumentHTML", "<p>one two three</p>");
  EXPECT_EQ(object("spellingCancelled"), false);
  result("expect",
         {{"on", "event:SpellCheckWord"},
          {"do",
           {{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "call"}, {"params", {{"name", "SpellingCancel"}}}}}}});
  spell_check();
  int words = 0;
  for (const Json& event : told_of("event")) words += event["name"] == "SpellCheckWord";
  EXPECT_EQ(words, 1);
  EXPECT_EQ(object("spellingCancelled"), true);
}

TEST_F(Spelling, TheOtherWalk) {
  set("DocumentHTML", "<p>a wrold</p>");
  const Json body = object("docHTML.body");
  result("expect",
         {{"on", "dialog:frmSpelling"}, {"set", {{"txtOriginal", "globe"}}}, {"press", "OKButton"}});
  EXPECT_EQ(call("recurs_document", {body, true})["args"][1], false);
  EXPECT_EQ(get("DocumentHTML"), "<P>a globe</P>");
}

TEST_F(Spelling, WordsWithAWaveAndTheirMenu) {
  set("CheckSpellingAsYouType", true);
  set("DocumentHTML", "<p>wrold <b>fine</b> Sazt</p>");
  result("pump", {{"ms", 50}});
  EXPECT_EQ(object("markedWords"), (Json{"wrold", "Sazt"}));
  const Json paragraph = object("docHTML.all.tags('P').item(0).sourceIndex");
  const auto right_press = [&] {
    result("mouse", {{"kind", "press"}, {"button", "right"}, {"element", paragraph}});
  };
  result("expect", {{"on", "popup:mnuMisc"}, {"choose", "mnuSpellingAdd"}});
  right_press();
  const Json seen = told_of("seen").at(0)["seen"];
  EXPECT_EQ(seen["items"][0], "mnuSpelling(1)") << seen.dump();
  result("pump", {{"ms", 50}});
  EXPECT_EQ(object("markedWords"), (Json{"Sazt"}));
  EXPECT_EQ(folder.read("tvxHTML/words.txt"), "wrold\n");
}

}  // namespace
}  // namespace tvx::automation::test
