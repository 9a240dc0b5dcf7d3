#include <filesystem>
#include <fstream>

#include "conversation.h"

/// What stands beside the control, by the names that hosts know: words of dialogs, timers, watched messages.
namespace tvx::automation::test {
namespace {

class Kit : public Conversation {
 protected:
  Json set_object(const std::string& path, const Json& value) {
    return ask("object", {{"path", path}, {"set", value}});
  }
  /// A failure's number without the mark of an object's own errors.
  int kit_failure(const std::string& path, const Json& params) {
    Json all = {{"path", path}};
    all.update(params);
    return failure("object", all) & 0xFFFF;
  }
  int fired() const {
    int count = 0;
    for (const Json& event : told_of("event")) count += event["name"] == "CTimer_ThatTime";
    return count;
  }
};

TEST_F(Kit, ATimerTellsOfItsTimes) {
  EXPECT_EQ(object("CTimer.Interval"), 0);
  set_object("CTimer.Interval", 100);
  result("pump", {{"ms", 350}});
  EXPECT_EQ(fired(), 3);
  EXPECT_EQ(told_of("event").at(0)["args"], (Json{{"CTimer", 1}}));
  set_object("CTimer.Interval", 0);
  result("pump", {{"ms", 350}});
  EXPECT_EQ(fired(), 0);
  set_object("CTimer.Interval", -5);
  EXPECT_EQ(object("CTimer.Interval"), 0);
  set_object("CTimer.item", "mine");
  EXPECT_EQ(object("CTimer.item"), "mine");
  EXPECT_EQ(object("CTimer(2).item"), nullptr) << "another one";
  object("CTimer(2).PulseTimer");
  EXPECT_EQ(fired(), 1);
}

TEST_F(Kit, AHundredTimersRunAndNoMore) {
  for (int number = 1; number <= 100; ++number)
    set_object("CTimer(" + std::to_string(number) + ").Interval", 1000);
  const Json answer = set_object("CTimer(101).Interval", 1000);
  EXPECT_EQ(answer["error"]["code"].get<int>() & 0xFFFF, 13651);
  EXPECT_EQ(answer["error"]["message"], "No more than 10 timers allowed per class");
  set_object("CTimer(1).Interval", 0);
  EXPECT_EQ(failure("object", {{"path", "CTimer(102).Interval"}, {"set", 1000}}), 0);
  result("fault", {{"operation", "SetTimer"}, {"result", 0}});
  EXPECT_EQ(kit_failure("CTimer(103).Interval", {{"set", 10}}), 13652);
}

TEST_F(Kit, MessagesAreWatched) {
  set("DocumentHTML", "<p>x</p>");
  const Json window = object("txtCode.hWnd");
  constexpr int cut = 0x300;
  EXPECT_EQ(kit_failure("GSubclass.AttachMessage", {{"args", {1, 12, cut}}}), 13083);
  const auto call = [&](const char* routine, int watcher) {
    return kit_failure(std::string("GSubclass.") + routine, {{"args", {watcher, window, cut}}});
  };
  EXPECT_EQ(call("AttachMessage", 1), 0);
  EXPECT_EQ(call("AttachMessage", 1), 13082);
  EXPECT_EQ(call("AttachMessage", 2), 0);
  result("object", {{"path", "txtCode.TextBox1.SendMessage"}, {"args", {cut, 5, 6}}});
  ASSERT_EQ(told_of("event").size(), 2u) << "the later one first";
  EXPECT_EQ(told_of("event")[0]["name"], "ISubclass_WindowProc");
  EXPECT_EQ(told_of("event")[0]["args"],
            (Json{{"ISubclass", 2}, {"hwnd", window}, {"iMsg", cut}, {"wParam", 5}, {"lParam", 6}}));
  EXPECT_EQ(told_of("event")[1]["args"]["ISubclass"], 1);
  EXPECT_EQ(object("GSubclass.CurrentMessage"), cut);
  EXPECT_EQ(call("DetachMessage", 1), 0);
  EXPECT_EQ(call("DetachMessage", 2), 0);
  result("object", {{"path", "txtCode.TextBox1.SendMessage"}, {"args", {cut}}});
  EXPECT_EQ(told_of("event").size(), 0u);
}

TEST_F(Kit, TheFirstWatcherDecidesWhetherTheWindowGetsTheMessage) {
  set("DocumentHTML", "<p>x</p>");
  const Json window = object("txtCode.hWnd");
  constexpr int replace = 0xC2;
  const auto put = [&](const char* text) {
    result("object", {{"path", "txtCode.TextBox1.SendMessage"}, {"args", {replace, 0, text}}});
    return object("txtCode.Text").get<std::string>();
  };
  EXPECT_EQ(put("a"), "a<p>x</p>");
  result("object", {{"path", "GSubclass.AttachMessage"}, {"args", {1, window, replace}}});
  EXPECT_EQ(object("ISubclass(1).MsgResponse"), 0) << "consumes";
  EXPECT_EQ(put("b"), "a<p>x</p>");
  result("object", {{"path", "GSubclass.CallOldWindowProc"}, {"args", {window, replace, 0, "c"}}});
  EXPECT_EQ(object("txtCode.Text"), "ac<p>x</p>");
  set_object("ISubclass(1).MsgResponse", 1);
  EXPECT_EQ(put("d"), "acd<p>x</p>");
}

TEST_F(Kit, AControlThatEndsLeavesNothingRunning) {
  const Json second = result("control", {{"do", "new"}})["instance"];
  result("control", {{"do", "show"}, {"instance", second}});
  const auto of_second = [&](const char* path, Json more) {
    Json params = {{"path", path}, {"instance", second}};
    params.update(more);
    return result("object", params)["value"];
  };
  of_second("CTimer.Interval", {{"set", 10}});
  const Json window = object("txtCode.hWnd");
  of_second("GSubclass.AttachMessage", {{"args", {1, window, 0x300}}});
  result("control", {{"do", "terminate"}, {"instance", second}});
  result("pump", {{"ms", 100}});
  EXPECT_EQ(told_of("event").size(), 0u);
  result("object", {{"path", "txtCode.TextBox1.SendMessage"}, {"args", {0x300}}});
  EXPECT_EQ(told_of("event").size(), 0u) << "nobody watches any more";
}

class WordsOfDialogs : public Kit {
 protected:
  WordsOfDialogs() {
    file_ = std::filesystem::temp_directory_path() / ("tvx-words-" + std::to_string(getpid()) + ".xml");
    std::ofstream(file_) << "<languageUI><FontSettings><e><a special='form'>Schrift</a></e>"
                            "<e><a>lblFontName</a><b>Name</b></e><e><a>nobody</a><b>x</b></e>"
                            "<e><a>lblFontSize</a><b>Grad</b></e></FontSettings></languageUI>";
  }
  ~WordsOfDialogs() override { std::filesystem::remove(file_); }
  static Json step(const std::string& path, Json more = Json::object()) {
    Json params = {{"path", path}};
    params.update(more);
    return {{"jsonrpc", "2.0"}, {"id", 1}, {"method", "object"}, {"params", params}};
  }
  std::filesystem::path file_;
};

TEST_F(WordsOfDialogs, AreGivenByTheClassThatDoesIt) {
  result("expect", {{"on", "dialog:frmFont"},
                    {"do",
                     {step("clsLocalize.TheForm", {{"set", "frmFont"}}),
                      step("clsLocalize.LocalizationFile", {{"set", file_.string()}}),
                      step("clsLocalize.Localise", {{"args", {"FontSettings"}}}), step("frmFont.Caption"),
                      step("lblFontName.Caption"), step("lblFontSize.Caption")}}});
  result("call", {{"name", "change_Font"}});
  const Json did = told_of("seen").at(0)["did"];
  EXPECT_EQ(did[3]["result"]["value"], "Schrift");
  EXPECT_EQ(did[4]["result"]["value"], "Name");
  EXPECT_EQ(did[5]["result"]["value"], "Size") << "the name before it is none of the dialog's";
  ASSERT_FALSE(told_of("event").empty());
  EXPECT_EQ(told_of("event")[0]["name"], "clsLocalize_Error");
  EXPECT_EQ(told_of("event")[0]["args"]["errNo"], 11000);
  EXPECT_TRUE(told_of("event")[0]["args"]["errDesc"].get<std::string>().starts_with("Language UI error : "));
}

TEST_F(WordsOfDialogs, AFileThatIsNotThereIsTold) {
  set_object("clsLocalize.LocalizationFile", "/nowhere.xml");
  result("object", {{"path", "clsLocalize.Localise"}, {"args", {"FontSettings"}}});
  EXPECT_EQ(told_of("event").at(0)["args"],
            (Json{{"errNo", 11000}, {"errDesc", "Can not find UI language file at /nowhere.xml"}}));
  set_object("clsLocalize.LocalizationFile", "");
  result("object", {{"path", "clsLocalize.Localise"}, {"args", {"FontSettings"}}});
  EXPECT_EQ(told_of("event").size(), 0u);
}

}  // namespace
}  // namespace tvx::automation::test
