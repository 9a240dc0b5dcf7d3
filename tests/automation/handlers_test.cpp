#include <filesystem>
#include <fstream>

#include "conversation.h"

/// Handlers and routines of the control that scripts call by their names.
namespace tvx::automation::test {
namespace {

class Handlers : public Conversation {
 protected:
  Json call(const std::string& path, Json arguments = Json::array()) {
    return result("object", {{"path", path}, {"args", std::move(arguments)}});
  }
  std::vector<std::string> events() const {
    std::vector<std::string> names;
    for (const Json& event : told_of("event")) names.push_back(event["name"]);
    return names;
  }
};

TEST_F(Handlers, ItemsOfMenusActByTheirHandlers) {
  set("DocumentHTML", "<table><tr><td>a</td><td>b</td></tr></table>");
  call("mnuTInsRow_Click");
  EXPECT_EQ(told_of("event").at(0)["args"]["MenuItem"], "ContextTABLEInsRow");
  EXPECT_EQ(object("pendingContextCommand"), "Insert Row");
  result("answer", {{"event", "MenuClick"}, {"set", {{"cancel", true}}}});
  call("mnuTDelRow_Click");
  EXPECT_EQ(object("pendingContextCommand"), "Insert Row") << "the host refused";
  result("answer", {{"event", "MenuClick"}, {"set", nullptr}});
  EXPECT_EQ(get("IsDirty"), false);
  call("MNUMISCPASTE_click");
  EXPECT_EQ(get("IsDirty"), true);
  for (const char* none : {"mnuMisc_Click", "mnuS1_Click", "mnuNothing_Click", "_Click"})
    EXPECT_EQ(failure("object", {{"path", none}}), 438) << none;
  EXPECT_EQ(failure("object", {{"path", "mnuTInsRow_Click"}, {"args", {1}}}), 450);
}

TEST_F(Handlers, CellsAreMergedByTheItemsHandler) {
  set("DocumentHTML", "<table><tr><td>a</td><td>b</td></tr></table>");
  result("object", {{"path", "highlightElement"}, {"set", object("docHTML.all.tags('TD').item(0)")}});
  call("MnuCellRowActionsMergeCellRight_Click");
  EXPECT_EQ(told_of("event").at(0)["args"]["MenuItem"], "DOMCELLROWMergeCellRight");
  EXPECT_EQ(object("docHTML.all.tags('TD').length"), 1);
  EXPECT_EQ(object("docHTML.all.tags('TD').item(0).colSpan"), 2);
}

TEST_F(Handlers, TheClassMenusTakeAnIndex) {
  set("DocumentHTML", "<p class=a>x</p>");
  result("object", {{"path", "highlightElement"}, {"set", object("docHTML.all.tags('P').item(0)")}});
  call("mnuClass_Click", {0});
  EXPECT_EQ(told_of("event").at(0)["args"]["MenuItem"], "DOMCSSClass");
  EXPECT_EQ(get("DocumentHTML"), "<P>x</P>");
}

TEST_F(Handlers, ButtonsActByTheirToolbarsHandler) {
  set("DocumentHTML", "<p>x</p>");
  call("Toolbar1_ButtonClick", {10});
  EXPECT_EQ(told_of("event").at(0)["args"],
            (Json{{"Toolbar", "Toolbar1"}, {"index", 10}, {"buttonName", "Bold"}, {"cancel", false}}));
  call("Toolbar2_ButtonClick", {"Radio"});
  EXPECT_EQ(told_of("event").at(0)["args"]["Toolbar"], "FormsToolbar");
  EXPECT_EQ(failure("object", {{"path", "Toolbar1_ButtonClick"}, {"args", {30}}}), 5);
}

TEST_F(Handlers, TheBrowsersEventsAreHeard) {
  Json args =
      call("WBrowser_BeforeNavigate2", {nullptr, "http://h/", 0, "side", nullptr, nullptr, false})["args"];
  EXPECT_EQ(args[6], true) << "refused unless the host lets it pass";
  EXPECT_EQ(told_of("event").at(0)["args"],
            (Json{{"TheURL", "http://h/"}, {"TheFrameName", "side"}, {"CancelNavigate", true}}));
  const std::string own = "http://h/" + std::to_string(get("hwnd").get<int>());
  EXPECT_EQ(call("WBrowser_BeforeNavigate2", {nullptr, own})["args"][6], false);
  EXPECT_TRUE(events().empty());
  call("WBrowser_NavigateError", {nullptr, "http://gone/", nullptr, 404, false});
  EXPECT_EQ(told_of("event").at(0)["args"],
            (Json{{"errNo", 20000}, {"errDesc", "Cant find document : http://gone/"}}));
  set("DocumentTitle", "T");
  result("object", {{"path", "docHTML.title"}, {"set", "other"}});
  call("WBrowser_DocumentComplete", {"a frame", "http://h/"});
  EXPECT_EQ(object("docHTML.title"), "other") << "a frame has finished";
  call("WBrowser_DocumentComplete", {nullptr, "http://h/"});
  EXPECT_EQ(object("docHTML.title"), "T");
}

TEST_F(Handlers, TheClientsEventsAreRelayed) {
  set("FTPHost", "h");
  call("cFTP_Connected");
  EXPECT_EQ(told_of("event").at(0)["args"], (Json{{"id", 0}, {"Message", "Connected to Host : h"}}));
  call("cFTP_Disconnected");
  EXPECT_EQ(told_of("event").at(0)["args"], (Json{{"id", 25}, {"Message", "Disconnected from Host : h"}}));
  call("cFTP_GetPutSuccess");
  EXPECT_EQ(told_of("event").at(0)["args"], (Json{{"id", 1}, {"Message", "File Transfer Complete!"}}));
  call("cFTP_FTPEvent", {7, "seven"});
  EXPECT_EQ(told_of("event").at(0)["args"], (Json{{"id", 7}, {"Message", "seven"}}));
  call("cFTP_TransferProgress", {5, 9});
  EXPECT_EQ(told_of("event").at(0)["args"], (Json{{"CurrentBytes", 5}, {"TotalBytes", 9}}));
}

TEST_F(Handlers, TheClientIsThereWithItsDefaults) {
  EXPECT_EQ(object("cFTP.FTPPort"), 21);
  EXPECT_EQ(object("cFTP.ShowDialog"), false);
  EXPECT_EQ(object("cFTP.TransferType"), 2);
  EXPECT_EQ(object("cFTP.Directory.count"), 0);
  EXPECT_EQ(object("cFTP.Directory.item(1).Filename"), "..");
  result("object", {{"path", "cFTP.ActionCancelled"}, {"set", true}});
  EXPECT_EQ(object("cFTP.ActionCancelled"), true);
  EXPECT_EQ(object("cFTP.ActionCancelled"), false) << "reading clears it";
  EXPECT_EQ(call("cFTP.GetFileProgress", {"", "x"})["value"], false);
  EXPECT_EQ(failure("object", {{"path", "cFTP.PutFileProgress"}, {"args", {"r", "/nowhere/x"}}}), 53);
  EXPECT_EQ(call("cFTP.Disconnect")["value"], false);
  EXPECT_EQ(events(), (std::vector<std::string>{"FTPSuccess", "FTPSuccess"}));
  EXPECT_EQ(object("fLib"), nullptr);
  result("control", {{"do", "new"}, {"store", nullptr}});
  EXPECT_EQ(result("object", {{"path", "cFTP"}, {"instance", 2}})["value"], nullptr) << "before the start";
}

TEST_F(Handlers, TheLibrarysEventsAreHeard) {
  const auto step = [](const char* path) {
    return Json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "object"}, {"params", {{"path", path}}}};
  };
  call("fLib_unloaded");
  set("DocumentHTML", "<p>x</p>");
  result("select", {{"start", {{0, 0}, 1}}, {"end", {{0, 0}, 1}}});
  call("fLib_ImageInserted", {"http://h/a.gif"});
  EXPECT_EQ(get("DocumentHTML"), "<P>x<IMG src=\"http://h/a.gif\"></P>");
  EXPECT_EQ(get("IsDirty"), true);
  result("fault", {{"operation", "InternetAutodial"}, {"result", 0}});
  result("expect", {{"on", "dialog:frmLibraryImage"},
                    {"do", {step("fLib.Visible"), step("fLib_unloaded"), step("fLib.Visible")}},
                    {"press", "cmdInsert"}});
  result("call", {{"name", "insertImageFromURL"}, {"args", {""}}});
  Json did;
  for (const Json& seen : told_of("seen")) did = seen["did"];
  ASSERT_EQ(did.size(), 3u);
  EXPECT_EQ(did[0]["result"]["value"], true);
  EXPECT_EQ(did[2]["result"]["value"], false);
  EXPECT_EQ(object("fLib"), nullptr);
}

TEST_F(Handlers, TheCodeViewsEventsMarkTheDocument) {
  call("txtCode_KeyDown", {37, 0});
  EXPECT_EQ(get("IsDirty"), true);
  set("DocumentHTML", "");
  call("txtCode_Change");
  EXPECT_EQ(get("IsDirty"), true);
  set("DocumentHTML", "<p>x</p>");
  EXPECT_EQ(object("codeText"), "");
  result("call", {{"name", "show_Code"}});
  EXPECT_EQ(object("codeText"), "<P>x</P>\r\n");
  result("object", {{"path", "txtCode.Edit"}, {"args", {"<P>y</P>"}}});
  result("call", {{"name", "show_Code"}});
  EXPECT_EQ(object("codeText"), "<P>y</P>");
  EXPECT_EQ(object("editWindow"), get("hwnd"));
}

TEST_F(Handlers, AMenuIsShownByItsRoutine) {
  result("expect", {{"on", "popup:mnuMisc"}, {"choose", "mnuMiscSource"}});
  call("ShowContextMenu", {"mnuMisc"});
  EXPECT_EQ(object("inCodeView"), true);
  EXPECT_EQ(failure("object", {{"path", "ShowContextMenu"}, {"args", {"nothing"}}}), 438);
}

TEST_F(Handlers, HelpersAreRoutines) {
  EXPECT_EQ(call("NullToEmpty", {nullptr})["value"], "");
  EXPECT_EQ(call("NullToEmpty", {12})["value"], "12");
  EXPECT_EQ(call("TrimNul", {std::string("a\0b", 3)})["value"], "a");
  const auto file = std::filesystem::temp_directory_path() / ("tvx-helper-" + std::to_string(getpid()));
  call("WriteTextFile", {file.string(), "one\r\ntwo\n"});
  EXPECT_EQ(std::filesystem::file_size(file), 9u) << "nothing is added";
  EXPECT_EQ(call("ReadTextFile", {file.string()})["value"], "onetwo");
  std::filesystem::remove(file);
  EXPECT_EQ(call("ReadTextFile", {file.string()})["value"], "");
  result("expect", {{"on", "color"}, {"result", "#0000ff"}});
  EXPECT_EQ(call("ShowColor", {255, 0})["value"], 0xFF0000);
  EXPECT_EQ(call("ShowColor", {255, 0})["value"], -1) << "cancelled";
  result("expect", {{"on", "open"}, {"result", "/a"}});
  EXPECT_EQ(call("ShowOpen", {std::string("A\0*.a\0B\0*.b\0", 12), "Title", 0, "*.a"})["value"], "/a");
  const Json seen = told_of("seen").at(0)["seen"];
  EXPECT_EQ(seen["items"], (Json{{{"name", "A"}, {"pattern", "*.a"}}, {{"name", "B"}, {"pattern", "*.b"}}}));
  EXPECT_EQ(seen["captions"], (Json{"Title"}));
  EXPECT_EQ(seen["texts"], (Json{"*.a"}));
}

TEST_F(Handlers, APictureThatCannotGoUpIsTold) {
  result("fault", {{"operation", "InternetAutodial"}, {"result", 0}});
  EXPECT_EQ(call("UploadImageFile", {"/x.gif"})["value"], "");
  EXPECT_EQ(told_of("event").at(0)["args"],
            (Json{{"errNo", 11}, {"errDesc", "Could not connect to FTP Host!"}}));
}

}  // namespace
}  // namespace tvx::automation::test
