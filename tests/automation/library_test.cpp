#include <filesystem>
#include <fstream>

#include "conversation.h"
#include "support/server_process.h"

/// The library of remote pictures in front of a real server, used by a script.
namespace tvx::automation::test {
namespace {

class LibraryByScript : public Conversation {
 protected:
  LibraryByScript() {
    folder_ = std::filesystem::temp_directory_path() / ("tvx-library-script-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_ / "remote" / "sub.png");
    for (const char* name : {"remote/b.png", "remote/a.gif", "remote/notes.txt", "new.jpg"})
      std::ofstream(folder_ / name, std::ios::binary) << std::string(name[7] == 'b' ? 2000 : 300, *name);
    server_ = std::make_unique<ServerProcess>(std::vector<std::string>{
        "/usr/bin/python3", TVX_SOURCE_DIR "/tests/network/pyftpd.py", (folder_ / "remote").string()});
    set("FTPHost", "ftp://127.0.0.1:" + server_->line());
    set("FTPUser", "ada");
    set("FTPPassword", "secret");
    set("FTPPassive", true);
    set("FTPBlockSize", 65536);
    set("FTPSaveToURL", "https://example.org/");
    set("DocumentHTML", "<P>text</P>");
  }
  ~LibraryByScript() override {
    server_.reset();
    std::filesystem::remove_all(folder_);
  }

  static Json step(const std::string& path, Json set = nullptr) {
    Json params = {{"path", path}};
    if (!set.is_null()) params["set"] = set;
    return {{"jsonrpc", "2.0"}, {"id", 1}, {"method", "object"}, {"params", params}};
  }
  /// Opens the library; the answers of what is done in it.
  Json visit(const Json& steps) {
    result("expect", {{"on", "dialog:frmLibraryImage"}, {"do", steps}, {"press", "cmdCancel"}});
    result("select", {{"start", {{0, 0}, 0}}, {"end", {{0, 0}, 0}}});
    result("call", {{"name", "insertImageFromURL"}, {"args", {""}}});
    const std::vector<Json> seen = told_of("seen");
    for (const Json& each : seen)
      if (each.contains("did") && !each["did"].empty()) return each["did"];
    return Json::array();
  }

  std::filesystem::path folder_;
  std::unique_ptr<ServerProcess> server_;
};

TEST_F(LibraryByScript, ListsSortsAndInserts) {
  const Json did =
      visit({step("lstImage.ListItems.Count"), step("lstImage.ColumnClick(2)"),
             step("lstImage.ListItems(1).Text"), step("lstImage.ListItems(2).SubItems(3)"),
             step("lstImage.ColumnHeaders(4).Width"), step("lstImage.Tag"), step("lstImage.SelectedItem", 2),
             step("cmdInsert.Click"), step("lstImage.DblClick")});
  ASSERT_EQ(did.size(), 9u) << did.dump();
  EXPECT_EQ(did[0]["result"]["value"], 2);
  EXPECT_EQ(did[2]["result"]["value"], "a.gif");
  EXPECT_EQ(did[3]["result"]["value"], "00000000002000");
  EXPECT_EQ(did[4]["result"]["value"], 0);
  EXPECT_EQ(did[5]["result"]["value"], "https://example.org/");
  const std::string html = get("DocumentHTML");
  const std::string image = "<IMG src=\"https://example.org/b.png\">";
  EXPECT_NE(html.find(image + image), std::string::npos) << html;
}

TEST_F(LibraryByScript, TakesFilesAndSaysWhatTheFolderHolds) {
  const Json did = visit({step("lstImage.OLEDragDrop(\"" + (folder_ / "new.jpg").string() + "\")"),
                          step("lstImage.ListItems.Count"), step("lstImage.Note")});
  ASSERT_EQ(did.size(), 3u) << did.dump();
  EXPECT_EQ(did[1]["result"]["value"], 3);
  EXPECT_EQ(did[2]["result"]["value"], "");
  EXPECT_TRUE(std::filesystem::exists(folder_ / "remote" / "new.jpg"));
}

TEST_F(LibraryByScript, SaysWhyItIsEmpty) {
  server_.reset();
  const Json did =
      visit({step("lstImage.ListItems.Count"), step("lstImage.Note"), step("lstImage.NoteDetail")});
  ASSERT_EQ(did.size(), 3u) << did.dump();
  EXPECT_EQ(did[0]["result"]["value"], 0);
  EXPECT_EQ(did[1]["result"]["value"], "The images can't be listed.");
  EXPECT_NE(did[2]["result"]["value"], "");
  EXPECT_EQ(get("IsDirty"), false) << "nothing was inserted";
}

}  // namespace
}  // namespace tvx::automation::test
