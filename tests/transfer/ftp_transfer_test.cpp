#include <sys/stat.h>

#include "transfer/client_fixture.h"

namespace tvx::transfer {
namespace {

using platform::RemoteTransferType;
using testing::ElementsAre;
using testing::HasSubstr;

/// A transfer as the client tells it, without the notes of other operations.
std::vector<std::string> progress(std::vector<std::string> lines) {
  std::erase_if(lines, [](const std::string& line) { return !line.starts_with("progress"); });
  return lines;
}

// --- download ---

TEST_F(Client, ADownloadOfThreeHundredBytesIsThreeBlocksAndNoRest) {
  connect();
  server.files[u"a"] = some_bytes(300);
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size", "progress 101 300", "progress 201 300",
                                   "progress 301 300", "progress 300 300", "success", "101 File downloaded"));
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(300));
  EXPECT_EQ(server.blocks, 4u);  // the last one reads on, and finds nothing
}

TEST_F(Client, ADownloadOfTwoHundredAndFiftyBytesHasARestOfFifty) {
  connect();
  server.files[u"a"] = some_bytes(250);
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(progress(heard()), ElementsAre("progress 101 250", "progress 201 250", "progress 250 250"));
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(250));
}

TEST_F(Client, ADownloadOfFiftyBytesIsOneShortBlock) {
  connect();
  server.files[u"a"] = some_bytes(50);
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(progress(heard()), ElementsAre("progress 50 50"));
}

TEST_F(Client, BetweenTwoBlocksTheLoopRunsForFiveMilliseconds) {
  connect();
  server.files[u"a"] = some_bytes(1000);
  const std::int64_t before = loop.now();
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_EQ(loop.now() - before, 50);
}

TEST_F(Client, LargeBlocksTakeNoRest) {
  connect();
  client.BlockSize = 65536;
  server.files[u"a"] = some_bytes(200'000);
  const std::int64_t before = loop.now();
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_EQ(loop.now(), before);
  EXPECT_THAT(progress(heard()), ElementsAre("progress 65537 200000", "progress 131073 200000",
                                             "progress 196609 200000", "progress 200000 200000"));
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(200'000));
}

TEST_F(Client, WhatHasComeToTheFileSinceIsReadOn) {
  connect();
  server.tells_sizes = false;
  server.listing = "type=file;size=120; a\r\n";
  server.files[u"a"] = some_bytes(190);
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(190));
  EXPECT_THAT(progress(heard()), ElementsAre("progress 101 120", "progress 120 120"));
}

TEST_F(Client, AFileThatHasBecomeShorterIsNoDownload) {
  connect();
  server.tells_sizes = false;
  server.listing = "type=file;size=300; a\r\n";
  server.files[u"a"] = some_bytes(150);
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size", "progress 101 300",
                                   HasSubstr("error 38 InternetReadFile - GetFileProgress - Message: ")));
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(150));
}

TEST_F(Client, AnEmptyFileIsAFailureWithoutAnError) {
  connect();
  server.files[u"a"] = "";
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size"));
  EXPECT_FALSE(std::filesystem::exists(folder / "a"));
}

TEST_F(Client, AnEmptyNameRaisesNothing) {
  connect();
  EXPECT_FALSE(client.GetFileProgress(u"  ", u"a"));
  EXPECT_FALSE(client.GetFileProgress(path("a"), u""));
  EXPECT_FALSE(client.PutFileProgress(u"", write_file("a", "x")));
  EXPECT_FALSE(client.PutFileProgress(u"a", u" "));
  EXPECT_THAT(heard(), ElementsAre());
  EXPECT_THAT(server.asked, ElementsAre());
}

TEST_F(Client, NamesLoseTheirOuterBlanks) {
  connect();
  server.files[u"a"] = "abc";
  EXPECT_TRUE(client.GetFileProgress(u" " + path("a") + u" ", u" a "));
  EXPECT_EQ(bytes_of_file(folder / "a"), "abc");
}

TEST_F(Client, TheOpenUsesTheTrueNameOfAFileWithABlank) {
  connect();
  server.files[u"a b"] = "abc";
  server.listing = "type=file;size=3; a b\r\n";
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a b"));
  EXPECT_THAT(server.asked, ElementsAre("list", "read 2 a b"));
}

TEST_F(Client, AFileThatCannotBeOpenedOnTheServerLeavesTheLocalOne) {
  connect();
  const std::u16string local = write_file("a", "old");
  server.files[u"a"] = "new";
  set_fault(u"FtpOpenFile", {.error = RuntimeError(12031, u"gone"), .result = 0});
  EXPECT_FALSE(client.GetFileProgress(local, u"a"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size",
                                   "error 12031 FtpOpenFile - GetFileProgress - Message: gone"));
  EXPECT_EQ(bytes_of_file(folder / "a"), "old");
}

TEST_F(Client, ALostConnectionIsToldOnceAtAnyBlockAndWhatHasComeStays) {
  for (std::size_t last = 0; last < 4; ++last) {
    connect();
    server.blocks = 0;
    server.files[u"a"] = some_bytes(350);
    server.before = [&](const std::string& call) {
      if (call == "block" && server.blocks == last + 1) throw RuntimeError(12031, u"gone");
    };
    EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
    const auto told = heard();
    EXPECT_EQ(told.size(), 2 + last);
    EXPECT_EQ(told.back(), last < 3
                               ? "error 12031 InternetReadFile - GetFileProgress - Message: gone"
                               : "error 12031 InternetReadFile - GetFileProgress ( sub2 ) - Message: gone");
    EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(last * 100));
    server.before = nullptr;
  }
}

TEST_F(Client, AFullDiskIsToldOnce) {
  connect();
  server.files[u"a"] = some_bytes(300);
  set_fault(u"WriteLocalFile", {.error = RuntimeError(112, u"No space left on device"), .result = 0});
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size",
                                   "error 112 GetFileProgress - Message: No space left on device"));
  server.blocks = 0;
  EXPECT_FALSE(client.GetFileProgress(u"/dev/full/a", u"a"));
  EXPECT_THAT(heard(),
              ElementsAre("100 Got Remote File Size", HasSubstr("error 3 GetFileProgress - Message: ")));
}

TEST_F(Client, ALocalFolderInTheWayOfADownloadIsTold) {
  connect();
  server.files[u"a"] = "abc";
  std::filesystem::create_directories(folder / "a" / "b");
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(heard(),
              ElementsAre("100 Got Remote File Size", HasSubstr("error 5 GetFileProgress - Message: ")));
  EXPECT_TRUE(std::filesystem::exists(folder / "a" / "b"));
}

// --- upload ---

TEST_F(Client, AnUploadCountsFromNothing) {
  connect();
  EXPECT_TRUE(client.PutFileProgress(u"b", write_file("b", some_bytes(250))));
  EXPECT_THAT(heard(), ElementsAre("progress 100 250", "progress 200 250", "progress 250 250", "success",
                                   "102 File uploaded"));
  EXPECT_THAT(server.asked, ElementsAre("write 2 b", "finish"));
  EXPECT_EQ(server.files[u"b"], some_bytes(250));
}

TEST_F(Client, AnEmptyFileIsUploaded) {
  connect();
  EXPECT_TRUE(client.PutFileProgress(u"b", write_file("b", "")));
  EXPECT_THAT(heard(), ElementsAre("progress 0 0", "success", "102 File uploaded"));
  EXPECT_TRUE(server.files.contains(u"b"));
}

TEST_F(Client, TheTransferTypeGoesWithTheOpen) {
  connect();
  client.TransferType = RemoteTransferType::ASCII;
  client.PutFileProgress(u"b", write_file("b", "x"));
  EXPECT_EQ(server.asked.front(), "write 1 b");
}

TEST_F(Client, AFolderCannotBeUploaded) {
  connect();
  EXPECT_FALSE(client.PutFileProgress(u"b", path("")));
  EXPECT_THAT(heard(), ElementsAre("error 20000 " + folder.string() +
                                   "/ appears to be a folder. Folders cannot be uploaded"));
  EXPECT_THAT(server.asked, ElementsAre());
}

TEST_F(Client, AMissingLocalFileFailsToTheCaller) {
  connect();
  try {
    client.PutFileProgress(u"b", path("no"));
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 53);
  }
  EXPECT_THAT(heard(), ElementsAre());
  EXPECT_FALSE(client.busy());
}

TEST_F(Client, APipeIsNoFileToUpload) {
  connect();
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(client.PutFileProgress(u"b", path("pipe")));
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("error 5 PutFileProgress - Message: ")));
  EXPECT_THAT(server.asked, ElementsAre()) << "the server's file is not emptied for it";
}

TEST_F(Client, ABlockThatCannotBeWrittenIsToldAndCancelled) {
  connect();
  const std::u16string local = write_file("b", some_bytes(250));
  server.before = [&](const std::string& call) {
    if (call == "block" && server.blocks == 2) throw RuntimeError(12003, u"552 Disk full");
  };
  EXPECT_FALSE(client.PutFileProgress(u"b", local));
  EXPECT_THAT(heard(), ElementsAre("progress 100 250", "error 12003 552 Disk full", "cancelled"));
  EXPECT_EQ(server.files[u"b"], some_bytes(100)) << "what has been written stays";
  server.blocks = 0;
  server.before = [&](const std::string& call) {
    if (call == "block" && server.blocks == 3) throw RuntimeError(12031, u"gone");
  };
  EXPECT_FALSE(client.PutFileProgress(u"b", local));
  EXPECT_THAT(heard(),
              ElementsAre("progress 100 250", "progress 200 250",
                          "error 12031 InternetWriteFile - PutFileProgress - (sub2) - Message: gone"));
}

TEST_F(Client, AServerThatRefusesTheWholeFileAtItsEndHasNotGotIt) {
  connect();
  server.before = [&](const std::string& call) {
    if (call == "finish") throw RuntimeError(12003, u"552 Disk full");
  };
  EXPECT_FALSE(client.PutFileProgress(u"b", write_file("b", some_bytes(200))));
  EXPECT_THAT(heard(),
              ElementsAre("progress 100 200", "progress 200 200", "error 12003 552 Disk full", "cancelled"));
}

TEST_F(Client, ALocalFileThatGetsShorterStopsTheUpload) {
  connect();
  const std::u16string local = write_file("b", some_bytes(1000));
  events.inside = [&](const std::string& line) {
    if (line == "progress 200 1000") std::filesystem::resize_file(folder / "b", 250);
  };
  EXPECT_FALSE(client.PutFileProgress(u"b", local));
  EXPECT_THAT(heard(), ElementsAre("progress 100 1000", "progress 200 1000",
                                   "error 38 PutFileProgress - Message: The local file has become shorter"));
  EXPECT_EQ(server.files[u"b"], some_bytes(200));
}

TEST_F(Client, ALocalFileThatVanishesIsSentToItsEnd) {
  connect();
  const std::u16string local = write_file("b", some_bytes(1000));
  events.inside = [&](const std::string& line) {
    if (line == "progress 200 1000") std::filesystem::remove(folder / "b");
  };
  EXPECT_TRUE(client.PutFileProgress(u"b", local));
  EXPECT_EQ(server.files[u"b"], some_bytes(1000));
}

// --- cancelling ---

TEST_F(Client, TheCancelFlagIsReadOnce) {
  connect();
  server.files[u"a"] = some_bytes(1000);
  events.inside = [&](const std::string& line) {
    if (line == "progress 201 1000") client.set_ActionCancelled(true);
  };
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(progress(heard()), ElementsAre("progress 101 1000", "progress 201 1000"));
  EXPECT_EQ(bytes_of_file(folder / "a"), some_bytes(300)) << "the block on its way is written";
  EXPECT_TRUE(client.ActionCancelled());
  EXPECT_FALSE(client.ActionCancelled());
}

TEST_F(Client, ACancelBeforeATransferIsForgottenAtItsStart) {
  connect();
  client.set_ActionCancelled(true);
  EXPECT_TRUE(client.PutFileProgress(u"b", write_file("b", some_bytes(250))));
  EXPECT_FALSE(client.ActionCancelled());
}

TEST_F(Client, ACallThatIsInterruptedOnRequestHasNothingToTell) {
  connect();
  server.files[u"a"] = some_bytes(1000);
  server.before = [&](const std::string& call) {
    if (call != "block" || server.blocks != 3) return;
    client.set_ActionCancelled(true);
    throw RuntimeError(platform::network_errors::cancelled, u"");
  };
  EXPECT_FALSE(client.GetFileProgress(path("a"), u"a"));
  EXPECT_THAT(server.asked, testing::Contains("interrupt"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size", "progress 101 1000", "progress 201 1000"));
}

// --- the dialog ---

TEST_F(Client, TheDialogTellsWhatIsDoneAndGoesAtTheEnd) {
  connect();
  client.ShowDialog = true;
  server.files[u"a.gif"] = some_bytes(250);
  platform::Form* shown = nullptr;
  std::vector<std::string> said;
  on_dialog = [&](platform::Form& form) { shown = &form; };
  events.inside = [&](const std::string& line) {
    if (line.starts_with("progress") && platform::IsDialogLoaded(u"frmWait"))
      said.push_back(to_utf8(shown->Controls(u"lblMessage").Caption()));
  };
  EXPECT_TRUE(client.GetFileProgress(path("a"), u"a.gif"));
  EXPECT_THAT(messages, ElementsAre("Retreiving - a.gif"));
  EXPECT_THAT(said, ElementsAre("101 bytes of 250", "201 bytes of 250", "201 bytes of 250"));
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmWait"));
  messages.clear();
  EXPECT_TRUE(client.PutFileProgress(u"b.gif", write_file("b", "x")));
  EXPECT_THAT(messages, ElementsAre("Uploading - b.gif"));
}

TEST_F(Client, CancelInTheDialogStopsBeforeTheNextBlockAndIsNoError) {
  connect();
  client.ShowDialog = true;
  platform::Form* shown = nullptr;
  on_dialog = [&](platform::Form& form) { shown = &form; };
  const std::u16string local = write_file("b", some_bytes(1000));
  events.inside = [&](const std::string& line) {
    if (line == "progress 300 1000") shown->Controls(u"cmdCancel").click();
  };
  EXPECT_FALSE(client.PutFileProgress(u"b", local));
  EXPECT_THAT(heard(), ElementsAre("progress 100 1000", "progress 200 1000", "progress 300 1000"));
  EXPECT_EQ(server.files[u"b"].size(), 300u);
  EXPECT_TRUE(client.ActionCancelled());
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmWait"));
}

}  // namespace
}  // namespace tvx::transfer
