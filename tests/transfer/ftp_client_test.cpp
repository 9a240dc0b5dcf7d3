#include "tvx/transfer/ftp_client.h"

#include "transfer/client_fixture.h"

namespace tvx::transfer {
namespace {

using platform::RemoteTransferType;
using testing::ElementsAre;
using testing::HasSubstr;

// --- the connection ---

TEST_F(Client, ConnectingTellsOfTheNetworkAndOfTheServer) {
  client.Host = u"server";
  client.UserName = u"ada";
  client.Password = u"secret";
  client.Passive = true;
  client.FTPPort = 2121;
  EXPECT_TRUE(client.Connect());
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found", "connected", "1 Connected to Server"));
  EXPECT_EQ(server.access.agent, u"Orvel FTP Client");
  EXPECT_EQ(server.account.user, u"ada");
  EXPECT_EQ(server.account.password, u"secret");
  EXPECT_EQ(server.account.port, 2121);
  EXPECT_TRUE(server.account.passive);
  EXPECT_FALSE(client.Disconnect());
  EXPECT_THAT(heard(), ElementsAre("disconnected", "2 Disconnected from server"));
  EXPECT_EQ(server.open_connections, 0);
}

TEST_F(Client, WithoutALineNothingIsRaised) {
  server.online = false;
  EXPECT_FALSE(client.Connect());
  EXPECT_THAT(heard(), ElementsAre());
  EXPECT_THAT(server.asked, ElementsAre());
  set_fault(u"InternetAutodial", {.error = {}, .result = 0});
  server.online = true;
  EXPECT_FALSE(client.Connect());
  EXPECT_THAT(heard(), ElementsAre());
}

TEST_F(Client, AnEmptyProxyServerIsTheDirectWayWithTheBypassListAllTheSame) {
  client.ProxyBypassList = u"<local>";
  client.Connect();
  EXPECT_FALSE(server.access.through_proxy);
  EXPECT_EQ(server.access.bypass, u"<local>");
  client.ProxyServer = u"proxy:3128";
  client.Connect();
  EXPECT_TRUE(server.access.through_proxy);
  EXPECT_EQ(server.access.proxy, u"proxy:3128");
}

TEST_F(Client, ANetworkThatDoesNotOpenIsToldAndTheServerIsAskedAllTheSame) {
  set_fault(u"InternetOpen", {.error = RuntimeError(12029, u"No way  "), .result = 0});
  EXPECT_FALSE(client.Connect());
  EXPECT_THAT(heard(), ElementsAre("error 12029 Connect - Message: No way",
                                   "error 6 Connect - Message: There is no way to the network"));
}

TEST_F(Client, AServerThatRefusesIsTold) {
  server.before = [](const std::string& call) {
    if (call == "connect") throw RuntimeError(12015, u"530 Login incorrect.\r\n");
  };
  EXPECT_FALSE(client.Connect());
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found",
                                   "error 12015 Connect - Message: 530 Login incorrect."));
  EXPECT_FALSE(client.connected());
}

TEST_F(Client, APortThatDoesNotFitIsToldAndTheRoutineGoesOn) {
  client.FTPPort = 32768;
  EXPECT_FALSE(client.Connect());
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found",
                                   "error 0 Connect - Message: ", "error 0 Connect - Message: "));
}

TEST_F(Client, ASecondConnectClosesTheFirstConnection) {
  connect();
  EXPECT_TRUE(client.Connect());
  EXPECT_EQ(server.asked.front(), "close");
  EXPECT_EQ(server.open_connections, 1);
}

TEST_F(Client, WithoutAConnectionOperationsFailAsUsual) {
  EXPECT_FALSE(client.DeleteFile(u"a.gif"));
  EXPECT_THAT(heard(), ElementsAre("error 6 DeleteFile - Message: There is no connection"));
  EXPECT_EQ(client.GetRemoteFileSize(u"a.gif"), -2);
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a.gif"));
}

// --- single calls ---

TEST_F(Client, EachOperationHasItsCallItsEventAndItsContext) {
  connect();
  EXPECT_EQ(client.GetCurrDirectory(), u"/home");
  EXPECT_TRUE(client.SetCurrDirectory(u"pics"));
  EXPECT_TRUE(client.DeleteFile(u"a.gif"));
  EXPECT_TRUE(client.CreateDirectory(u"new"));
  EXPECT_TRUE(client.RemoveDirectory(u"old"));
  EXPECT_TRUE(client.RenameFile(u"a", u"b"));
  EXPECT_THAT(server.asked,
              ElementsAre("where", "go pics", "delete a.gif", "make new", "remove old", "rename a b"));
  EXPECT_THAT(heard(),
              ElementsAre("1001 Got current remote directory name", "1002 set current remote directory",
                          "103 remote file deleted", "1003 remote directory created",
                          "1004 remote directory deleted", "104 renamed remote file"));
  server.before = [](const std::string&) { throw RuntimeError(12031, u"gone"); };
  EXPECT_EQ(client.GetCurrDirectory(), u"");
  EXPECT_FALSE(client.SetCurrDirectory(u"pics"));
  EXPECT_FALSE(client.DeleteFile(u"a.gif"));
  EXPECT_FALSE(client.CreateDirectory(u"new"));
  EXPECT_FALSE(client.RemoveDirectory(u"old"));
  EXPECT_FALSE(client.RenameFile(u"a", u"b"));
  EXPECT_THAT(
      heard(),
      ElementsAre("error 12031 GetCurrDirectory - Message: gone",
                  "error 12031 SetCurrDirectory - Message: gone", "error 12031 DeleteFile - Message: gone",
                  "error 12031 CreateDirectory - Message: gone",
                  "error 12031 RemoveDirectory - Message: gone", "error 12031 RenameFile - Message: gone"));
}

TEST_F(Client, EveryOperationCanBeMadeToFailByItsName) {
  connect();
  const std::vector<std::pair<std::u16string, std::function<void()>>> operations = {
      {u"FtpGetCurrentDirectory", [&] { client.GetCurrDirectory(); }},
      {u"FtpSetCurrentDirectory", [&] { client.SetCurrDirectory(u"a"); }},
      {u"FtpDeleteFile", [&] { client.DeleteFile(u"a"); }},
      {u"FtpCreateDirectory", [&] { client.CreateDirectory(u"a"); }},
      {u"FtpRemoveDirectory", [&] { client.RemoveDirectory(u"a"); }},
      {u"FtpRenameFile", [&] { client.RenameFile(u"a", u"b"); }},
      {u"FtpFindFirstFile", [&] { client.GetRemoteFileSize(u"a"); }},
      {u"FtpFindFirstFile", [&] { client.GetDirectoryListing(u"*.*"); }},
  };
  for (const auto& [name, run] : operations) {
    set_fault(name, {.error = RuntimeError(4711, u"on purpose"), .result = 0});
    run();
    EXPECT_THAT(heard(), ElementsAre(HasSubstr("error 4711 "))) << to_utf8(name);
  }
  EXPECT_THAT(server.asked, ElementsAre());
}

TEST_F(Client, After12003TheTextIsTheServersReplyAlone) {
  connect();
  server.before = [](const std::string&) { throw RuntimeError(12003, u"550 Permission denied.\r\n "); };
  client.DeleteFile(u"a.gif");
  EXPECT_THAT(heard(), ElementsAre("error 12003 550 Permission denied."));
}

TEST_F(Client, TheRuleForTheRootFolderStaysDormant) {
  connect();
  server.before = [](const std::string&) { throw RuntimeError(87, u"The parameter is incorrect."); };
  EXPECT_FALSE(client.SetCurrDirectory(u".."));
  EXPECT_THAT(heard(), ElementsAre("error 87 SetCurrDirectory - Message: The parameter is incorrect."));
}

TEST_F(Client, NoFolderIsTheOneWhereOneIs) {
  connect();
  EXPECT_TRUE(client.SetCurrDirectory(u""));
  EXPECT_THAT(heard(), ElementsAre("1002 set current remote directory"));
  EXPECT_THAT(server.asked, ElementsAre());
  client.Disconnect();
  heard();
  EXPECT_FALSE(client.SetCurrDirectory(u""));
  EXPECT_THAT(heard(), ElementsAre("error 6 SetCurrDirectory - Message: There is no connection"));
}

TEST_F(Client, NamesWithALineBreakOrAZeroCharacterAreRefused) {
  connect();
  const std::u16string bad[] = {u"a\r\nDELE b", u"a\nb", std::u16string(u"a\0b", 3)};
  for (const std::u16string& name : bad) {
    client.DeleteFile(name);
    client.CreateDirectory(name);
    client.RemoveDirectory(name);
    client.RenameFile(name, u"b");
    client.RenameFile(u"b", name);
    client.SetCurrDirectory(name);
    client.GetDirectoryListing(name);
    client.GetRemoteFileSize(name);
    client.GetFileProgress(path("local"), name);
    client.PutFileProgress(name, write_file("up", "x"));
    const auto told = heard();
    EXPECT_EQ(told.size(), 10u);
    for (const std::string& line : told) {
      EXPECT_THAT(line, HasSubstr("error 87 "));
      EXPECT_THAT(line, HasSubstr("line break"));
    }
  }
  EXPECT_THAT(server.asked, ElementsAre());
}

// --- sizes ---

TEST_F(Client, TheSizeQueryHasQuestionMarksForBlanks) {
  connect();
  server.listing = "type=file;size=7; axb.gif\r\ntype=file;size=5; a b.gif\r\n";
  EXPECT_EQ(client.GetRemoteFileSize(u"a b.gif"), 7);  // the first that fits the pattern
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size"));
  EXPECT_THAT(server.asked, ElementsAre("list"));
}

TEST_F(Client, AMissingFileHasTheSizeMinusOneAndAFailureMinusTwo) {
  connect();
  EXPECT_EQ(client.GetRemoteFileSize(u"no.gif"), -1);
  EXPECT_THAT(heard(),
              ElementsAre("error 18 GetRemoteFileSize - file not found - Message: There are no more files."));
  server.before = [](const std::string&) { throw RuntimeError(12031, u"gone"); };
  EXPECT_EQ(client.GetRemoteFileSize(u"no.gif"), -2);
  EXPECT_THAT(heard(), ElementsAre("error 12031 GetRemoteFileSize - Message: gone"));
}

TEST_F(Client, ASizeOfFiveGigabytesIsItsLowPart) {
  connect();
  server.listing = "type=file;size=5368709120; big.iso\r\n";
  EXPECT_EQ(client.GetRemoteFileSize(u"big.iso"), 1073741824);
  server.listing = "type=file;size=3221225472; big.iso\r\n";
  EXPECT_EQ(client.GetRemoteFileSize(u"big.iso"), -1073741824);
}

// --- listings ---

TEST_F(Client, AListingFillsTheDirectory) {
  connect();
  server.listing =
      "type=cdir; .\r\ntype=dir; sub\r\ntype=file;size=12; a.gif\r\nnonsense\r\ntype=file;size=1; b.txt\r\n";
  EXPECT_TRUE(client.GetDirectoryListing(u"*.*"));
  EXPECT_THAT(heard(), ElementsAre("1000 File Listing Completed"));
  EXPECT_EQ(client.Directory()->count(), 3);
  EXPECT_EQ(client.Directory()->item(u"a.gif").FileSize, 12);
  EXPECT_EQ(client.skipped_lines(), 1);
  const auto first = client.Directory();
  EXPECT_TRUE(client.GetDirectoryListing(u"*.GIF"));
  EXPECT_EQ(client.Directory()->count(), 1);
  EXPECT_EQ(first->count(), 3) << "the host's list is its own";
}

TEST_F(Client, AFilterMayBeginWithAFolder) {
  connect();
  EXPECT_TRUE(client.GetDirectoryListing(u"/pub/pics/*.gif"));
  EXPECT_THAT(server.asked, ElementsAre("list /pub/pics"));
}

TEST_F(Client, AnEmptyDirectoryIsAnEmptyListAndNoEvent) {
  connect();
  EXPECT_TRUE(client.GetDirectoryListing(u"*.*"));
  EXPECT_THAT(heard(), ElementsAre());
  EXPECT_EQ(client.Directory()->count(), 0);
}

TEST_F(Client, AListingThatFailsAtItsStartOrInTheMiddleSaysWhich) {
  connect();
  server.before = [](const std::string& call) {
    if (call == "list") throw RuntimeError(12003, u"550 No such folder");
  };
  EXPECT_FALSE(client.GetDirectoryListing(u"no/*.*"));
  EXPECT_THAT(heard(), ElementsAre("error 12003 550 No such folder"));
  server.before = nullptr;
  server.listing = "type=file; a\r\ntype=file; b\r\n";
  set_fault(u"InternetFindNextFile", {.error = RuntimeError(12031, u"gone"), .result = 0});
  EXPECT_FALSE(client.GetDirectoryListing(u"*.*"));
  EXPECT_THAT(heard(), ElementsAre("error 12031 InternetFindNextFile - Message: gone"));
}

// --- nesting ---

TEST_F(Client, AnOperationWithinAnotherIsRefusedAndTheFirstGoesOn) {
  connect();
  server.files[u"a"] = some_bytes(250);
  bool tried = false, nested = true;
  events.inside = [&](const std::string& line) {
    if (line == "progress 101 250" && !std::exchange(tried, true)) {
      nested = client.PutFileProgress(u"b", write_file("b", "xyz"));
      client.GetDirectoryListing(u"*.*");
      client.DeleteFile(u"a");
    }
  };
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_FALSE(nested);
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(250));
  EXPECT_FALSE(server.files.contains(u"b"));
  EXPECT_EQ(
      std::ranges::count_if(events.heard, [](const auto& line) { return line.starts_with("error 12110"); }),
      3);
}

TEST_F(Client, ADisconnectWithinATransferEndsItFirst) {
  connect();
  server.files[u"a"] = some_bytes(1000);
  events.inside = [&](const std::string& line) {
    if (line == "progress 201 1000") client.Disconnect();
  };
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_EQ(events.heard.back(), "2 Disconnected from server");
  EXPECT_EQ(server.open_connections, 0);
}

}  // namespace
}  // namespace tvx::transfer
