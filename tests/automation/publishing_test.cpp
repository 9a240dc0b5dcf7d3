#include <filesystem>
#include <fstream>
#include <sstream>

#include "conversation.h"
#include "support/server_process.h"

/// A page with its pictures brought to a real server, by script alone.
namespace tvx::automation::test {
namespace {

std::string bytes_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class Publishing : public Conversation {
 protected:
  Publishing() {
    folder_ = std::filesystem::temp_directory_path() / ("tvx-publishing-" + std::to_string(getpid()));
    std::filesystem::create_directories(remote());
    for (const char* name : {"1.gif", "2.gif", "3.gif", "3 4.gif"})
      std::ofstream(folder_ / name, std::ios::binary) << std::string(1000, *name) << name;
    server_ = std::make_unique<ServerProcess>(std::vector<std::string>{
        "/usr/bin/python3", TVX_SOURCE_DIR "/tests/network/pyftpd.py", remote().string()});
    port_ = server_->line();
  }
  ~Publishing() override {
    server_.reset();
    std::filesystem::remove_all(folder_);
  }

  std::filesystem::path remote() const { return folder_ / "remote"; }
  void open_account() {
    set("FTPHost", "ftp://127.0.0.1:" + port_);
    set("FTPUser", "ada");
    set("FTPPassword", "secret");
    set("FTPPassive", true);
    set("FTPBlockSize", 65536);
    set("FTPInitDir", "/");
    set("FTPSaveToURL", "https://example.org/pictures/");
  }
  std::string image(const std::string& name) const {
    return "<IMG src=\"file://" + folder_.string() + "/" + name + "\">";
  }

  std::filesystem::path folder_;
  std::unique_ptr<ServerProcess> server_;
  std::string port_;
};

TEST_F(Publishing, APageWithThreeImages) {
  ASSERT_FALSE(port_.empty()) << "scripts/setup installs python3-pyftpdlib";
  open_account();
  set("DocumentHTML", "<P>" + image("1.gif") + image("2.gif") + image("3%204.gif") + "</P>");
  EXPECT_EQ(result("call", {{"name", "CountLocalImages"}})["result"], 3);
  const Json id = result("expect", {{"on", "dialog:frmWait"}})["id"];
  EXPECT_EQ(result("call", {{"name", "UploadAllImages"}})["result"], 3);
  EXPECT_EQ(told_of("modal").at(0), (Json{{"kind", "dialog"}, {"name", "frmWait"}}));
  const Json seen = told_of("seen").at(0);
  EXPECT_EQ(seen["id"], id);
  EXPECT_EQ(seen["seen"]["captions"]["lblMessage"], "Connecting to FTP Host");
  EXPECT_EQ(seen["seen"]["last"]["captions"]["lblMessage"], "Uploading to FTP Host : 3 of 3");
  EXPECT_EQ(get("DocumentHTML"),
            "<P><IMG src=\"https://example.org/pictures/1.gif\"><IMG "
            "src=\"https://example.org/pictures/2.gif\"><IMG "
            "src=\"https://example.org/pictures/3 4.gif\"></P>");
  for (const char* name : {"1.gif", "2.gif", "3 4.gif"})
    EXPECT_EQ(bytes_of(remote() / name), bytes_of(folder_ / name)) << name;
  EXPECT_EQ(get("FTPActionInProgress"), true);

  EXPECT_EQ(result("call",
                   {{"name", "PutFileFTP"}, {"args", {(folder_ / "1.gif").string(), "copy.gif"}}})["result"],
            true);
  EXPECT_EQ(get("FTPActionInProgress"), false);
  EXPECT_EQ(object("ListFilesFTP(\"/\", \"*.gif\").count"), 4);
  EXPECT_EQ(object("ListFilesFTP(\"/\", \"*.gif\").item(\"COPY.GIF\").FileSize"), 1005);
  EXPECT_EQ(result("call", {{"name", "DeleteFileFTP"}, {"args", {"copy.gif"}}})["result"], true);
  EXPECT_EQ(result("call",
                   {{"name", "GetFileFTP"}, {"args", {(folder_ / "back.gif").string(), "2.gif"}}})["result"],
            true);
  EXPECT_EQ(bytes_of(folder_ / "back.gif"), bytes_of(folder_ / "2.gif"));
}

std::string with_all(std::string text, const std::string& what, const std::string& instead) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += instead.size())
    text.replace(at, what.size(), instead);
  return text;
}

TEST_F(Publishing, TheScriptOfTheDocumentationIsTrue) {
  ASSERT_FALSE(port_.empty());
  std::ifstream documentation(TVX_SOURCE_DIR "/docs/automation.md");
  std::string line;
  while (std::getline(documentation, line) && line != "### A page with its pictures") {
  }
  int orders = 0, answers = 0;
  while (std::getline(documentation, line) && !line.starts_with("To end a transfer")) {
    if (!line.starts_with("{")) continue;
    const std::string own = with_all(with_all(line, "/home/ada", folder_.string()), ":2121", ":" + port_);
    const std::size_t arrow = own.find("→");
    const Json order = Json::parse(own.substr(0, arrow));
    const std::string got = result(order["method"].get<std::string>(), order["params"]).dump();
    ++orders;
    if (arrow == std::string::npos) continue;
    std::string expected = own.substr(arrow + std::string_view("→").size());
    expected = expected.substr(expected.find('{'));
    // Dots stand for more of the same.
    EXPECT_EQ(got.substr(0, expected.find("...")), expected.substr(0, expected.find("..."))) << own;
    ++answers;
  }
  EXPECT_EQ(orders, 11);
  EXPECT_EQ(answers, 3);
  for (const char* name : {"1.gif", "2.gif", "3.gif"})
    EXPECT_EQ(bytes_of(remote() / name), bytes_of(folder_ / name)) << name;
}

TEST_F(Publishing, EveryMemberIsBuilt) {
  constexpr int not_built = 445;
  ASSERT_FALSE(port_.empty());
  open_account();
  const std::string local = (folder_ / "1.gif").string();
  const std::vector<std::pair<const char*, Json>> calls = {
      {"PutFileFTP", {local, "a.gif"}},      {"GetFileFTP", {(folder_ / "b").string(), "a.gif"}},
      {"ListFilesFTP", {"", "*.*"}},         {"DeleteFileFTP", {"a.gif"}},
      {"FTPCancelTransfer", Json::array()},  {"UploadAllImages", Json::array()},
      {"CountLocalImages", Json::array()},   {"Insert_Image", {local}},
      {"Insert_Image", Json::array()},       {"Insert_Image_NoFTP", {local}},
      {"Insert_Image_NoFTP", Json::array()}, {"insertImageFromURL", {"http://example.org/a.gif"}},
      {"insertImageFromURL", {""}}};
  for (const auto& [name, arguments] : calls)
    EXPECT_EQ(failure("call", {{"name", name}, {"args", arguments}}), 0) << name << arguments;
  for (const char* name : {"FTPHost", "FTPUser", "FTPPassword", "FTPInitDir", "FTPPassive", "FTPPort",
                           "FTPProxyServer", "FTPProxyBypassList", "ShowFTPDialog", "FTPTransferType",
                           "FTPBlockSize", "FTPSaveToURL", "UploadImages", "LocalImageStore"}) {
    const Json value = get(name);
    EXPECT_EQ(failure("set", {{"name", name}, {"value", value}}), 0) << name;
  }
  EXPECT_EQ(get("FTPActionInProgress"), false);
  EXPECT_EQ(object("DirectoryItem.Filename"), "");
  // What can be called from without of the client, its list and its items.
  for (const char* path :
       {"ListFilesFTP(\"\", \"*.*\").count", "ListFilesFTP(\"\", \"*.*\").item(1).Filename",
        "ListFilesFTP(\"\", \"*.*\").item(1).LastWriteTime"})
    EXPECT_NE(failure("object", {{"path", path}}), not_built) << path;
}

TEST_F(Publishing, AScriptEndsATransferFromWithinIt) {
  ASSERT_FALSE(port_.empty());
  open_account();
  set("FTPBlockSize", 100);
  result(
      "expect",
      {{"on", "event:FTPTransferProgress"},
       {"do",
        {{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "object"}, {"params", {{"path", "cmdCancel.Click"}}}}}}});
  EXPECT_EQ(
      result("call", {{"name", "PutFileFTP"}, {"args", {(folder_ / "1.gif").string(), "a.gif"}}})["result"],
      false);
  EXPECT_LT(bytes_of(remote() / "a.gif").size(), 1005u);
}

TEST_F(Publishing, FaultsNameEveryOperation) {
  ASSERT_FALSE(port_.empty());
  open_account();
  set("ShowFTPDialog", false);
  const std::string local = (folder_ / "1.gif").string();
  for (const char* operation : {"InternetOpen", "InternetConnect", "FtpSetCurrentDirectory", "FtpOpenFile",
                                "InternetWriteFile", "OpenLocalFile", "ReadLocalFile", "GetAttr"}) {
    result("fault", {{"operation", operation}, {"error", {4711, "on purpose"}}, {"times", 1}});
    EXPECT_EQ(result("call", {{"name", "PutFileFTP"}, {"args", {local, "a.gif"}}})["result"], false)
        << operation;
    int errors = 0;
    for (const Json& event : told_of("event"))
      if (event["name"] == "FTPError" && event["args"]["errNo"] == 4711) ++errors;
    EXPECT_EQ(errors, std::string(operation) == "GetAttr" ? 0 : 1) << operation;
  }
  result("fault", {{"operation", "InternetAutodial"}, {"result", 0}, {"times", 1}});
  EXPECT_EQ(result("call", {{"name", "PutFileFTP"}, {"args", {local, "a.gif"}}})["result"], false);
  EXPECT_TRUE(told_of("event").empty());
  EXPECT_EQ(result("call", {{"name", "PutFileFTP"}, {"args", {local, "a.gif"}}})["result"], true);
}

}  // namespace
}  // namespace tvx::automation::test
