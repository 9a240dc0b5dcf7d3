#include "core/remote/remote_fixture.h"

namespace tvx::core {
namespace {

TEST_F(Remote, AGoodUploadIsToldInThisOrder) {
  start_with();
  control->set_FTPInitDir(u"/pics");
  EXPECT_TRUE(control->PutFileFTP(write_file("a.gif", std::string(250, 'x')), u"b.gif"));
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found", "0 Connected to Host : server",
                                   "1 Connected to Server", "1002 set current remote directory",
                                   "progress 100 250", "progress 200 250", "progress 250 250",
                                   "1 File Transfer Complete!", "102 File uploaded",
                                   "25 Disconnected from Host : server", "2 Disconnected from server"));
  EXPECT_EQ(server.files[u"b.gif"].size(), 250u);
  EXPECT_EQ(server.open_connections, 0);
}

TEST_F(Remote, AGoodDownloadAsksForTheSize) {
  start_with();
  server.files[u"b.gif"] = "abc";
  EXPECT_TRUE(control->GetFileFTP(path("a.gif"), u"b.gif"));
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found", "0 Connected to Host : server",
                                   "1 Connected to Server", "100 Got Remote File Size", "progress 3 3",
                                   "1 File Transfer Complete!", "101 File downloaded",
                                   "25 Disconnected from Host : server", "2 Disconnected from server"));
  EXPECT_EQ(bytes_of(folder / "a.gif"), "abc");
}

TEST_F(Remote, AStartFolderThatIsNotThereEndsAnUploadBeforeItStarts) {
  start_with();
  control->set_FTPInitDir(u"/nowhere");
  server.before = [](const std::string& call) {
    if (call == "go") throw RuntimeError(12003, u"550 No such folder");
  };
  EXPECT_FALSE(control->PutFileFTP(write_file("a", "x"), u"b"));
  EXPECT_THAT(heard_of_files(), ElementsAre("error 12003 550 No such folder"));
  EXPECT_FALSE(control->GetFileFTP(path("a"), u"b"));
  EXPECT_THAT(heard_of_files(), ElementsAre("error 12003 550 No such folder"));
  EXPECT_THAT(server.asked, testing::Not(testing::Contains(testing::HasSubstr("write"))));
}

TEST_F(Remote, DeletingLooksAtNoFolder) {
  start_with();
  control->set_FTPInitDir(u"/nowhere");
  server.before = [](const std::string& call) {
    if (call == "go") throw RuntimeError(12003, u"550 No such folder");
  };
  EXPECT_TRUE(control->DeleteFileFTP(u"b"));
  EXPECT_THAT(heard_of_files(), ElementsAre("error 12003 550 No such folder", "103 remote file deleted"));
}

TEST_F(Remote, AnEmptyFolderMeansTheStartFolderWhereFilesAreListed) {
  start_with();
  control->set_FTPInitDir(u"/pics");
  server.listing = "type=file;size=3; a.gif\r\ntype=file;size=4; b.txt\r\n";
  const auto list = control->ListFilesFTP(u"", u"*.gif");
  ASSERT_TRUE(list);
  EXPECT_EQ(list->count(), 1);
  EXPECT_EQ(list->item(1).Filename, u"a.gif");
  EXPECT_THAT(server.asked, testing::Contains("go /pics"));
  control->ListFilesFTP(u"/other", u"*.gif");
  EXPECT_THAT(server.asked, testing::Contains("go /other"));
}

TEST_F(Remote, WithoutAStartFolderTheServersOwnIsUsedAndNothingFails) {
  start_with();
  server.files[u"b"] = "x";
  EXPECT_TRUE(control->DeleteFileFTP(u"b"));
  EXPECT_TRUE(control->ListFilesFTP(u"", u"*.*"));
  EXPECT_THAT(heard_of_files(), ElementsAre("1002 set current remote directory", "103 remote file deleted",
                                            "1002 set current remote directory"));
  EXPECT_THAT(server.asked, testing::Not(testing::Contains(testing::StartsWith("go"))));
}

TEST_F(Remote, WithoutAConnectionThereIsNoList) {
  start_with();
  server.before = [](const std::string& call) {
    if (call == "connect") throw RuntimeError(12029, u"Nobody there");
  };
  EXPECT_FALSE(control->ListFilesFTP(u"", u"*.*"));
  EXPECT_FALSE(control->PutFileFTP(write_file("a", "x"), u"b"));
  EXPECT_FALSE(control->DeleteFileFTP(u"b"));
  EXPECT_THAT(heard(),
              ElementsAre("0 Internet connection Found", "error 12029 Connect - Message: Nobody there",
                          "0 Internet connection Found", "error 12029 Connect - Message: Nobody there",
                          "0 Internet connection Found", "error 12029 Connect - Message: Nobody there"));
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, ThePortIsThatOfTheLastImageUpload) {
  start_with(u"<IMG src=\"file:///none.gif\">");
  control->set_FTPPort(2121);
  control->PutFileFTP(write_file("a", "x"), u"b");
  EXPECT_EQ(server.account.port, 21);
  control->UploadAllImages();
  EXPECT_EQ(server.account.port, 2121);
  control->PutFileFTP(write_file("a", "x"), u"b");
  EXPECT_EQ(server.account.port, 2121);
}

TEST_F(Remote, TheAccountIsThatOfTheProperties) {
  start_with();
  control->set_FTPUser(u"ada");
  control->set_FTPPassword(u"secret");
  control->set_FTPPassive(true);
  control->set_FTPProxyServer(u"proxy");
  control->set_FTPProxyBypassList(u"local");
  control->set_FTPTransferType(ed_FTPTransferType::ov_ASCII);
  control->set_FTPBlockSize(1000);
  control->PutFileFTP(write_file("a", std::string(1500, 'x')), u"b");
  EXPECT_EQ(server.account.host, u"server");
  EXPECT_EQ(server.account.user, u"ada");
  EXPECT_EQ(server.account.password, u"secret");
  EXPECT_TRUE(server.account.passive);
  EXPECT_EQ(server.access.proxy, u"proxy");
  EXPECT_EQ(server.access.bypass, u"local");
  EXPECT_THAT(server.asked, testing::Contains("write 1 b"));
  EXPECT_THAT(heard_of_files(), testing::Contains("progress 1000 1500"));
  for (const std::string& line : heard()) EXPECT_EQ(line.find("secret"), std::string::npos);
}

TEST_F(Remote, ACancelDuringADownloadKeepsWhatHasCome) {
  start_with();
  server.files[u"b"] = std::string(1000, 'x');
  transfer_host.within = [&](const std::string& line) {
    if (line == "progress 301 1000") control->FTPCancelTransfer();
  };
  EXPECT_FALSE(control->GetFileFTP(path("a"), u"b"));
  EXPECT_EQ(bytes_of(folder / "a").size(), 400u);
  for (const std::string& line : heard()) EXPECT_FALSE(line.starts_with("error")) << line;
}

TEST_F(Remote, AnActionIsInProgressWhileItLasts) {
  start_with();
  std::vector<bool> seen;
  transfer_host.within = [&](const std::string&) { seen.push_back(control->FTPActionInProgress()); };
  control->PutFileFTP(write_file("a", "x"), u"b");
  EXPECT_FALSE(seen.empty());
  EXPECT_THAT(seen, testing::Each(true));
  EXPECT_FALSE(control->FTPActionInProgress());
  control->DeleteFileFTP(u"b");
  EXPECT_FALSE(control->FTPActionInProgress());
  control->ListFilesFTP(u"", u"*.*");
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, AMissingLocalFileIsAStepThatIsSkipped) {
  start_with();
  EXPECT_FALSE(control->PutFileFTP(path("none"), u"b"));
  EXPECT_THAT(heard_of_files(), IsEmpty());
  EXPECT_EQ(server.open_connections, 0);
  EXPECT_FALSE(control->FTPActionInProgress());
}

// --- hosts that call from within ---

TEST_F(Remote, ASecondTransferWithinOneIsRefusedAndMixesNothing) {
  start_with(u"<IMG src=\"file:///none.gif\">");
  const std::u16string other = write_file("other", "other");
  bool once = false;
  transfer_host.within = [&](const std::string& line) {
    if (line != "progress 100 250" || std::exchange(once, true)) return;
    EXPECT_FALSE(control->PutFileFTP(other, u"c"));
    EXPECT_FALSE(control->GetFileFTP(path("d"), u"c"));
    EXPECT_FALSE(control->DeleteFileFTP(u"c"));
    EXPECT_FALSE(control->ListFilesFTP(u"", u"*.*"));
    EXPECT_EQ(control->UploadAllImages(), 0);
    control->Insert_Image(other);
    EXPECT_TRUE(control->FTPActionInProgress());
  };
  EXPECT_TRUE(control->PutFileFTP(write_file("a", std::string(250, 'x')), u"b"));
  EXPECT_EQ(server.files.size(), 1u);
  EXPECT_EQ(server.files[u"b"], std::string(250, 'x'));
  EXPECT_EQ(std::ranges::count_if(transfer_host.transfers,
                                  [](const std::string& line) { return line.starts_with("error 12110 "); }),
            6);
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, TheDocumentMayBeReadAndSetWithinATransfer) {
  start_with(u"<P>one</P>");
  transfer_host.within = [&](const std::string& line) {
    if (line == "progress 100 250") {
      EXPECT_EQ(control->DocumentHTML(), u"<P>one</P>");
    }
    if (line == "progress 200 250") control->set_DocumentHTML(u"<P>two</P>");
  };
  EXPECT_TRUE(control->PutFileFTP(write_file("a", std::string(250, 'x')), u"b"));
  EXPECT_EQ(control->DocumentHTML(), u"<P>two</P>");
}

TEST_F(Remote, AControlThatIsClosedWithinATransferEndsItQuietly) {
  start_with();
  std::size_t told = 0;
  transfer_host.within = [&](const std::string& line) {
    if (line != "progress 100 100000") return;
    control->UserControl_Terminate();
    told = transfer_host.transfers.size();
  };
  EXPECT_FALSE(control->PutFileFTP(write_file("a", std::string(100'000, 'x')), u"b"));
  EXPECT_EQ(transfer_host.transfers.size(), told) << "a control that has ended calls nobody";
  EXPECT_EQ(server.open_connections, 0);
}

TEST_F(Remote, AHostMayDropTheControlWithinATransfer) {
  start_with();
  transfer_host.within = [&](const std::string& line) {
    if (line == "progress 100 250") control.reset();
  };
  HTMLed* raw = control.get();
  EXPECT_TRUE(raw->PutFileFTP(write_file("a", std::string(250, 'x')), u"b"));
  loop.settle();
  EXPECT_EQ(server.files[u"b"].size(), 250u);
  EXPECT_EQ(server.open_connections, 0);
}

// --- the dialog ---

TEST_F(Remote, TheDialogIsShownOnlyWhereThePropertySaysSo) {
  start_with();
  control->PutFileFTP(write_file("a", std::string(250, 'x')), u"b");
  EXPECT_THAT(forms.shown(), ElementsAre(u"frmWait"));
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmWait"));
  control->set_ShowFTPDialog(false);
  control->PutFileFTP(path("a"), u"b");
  EXPECT_EQ(forms.shown().size(), 1u);
  EXPECT_EQ(forms.open(), nullptr);
}

TEST_F(Remote, CancelInTheDialogIsNoError) {
  start_with();
  forms.expect({.form = u"frmWait", .press = u"cmdCancel"});
  EXPECT_FALSE(control->PutFileFTP(write_file("a", std::string(250, 'x')), u"b"));
  EXPECT_THAT(heard_of_files(), IsEmpty());
}

}  // namespace
}  // namespace tvx::core
