#include "network/server_fixture.h"

/// FTP as servers that people run speak it.
namespace tvx::network {
namespace {

TEST_F(RealServer, AFileGoesUpAndComesDownAgain) {
  start_pyftpd();
  connect();
  const std::string bytes = some_bytes(1'000'003);
  EXPECT_TRUE(client->PutFileProgress(u"photo.gif", write_local("up", bytes)));
  EXPECT_TRUE(same_bytes(remote_bytes("photo.gif"), bytes));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"photo.gif"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), bytes));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(RealServer, SmallBlocksArriveAsTheyAreSent) {
  start_pyftpd();
  connect();
  client->BlockSize = 100;
  EXPECT_TRUE(client->PutFileProgress(u"a", write_local("up", some_bytes(250))));
  EXPECT_THAT(heard(), ElementsAre("progress 100 250", "progress 200 250", "progress 250 250", "success",
                                   "102 File uploaded"));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a"));
  EXPECT_THAT(heard(), ElementsAre("100 Got Remote File Size", "progress 101 250", "progress 201 250",
                                   "progress 250 250", "success", "101 File downloaded"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), some_bytes(250)));
}

TEST_F(RealServer, AnEmptyFileGoesUp) {
  start_pyftpd();
  connect();
  EXPECT_TRUE(client->PutFileProgress(u"empty", write_local("up", "")));
  EXPECT_TRUE(std::filesystem::exists(remote / "empty"));
  EXPECT_EQ(client->GetRemoteFileSize(u"empty"), 0);
}

TEST_F(RealServer, FoldersAreChangedMadeAndTakenAway) {
  start_pyftpd();
  connect();
  EXPECT_EQ(client->GetCurrDirectory(), u"/");
  EXPECT_TRUE(client->CreateDirectory(u"a \"quoted\" folder"));
  EXPECT_TRUE(client->SetCurrDirectory(u"a \"quoted\" folder"));
  EXPECT_EQ(client->GetCurrDirectory(), u"/a \"quoted\" folder");
  EXPECT_TRUE(client->PutFileProgress(u"here", write_local("up", "x")));
  EXPECT_EQ(remote_bytes("a \"quoted\" folder/here"), "x");
  EXPECT_TRUE(client->RenameFile(u"here", u"there"));
  EXPECT_TRUE(client->DeleteFile(u"there"));
  EXPECT_TRUE(client->SetCurrDirectory(u".."));
  EXPECT_EQ(client->GetCurrDirectory(), u"/");
  EXPECT_TRUE(client->RemoveDirectory(u"a \"quoted\" folder"));
  EXPECT_TRUE(std::filesystem::is_empty(remote));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(RealServer, WhatTheServerRefusesIsToldInItsWords) {
  start_pyftpd();
  connect();
  EXPECT_FALSE(client->SetCurrDirectory(u"nowhere"));
  EXPECT_FALSE(client->DeleteFile(u"nothing"));
  EXPECT_FALSE(client->RemoveDirectory(u"nothing"));
  EXPECT_FALSE(client->RenameFile(u"nothing", u"something"));
  const auto told = errors();
  ASSERT_EQ(told.size(), 4u);
  for (const std::string& line : told) {
    EXPECT_THAT(line, HasSubstr("error 12003 550 "));
    EXPECT_THAT(line, Not(HasSubstr("Message:")));
    EXPECT_NE(line.back(), '\n');
  }
  EXPECT_EQ(client->GetRemoteFileSize(u"nothing"), -1);
  EXPECT_EQ(client->GetRemoteFileSize(u"no thing"), -1);
  EXPECT_TRUE(client->CreateDirectory(u"works")) << "the connection has stayed";
}

TEST_F(RealServer, WithoutPermissionTheServerSaysSo) {
  start_pyftpd({"--read-only"});
  connect();
  EXPECT_FALSE(client->PutFileProgress(u"a", write_local("up", "x")));
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12003 550 ")));
  write_remote("here", "x");
  EXPECT_FALSE(client->DeleteFile(u"here"));
  EXPECT_EQ(remote_bytes("here"), "x");
}

TEST_F(RealServer, AWrongPasswordIsAFailedConnection) {
  start_pyftpd();
  make_client();
  client->Password = u"wrong-password";
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found",
                                   AllOf(HasSubstr("error 12015 Connect - Message: 530"),
                                         Not(HasSubstr("wrong-password")))));
}

TEST_F(RealServer, WithoutAUserItIsAnonymous) {
  start_pyftpd();
  make_client();
  client->UserName.clear();
  client->Password.clear();
  write_remote("a", "abc");
  EXPECT_TRUE(client->Connect());
  EXPECT_TRUE(client->GetFileProgress(local("a"), u"a"));
}

TEST_F(RealServer, NobodyThereIsAFailedConnection) {
  port = free_port();
  make_client();
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12029 Connect - Message: ")));
}

TEST_F(RealServer, ActiveModeWorksWhereTheServerReachesBack) {
  start_pyftpd();
  make_client();
  client->Passive = false;
  ASSERT_TRUE(client->Connect());
  EXPECT_TRUE(client->PutFileProgress(u"a", write_local("up", some_bytes(5000))));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), some_bytes(5000)));
  EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
  EXPECT_THAT(names(), ElementsAre("a"));
}

TEST_F(RealServer, NamesWithBlanksQuotesAndLettersOfAllKindsGoBothWays) {
  start_pyftpd();
  connect();
  for (const char* name : {"a b.gif", "  leading", "it's \"quoted\"", "ä€日本.gif", "100%41#?*[x];&.gif", "~",
                           "-a", "back\\slash"}) {
    const std::u16string wide = from_utf8(name);
    if (name[0] == ' ') continue;  // a client takes outer blanks off; the listing shows them below
    EXPECT_TRUE(client->PutFileProgress(wide, write_local("up", name))) << name;
    EXPECT_EQ(remote_bytes(name), name);
    EXPECT_TRUE(client->GetFileProgress(local("down"), wide)) << name;
    EXPECT_EQ(local_bytes("down"), name);
    std::filesystem::remove(folder / "local" / "down");
  }
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(RealServer, ListingsByFactsAndByLinesSayTheSame) {
  for (const bool facts : {true, false}) {
    start_pyftpd(facts ? std::vector<std::string>{} : std::vector<std::string>{"--no-facts"});
    std::filesystem::create_directories(remote / "sub");
    write_remote("a b.gif", "12345");
    write_remote(" leading.GIF", "1");
    write_remote("ä\"q\".txt", "1");
    connect();
    EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
    EXPECT_THAT(names(), ElementsAre(" leading.GIF", "a b.gif", "sub", "ä\"q\".txt"));
    EXPECT_TRUE(client->Directory()->item(u"sub").Directory);
    EXPECT_EQ(client->Directory()->item(u"a b.gif").FileSize, 5);
    EXPECT_TRUE(client->GetDirectoryListing(u"*.gif"));
    EXPECT_THAT(names(), ElementsAre(" leading.GIF", "a b.gif"));
    EXPECT_TRUE(client->GetDirectoryListing(u"sub/*.*"));
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(client->GetRemoteFileSize(u"a b.gif"), 5);
    EXPECT_THAT(errors(), IsEmpty());
  }
}

TEST_F(RealServer, AFolderThatIsNotThereCannotBeListed) {
  for (const char* option : {"", "--no-facts"}) {
    start_pyftpd({option});
    connect();
    EXPECT_FALSE(client->GetDirectoryListing(u"nowhere/*.*"));
    EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12003 5"))) << option;
  }
}

TEST_F(RealServer, OddListingsAreReadAsFarAsTheyMakeSense) {
  std::ofstream(folder / "listing", std::ios::binary)
      << "total 3\r\n"
         "drwxr-xr-x   2 ada      users        4096 Nov 21 18:30 pictures\r\n"
         "-rw-r--r--   1 ada      users  5368709120 Nov 21  2025 big.iso\r\n"
         "01-02-26  05:59AM                 1234 dos one.gif\r\n"
         "this is no line of a listing\r\n"
         "-rw-r--r--   1 ada      users  1 Nov 21  2025 ../outside\r\n";
  start_pyftpd({"--listing=" + (folder / "listing").string()});
  connect();
  EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
  EXPECT_THAT(names(), ElementsAre("big.iso", "dos one.gif", "pictures"));
  EXPECT_EQ(client->skipped_lines(), 2);
  EXPECT_EQ(client->Directory()->item(u"big.iso").FileSize, 1'073'741'824);
  EXPECT_EQ(client->Directory()->item(u"big.iso").LastWriteTime, 45982.0);
}

TEST_F(RealServer, TextGoesAsLines) {
  start_pyftpd();
  connect();
  client->TransferType = platform::RemoteTransferType::ASCII;
  EXPECT_TRUE(client->PutFileProgress(u"a.txt", write_local("up", "one\ntwo\n")));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a.txt"));
  EXPECT_EQ(local_bytes("down"), "one\ntwo\n");
}

TEST_F(RealServer, ManySmallFilesGoOverOneConnection) {
  start_pyftpd();
  connect();
  const std::u16string up = write_local("up", some_bytes(10'000));
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(client->PutFileProgress(u"file " + to_text(i), up));
  EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
  EXPECT_EQ(client->Directory()->count(), 20);
  EXPECT_THAT(errors(), IsEmpty());
}

}  // namespace
}  // namespace tvx::network
