#include "core/remote/remote_fixture.h"

namespace tvx::core {
namespace {

std::u16string image(const std::u16string& src) { return u"<IMG src=\"" + src + u"\">"; }

// --- all pictures ---

TEST_F(Remote, ADocumentWithoutLocalImagesAsksNobody) {
  start_with(u"<IMG src=\"http://example.org/a.gif\"><P>text</P>");
  EXPECT_EQ(control->UploadAllImages(), 0);
  EXPECT_THAT(server.asked, IsEmpty());
  EXPECT_THAT(forms.shown(), IsEmpty());
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, LocalImagesAreUploadedAndGetTheirAddresses) {
  write_file("a.gif", "aaa");
  write_file("b.gif", "bbb");
  start_with(image(image_of("a.gif")) + image(u"http://example.org/other.gif") + image(image_of("b.gif")));
  EXPECT_EQ(control->UploadAllImages(), 2);
  EXPECT_EQ(control->DocumentHTML(),
            u"<IMG src=\"http://example.org/pics/a.gif\"><IMG src=\"http://example.org/other.gif\"><IMG "
            u"src=\"http://example.org/pics/b.gif\">");
  EXPECT_EQ(server.files[u"a.gif"], "aaa");
  EXPECT_EQ(server.files[u"b.gif"], "bbb");
  EXPECT_TRUE(control->FTPActionInProgress()) << "nothing sets it back";
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), testing::Not(testing::Contains(u"DocumentHTML")));
  for (const std::string& line : heard()) EXPECT_TRUE(line != "begin" && line != "end");
  control->DeleteFileFTP(u"a.gif");
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, OfThreeImagesTheSecondOfWhichCannotBeReadTwoAreUploaded) {
  write_file("a.gif", "aaa");
  write_file("c.gif", "ccc");
  start_with(image(image_of("a.gif")) + image(image_of("missing.gif")) + image(image_of("c.gif")));
  std::vector<std::u16string> messages;
  std::u16string last;
  forms.on_closed([&](platform::Form& form, const headless::ExpectedForm*,
                      const std::optional<RuntimeError>&) { last = form.Controls(u"lblMessage").Caption(); });
  EXPECT_EQ(control->UploadAllImages(), 2);
  EXPECT_EQ(last, u"Uploading to FTP Host : 3 of 3");
  EXPECT_EQ(control->CountLocalImages(), 1);
  EXPECT_NE(control->DocumentHTML().find(u"missing.gif"), std::u16string::npos);
  EXPECT_THAT(forms.shown(), ElementsAre(u"frmWait")) << "one dialog for all";
}

TEST_F(Remote, AnEscapedBlankIsAPlainOneInTheRemoteName) {
  write_file("a b.gif", "ab");
  start_with(image(u"file://" + path("a%20b.gif")));
  EXPECT_EQ(control->UploadAllImages(), 1);
  EXPECT_EQ(server.files[u"a b.gif"], "ab");
  EXPECT_EQ(*element(dom::Tag::Img)->attribute(dom::names::src), u"http://example.org/pics/a b.gif");
}

TEST_F(Remote, CancelBeforeTheFirstTransferChangesNothing) {
  write_file("a.gif", "aaa");
  start_with(image(image_of("a.gif")));
  const std::u16string before = control->DocumentHTML();
  forms.expect({.form = u"frmWait", .press = u"cmdCancel"});
  EXPECT_EQ(control->UploadAllImages(), 0);
  EXPECT_EQ(control->DocumentHTML(), before);
  EXPECT_TRUE(server.files.empty());
  for (const std::string& line : heard_of_files()) EXPECT_FALSE(line.starts_with("error")) << line;
}

TEST_F(Remote, CancelInTheMiddleKeepsWhatIsDone) {
  write_file("a.gif", std::string(250, 'a'));
  write_file("b.gif", std::string(250, 'b'));
  write_file("c.gif", std::string(250, 'c'));
  start_with(image(image_of("a.gif")) + image(image_of("b.gif")) + image(image_of("c.gif")));
  int successes = 0;
  transfer_host.within = [&](const std::string& line) {
    if (line == "1 File Transfer Complete!") ++successes;
    if (line == "progress 100 250" && successes == 1) forms.open()->Controls(u"cmdCancel").click();
  };
  EXPECT_EQ(control->UploadAllImages(), 1);
  EXPECT_EQ(control->CountLocalImages(), 2);
  EXPECT_FALSE(server.files.contains(u"c.gif"));
}

TEST_F(Remote, FTPCancelTransferStopsOnlyTheFileOnItsWay) {
  write_file("a.gif", std::string(250, 'a'));
  write_file("b.gif", std::string(250, 'b'));
  start_with(image(image_of("a.gif")) + image(image_of("b.gif")));
  bool once = false;
  transfer_host.within = [&](const std::string& line) {
    if (line == "progress 100 250" && !std::exchange(once, true)) control->FTPCancelTransfer();
  };
  EXPECT_EQ(control->UploadAllImages(), 1);
  EXPECT_EQ(control->CountLocalImages(), 1);
  EXPECT_EQ(server.files[u"b.gif"].size(), 250u);
}

TEST_F(Remote, WithoutAConnectionImagesStayAsTheyAre) {
  write_file("a.gif", "aaa");
  start_with(image(image_of("a.gif")));
  server.before = [](const std::string& call) {
    if (call == "connect") throw RuntimeError(12029, u"Nobody there");
  };
  EXPECT_EQ(control->UploadAllImages(), 0);
  EXPECT_EQ(control->CountLocalImages(), 1);
  EXPECT_THAT(heard(),
              ElementsAre("0 Internet connection Found", "error 12029 Connect - Message: Nobody there"));
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmWait"));
}

TEST_F(Remote, OneFileThatFailsIsTheServersWordAndTheOthersGoOn) {
  write_file("a.gif", "aaa");
  write_file("b.gif", "bbb");
  start_with(image(image_of("a.gif")) + image(image_of("b.gif")));
  server.before = [&](const std::string& call) {
    if (call == "finish" && server.asked[server.asked.size() - 2] == "write 2 a.gif")
      throw RuntimeError(12003, u"552 Full");
  };
  EXPECT_EQ(control->UploadAllImages(), 1);
  EXPECT_THAT(heard_of_files(), testing::Contains("error 12003 552 Full"));
}

TEST_F(Remote, TheBatchShowsNoDialogWhereThePropertySaysSo) {
  write_file("a.gif", "aaa");
  start_with(image(image_of("a.gif")));
  control->set_ShowFTPDialog(false);
  EXPECT_EQ(control->UploadAllImages(), 1);
  EXPECT_THAT(forms.shown(), IsEmpty());
}

TEST_F(Remote, ADocumentThatIsReplacedMeanwhileKeepsItsOwnImages) {
  write_file("a.gif", std::string(250, 'a'));
  start_with(image(image_of("a.gif")));
  transfer_host.within = [&](const std::string& line) {
    if (line == "progress 100 250") control->set_DocumentHTML(image(u"file:///other.gif"));
  };
  EXPECT_EQ(control->UploadAllImages(), 0);
  EXPECT_EQ(control->DocumentHTML(), image(u"file:///other.gif"));
}

TEST_F(Remote, AnUploadedImageCanBeTakenBackByUndo) {
  write_file("a.gif", "aaa");
  start_with(image(image_of("a.gif")));
  const std::u16string before = control->DocumentHTML();
  control->UploadAllImages();
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), before);
}

TEST_F(Remote, AllUploadedImagesAreOneStepOfUndo) {
  write_file("a.gif", "aaa");
  write_file("b.gif", "bbb");
  start_with(image(image_of("a.gif")) + image(image_of("b.gif")));
  const std::u16string before = control->DocumentHTML();
  EXPECT_EQ(control->UploadAllImages(), 2);
  const std::u16string after = control->DocumentHTML();
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), before);
  control->redo_document();
  EXPECT_EQ(control->DocumentHTML(), after);
}

TEST_F(Remote, WhatIsEditedWhileImagesAreUploadedIsAStepOfItsOwn) {
  write_file("a.gif", std::string(250, 'a'));
  write_file("b.gif", std::string(250, 'b'));
  start_with(image(image_of("a.gif")) + image(image_of("b.gif")) + u"<P>text</P>");
  int blocks = 0;
  transfer_host.within = [&](const std::string& line) {
    if (line == "progress 100 250" && ++blocks == 2)
      dom::set_attribute(*element(dom::Tag::P), dom::names::title, u"x");
  };
  EXPECT_EQ(control->UploadAllImages(), 2);
  control->undo_document();
  EXPECT_NE(control->DocumentHTML().find(u"title=\"x\""), std::u16string::npos);
  EXPECT_EQ(control->CountLocalImages(), 1);
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML().find(u"title=\"x\""), std::u16string::npos);
  EXPECT_EQ(control->CountLocalImages(), 1);
  control->undo_document();
  EXPECT_EQ(control->CountLocalImages(), 2);
}

TEST_F(Remote, ASharePathKeepsTwoLeadingBars) {
  start_with(image(u"file:///tmp"));  // the refusal of a folder repeats the path
  EXPECT_EQ(control->UploadAllImages(), 0);
  EXPECT_THAT(heard_of_files(),
              ElementsAre("1002 set current remote directory",
                          "error 20000 \\\\tmp appears to be a folder. Folders cannot be uploaded"));
}

// --- one picture ---

TEST_F(Remote, AnInsertedImageIsUploadedBetweenBeginAndEnd) {
  start_with();
  load(u"<P>a[]b</P>");
  control->set_FTPInitDir(u"/pics");
  control->Insert_Image(write_file("a.gif", "aaa"));
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found", "0 Connected to Host : server",
                                   "1 Connected to Server", "begin", "1002 set current remote directory",
                                   "progress 3 3", "1 File Transfer Complete!", "102 File uploaded", "end",
                                   "25 Disconnected from Host : server", "2 Disconnected from server"));
  EXPECT_EQ(body(), u"<P>a<IMG src=\"http://example.org/pics/a.gif\">b</P>");
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, AnUploadWithoutAConnectionIsNumberEleven) {
  start_with();
  server.before = [](const std::string& call) {
    if (call == "connect") throw RuntimeError(12029, u"Nobody there");
  };
  control->Insert_Image(write_file("a.gif", "aaa"));
  EXPECT_THAT(heard(),
              ElementsAre("0 Internet connection Found", "error 12029 Connect - Message: Nobody there",
                          "error 11 Could not connect to FTP Host!", "25 Disconnected from Host : server",
                          "2 Disconnected from server"));
  EXPECT_EQ(body(), u"<P>text</P>");
  EXPECT_FALSE(control->FTPActionInProgress());
}

TEST_F(Remote, AnUploadThatFailsIsNumberTwelveAndDisconnectsTwice) {
  start_with();
  control->set_FTPInitDir(u"/pics");
  server.before = [](const std::string& call) {
    if (call == "write 2") throw RuntimeError(12003, u"553 No");
  };
  control->Insert_Image(write_file("a.gif", "aaa"));
  EXPECT_THAT(heard(), ElementsAre("0 Internet connection Found", "0 Connected to Host : server",
                                   "1 Connected to Server", "begin", "1002 set current remote directory",
                                   "error 12003 553 No", "25 Disconnected from Host : server",
                                   "2 Disconnected from server",
                                   "error 12 A FTP error has occured and the file cannot be uploaded!", "end",
                                   "25 Disconnected from Host : server", "2 Disconnected from server"));
  EXPECT_EQ(body(), u"<P>text</P>");
}

TEST_F(Remote, AnUploadThatTheUserCancelsReportsNothing) {
  start_with();
  control->set_FTPInitDir(u"/pics");
  forms.expect({.form = u"frmWait", .press = u"cmdCancel"});
  control->Insert_Image(write_file("a.gif", std::string(250, 'a')));
  EXPECT_THAT(heard_of_files(), ElementsAre("begin", "1002 set current remote directory", "end"));
  EXPECT_EQ(body(), u"<P>text</P>");
}

}  // namespace
}  // namespace tvx::core
