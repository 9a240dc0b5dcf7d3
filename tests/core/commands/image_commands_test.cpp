#include "tvx/core/commands/image_commands.h"

#include "core/control_fixture.h"
#include "core/fake_context.h"
#include "tvx/base/url.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Images : public Control {
 protected:
  Images() {
    start_with(u"<P>ab</P>");
    load(u"<P>a[]b</P>");
  }
  std::string html() const { return to_utf8(body()); }
  std::string file_address(const std::string& name) const { return "file://" + (folder / name).string(); }
  void choose(std::u16string path) {
    dialogs.expect({.kind = headless::DialogKind::open, .answer = std::move(path)});
  }
};

TEST_F(Images, ALocalPictureIsInsertedByItsAddress) {
  control->Insert_Image_NoFTP(write_file("a b.gif", "GIF89a"));
  EXPECT_EQ(html(), "<P>a<IMG src=\"" + file_address("a%20b.gif") + "\">b</P>");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(host.heard, IsEmpty());
  EXPECT_THAT(container.changed(), testing::Contains(u"DocumentHTML"));
}

// A path as hosts of old write them, seen from the folder that holds it.
TEST_F(Images, APathWithADriveBecomesAnAddressOfItsForm) {
  const auto before = std::filesystem::current_path();
  std::filesystem::create_directories(folder / "C:" / "pics");
  write_file("C:/pics/a b.gif", "GIF89a");
  std::filesystem::current_path(folder);
  control->Insert_Image_NoFTP(u"C:\\pics\\a b.gif");
  std::filesystem::current_path(before);
  EXPECT_EQ(html(), "<P>a<IMG src=\"" + to_utf8(EncodeURL(u"file:///C:/pics/a b.gif")) + "\">b</P>");
}

TEST_F(Images, APathThatHoldsAnAddressGetsNoPrefix) {
  control->Insert_Image_NoFTP(u"http://example.org/a.gif");
  EXPECT_THAT(host.heard, ElementsAre("Error: 1 Local Image Path not Found"));
  EXPECT_EQ(html(), "<P>ab</P>");
  EXPECT_FALSE(control->IsDirty());

  std::filesystem::create_directories(folder / "http:" / "x");
  write_file("http:/x/a.gif", "GIF89a");
  const std::u16string path = from_utf8(folder.string()) + u"/http://x/a.gif";
  control->Insert_Image_NoFTP(path);
  EXPECT_EQ(html(), "<P>a<IMG src=\"" + to_utf8(path) + "\">b</P>");
}

TEST_F(Images, AGivenPathWithoutAFileIsAnError) {
  control->Insert_Image(path("none.gif"));
  control->Insert_Image_NoFTP(path("none.gif"));
  control->Insert_Image_NoFTP(path(""));  // a folder
  EXPECT_THAT(host.heard,
              ElementsAre("Error: 1 Local Image Path not Found", "Error: 1 Local Image Path not Found",
                          "Error: 1 Local Image Path not Found"));
  EXPECT_EQ(html(), "<P>ab</P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Images, TheStoreReadsBackWithABar) {
  control->set_LocalImageStore(u"C:\\store");
  EXPECT_EQ(control->LocalImageStore(), u"C:\\store\\");
  control->set_LocalImageStore(u"C:\\store\\");
  EXPECT_EQ(control->LocalImageStore(), u"C:\\store\\");
}

TEST_F(Images, AnEmptyStoreStaysEmpty) {
  control->set_LocalImageStore(u"");
  EXPECT_EQ(control->LocalImageStore(), u"");
}

TEST_F(Images, TheStoreGetsACopy) {
  std::filesystem::create_directories(folder / "store");
  control->set_LocalImageStore(path("store"));
  control->Insert_Image_NoFTP(write_file("a.gif", "GIF89a"));
  EXPECT_EQ(html(), "<P>a<IMG src=\"" + file_address("store/a.gif") + "\">b</P>");
  EXPECT_EQ(bytes_of(folder / "store" / "a.gif"), "GIF89a");
}

TEST_F(Images, OfTwoFilesOfOneNameTheStoreKeepsTheFirst) {
  std::filesystem::create_directories(folder / "store");
  std::filesystem::create_directories(folder / "other");
  control->set_LocalImageStore(path("store"));
  control->Insert_Image_NoFTP(write_file("a.gif", "first"));
  control->Insert_Image_NoFTP(write_file("other/a.gif", "second"));
  const std::string image = "<IMG src=\"" + file_address("store/a.gif") + "\">";
  EXPECT_EQ(html(), "<P>a" + image + image + "b</P>");
  EXPECT_EQ(bytes_of(folder / "store" / "a.gif"), "first");
}

TEST_F(Images, AStoreThatCantBeWrittenToIsAFailure) {
  control->set_LocalImageStore(path("no such folder"));
  control->Insert_Image_NoFTP(write_file("a.gif", "GIF89a"));
  EXPECT_THAT(host.heard, ElementsAre("Error: 102 Insert Image Failed"));
  EXPECT_EQ(html(), "<P>ab</P>");
  set_fault(u"FileCopy", {.error = RuntimeError(61, u"Disk full")});
  std::filesystem::create_directories(folder / "store");
  control->set_LocalImageStore(path("store"));
  control->Insert_Image_NoFTP(path("a.gif"));
  EXPECT_EQ(host.count("Error: 102"), 2u);
  EXPECT_FALSE(std::filesystem::exists(folder / "store" / "a.gif"));
}

TEST_F(Images, WithoutAPathTheUserChooses) {
  platform::FileDialog shown;
  dialogs.expect({.kind = headless::DialogKind::open,
                  .answer = write_file("a.png", "PNG") + u'\0' + u"rest",
                  .while_open = [&](const headless::ShownDialog& dialog) {
                    shown = std::get<headless::OpenDialog>(dialog);
                  }});
  control->Insert_Image_NoFTP(std::nullopt);
  EXPECT_EQ(html(), "<P>a<IMG src=\"" + file_address("a.png") + "\">b</P>");
  const std::vector<platform::FileFilter> filters = {
      {u"GIF (*.GIF)", u"*.GIF;*.gif"},
      {u"JPEG(*.JPG)", u"*.jpg;*.JPG"},
      {u"PNG (*.PNG)", u"*.png;*.PNG"},
      {u"All Image Files", u"*.GIF;*.gif;*.jpg;*.JPG;*.png;*.png"}};
  EXPECT_EQ(shown.filters, filters);
  EXPECT_EQ(shown.title, u"Select an Image");
  EXPECT_EQ(shown.preset, u"*.gif");
  EXPECT_EQ(platform::number_of(shown.owner), control->hwnd());
}

TEST_F(Images, CancellingTheDialogChangesNothing) {
  control->Insert_Image_NoFTP(std::nullopt);
  control->Insert_Image(std::nullopt);
  EXPECT_EQ(html(), "<P>ab</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), IsEmpty());
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Images, AChosenFileThatHasGoneLeavesTheDocumentChanged) {
  choose(path("gone.gif"));
  control->Insert_Image_NoFTP(std::nullopt);
  EXPECT_EQ(html(), "<P>ab</P>");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Images, AnAddressGoesInAsItStands) {
  control->insertImageFromURL(u"http://example.org/a b.gif");
  EXPECT_EQ(html(), "<P>a<IMG src=\"http://example.org/a b.gif\">b</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Images, AnAddressThatCantBeInsertedLeavesTheDocumentChanged) {
  set_fault(u"execCommand insertimage", {.error = RuntimeError(5, u"no")});
  control->insertImageFromURL(u"http://example.org/a.gif");
  EXPECT_EQ(html(), "<P>ab</P>");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Images, AFailingCommandIsTold) {
  set_fault(u"execCommand insertimage", {.error = RuntimeError(5, u"no")});
  control->Insert_Image_NoFTP(write_file("a.gif", "GIF89a"));
  EXPECT_THAT(host.heard, ElementsAre("Error: 102 Insert Image Failed"));
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Images, AnInsertedPictureIsOneStepOfUndo) {
  control->Insert_Image_NoFTP(write_file("a.gif", "GIF89a"));
  control->undo_document();
  EXPECT_EQ(html(), "<P>ab</P>");
}

TEST_F(Images, APictureTakesThePlaceOfTheSelection) {
  load(u"<P>a[b]c</P>");
  control->insertImageFromURL(u"x.gif");
  EXPECT_EQ(html(), "<P>a<IMG src=\"x.gif\">c</P>");
}

TEST_F(Images, TheButtonsDoAsTheSettingSays) {
  choose(write_file("a.gif", "GIF89a"));
  EXPECT_TRUE(control->press(control->Toolbar1(), u"Image"));
  EXPECT_EQ(html(), "<P>a<IMG src=\"" + file_address("a.gif") + "\">b</P>");
}

TEST_F(Images, WhileTheCodeShowsItFollows) {
  control->show_Code();
  host.heard.clear();
  control->insertImageFromURL(u"x.gif");
  EXPECT_THAT(to_utf8(control->txtCode().Text()), testing::HasSubstr("x.gif"));
}

TEST_F(Images, NoPicturesAreNoLocalPictures) {
  EXPECT_EQ(control->CountLocalImages(), 0);
  create();
  EXPECT_EQ(control->CountLocalImages(), 0) << "nor is there a document";
}

TEST_F(Images, LocalPicturesAreCountedByTheirAddresses) {
  load(
      u"<P><IMG src=\"FILE:///tmp/a.gif\"><IMG src=\"file://server/b.gif\"><IMG src=\"http://x.org/c.gif\">"
      u"<IMG><IMG src=\"\"><IMG src=\"http://x.org/?file://\"><IMG src=\"data:,x\">[]</P>");
  EXPECT_EQ(control->CountLocalImages(), 3);
}

// With an upload, to a server of the test's own.
class Uploads : public testing::Test {
 protected:
  Uploads() {
    context.load(u"<p>ab</p>");
    context.document().set_designMode(u"On");
    context.document().select([&](editing::Selection& selection) {
      selection.collapse({context.body().first_child(), 0});
    });
    file = std::filesystem::temp_directory_path() / ("tvx-upload-" + std::to_string(getpid()) + ".png");
    std::ofstream(file) << "PNG";
  }
  ~Uploads() override { std::filesystem::remove(file); }

  FakeContext context;
  std::filesystem::path file;
  std::u16string answer;
  std::vector<std::string> uploaded;
  int opened = 0;
  ImageCommands images{context,
                       {.upload =
                            [this](const std::u16string& path) {
                              uploaded.push_back(to_utf8(path));
                              return answer;
                            },
                        .open_library = [this] { ++opened; }}};
};

TEST_F(Uploads, TheAddressOfTheUploadedPictureIsInserted) {
  answer = u"http://example.org/pics/a b.png";
  images.Insert_Image(from_utf8(file.string()));
  EXPECT_THAT(uploaded, ElementsAre(file.string()));
  EXPECT_EQ(context.html(), "<P><IMG src=\"http://example.org/pics/a%20b.png\">ab</P>");
  EXPECT_TRUE(context.values.IsDirty);
}

TEST_F(Uploads, AFailedUploadInsertsNothingAndMarksTheDocument) {
  images.Insert_Image(from_utf8(file.string()));
  EXPECT_EQ(uploaded.size(), 1u);
  EXPECT_EQ(context.html(), "<P>ab</P>");
  EXPECT_TRUE(context.values.IsDirty);
  EXPECT_THAT(context.changed, ElementsAre("DocumentHTML"));
}

TEST_F(Uploads, AChosenFileThatHasGoneIsNotUploaded) {
  context.dialogs.expect({.kind = headless::DialogKind::open, .answer = u"/no/such/file.gif"});
  images.Insert_Image(std::nullopt);
  EXPECT_THAT(uploaded, IsEmpty());
  EXPECT_TRUE(context.values.IsDirty);
}

TEST_F(Uploads, TheButtonUploadsWhereTheSettingSaysSo) {
  context.values.UploadImages = true;
  context.dialogs.expect({.kind = headless::DialogKind::open, .answer = from_utf8(file.string())});
  answer = u"http://x.org/a.png";
  images.insert_chosen();
  EXPECT_EQ(context.html(), "<P><IMG src=\"http://x.org/a.png\">ab</P>");
}

TEST_F(Uploads, AnEmptyAddressOpensTheLibraryAndLeavesTheMarkAlone) {
  images.insertImageFromURL(u"");
  EXPECT_EQ(opened, 1);
  EXPECT_FALSE(context.values.IsDirty);
  EXPECT_THAT(context.changed, IsEmpty());
}

// The upload lets the loop run, in which a container may end the control.
TEST_F(Uploads, AControlThatEndsMeanwhileGetsNoPicture) {
  answer = u"http://x.org/a.png";
  ImageCommands ending{context, {.upload = [this](const std::u16string&) {
                         context.ended = true;
                         return answer;
                       }}};
  ending.Insert_Image(from_utf8(file.string()));
  EXPECT_EQ(context.html(), "<P>ab</P>");
  EXPECT_FALSE(context.values.IsDirty);
}

}  // namespace
}  // namespace tvx::core
