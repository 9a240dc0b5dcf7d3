#include "tvx/core/remote/picture_uploads.h"

#include "core/fake_context.h"
#include "tvx/browser/input/paste.h"
#include "tvx/dom/journal.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Pictures come into a document, and a server of the test's own takes them.
class PictureUploading : public testing::Test {
 protected:
  PictureUploading() {
    folder = std::filesystem::temp_directory_path() / ("tvx-uploads-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    state_before_ = std::getenv("XDG_STATE_HOME") ? std::getenv("XDG_STATE_HOME") : "";
    setenv("XDG_STATE_HOME", (folder / "state").c_str(), 1);
    context.values.UploadImages = true;
    context.load(u"<p>ab</p>");
    document().set_designMode(u"On");
    document().select([&](editing::Selection& selection) {
      selection.collapse({context.body().first_child(), 0});
    });
    document().set_bytes_folder([this] { return uploads ? uploads->folder() : std::u16string(); });
    document().set_on_local_pictures([this](const std::vector<std::u16string>& addresses) {
      if (uploads) uploads->pictures_came(context.DOM(), addresses);
    });
  }
  ~PictureUploading() override {
    uploads.reset();
    state_before_.empty() ? unsetenv("XDG_STATE_HOME") : setenv("XDG_STATE_HOME", state_before_.c_str(), 1);
    std::filesystem::remove_all(folder);
  }

  browser::HTMLDocument& document() { return *context.DOM(); }
  std::u16string write(const std::string& name) const {
    std::ofstream(folder / name) << name;
    return u"file://" + from_utf8((folder / name).string());
  }
  void drop(std::vector<std::u16string> addresses) {
    platform::TransferData data;
    data.uris = std::move(addresses);
    EXPECT_TRUE(browser::paste_into(document(), data, u"Drop"));
  }
  std::string upload(const std::u16string& path) {
    const std::string name = std::filesystem::path(to_utf8(path)).filename();
    uploaded.push_back(name);
    during.push_back(context.html());
    if (on_upload) on_upload();
    return refused == name ? "" : "http://e.org/" + name;
  }
  std::size_t count(const std::string& text) {
    std::size_t found = 0;
    const std::string html = context.html();
    for (std::size_t at = html.find(text); at != html.npos; at = html.find(text, at + 1)) ++found;
    return found;
  }

  FakeContext context;
  std::filesystem::path folder;
  std::vector<std::string> uploaded, during;
  std::string refused;
  std::function<void()> on_upload;
  bool busy = false;
  std::unique_ptr<PictureUploads> uploads = std::make_unique<PictureUploads>(
      context,
      PictureUploads::Server{.upload = [this](const std::u16string& path) { return from_utf8(upload(path)); },
                             .busy = [this] { return busy; }});

 private:
  std::string state_before_;
};

TEST_F(PictureUploading, ADroppedPictureStandsThereAtOnceAndIsUploadedThen) {
  const std::u16string local = write("a.png");
  drop({local});
  EXPECT_THAT(uploaded, IsEmpty());
  EXPECT_EQ(count(to_utf8(local)), 1u);
  EXPECT_THAT(document().under_way(), ElementsAre(local));
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("a.png"));
  EXPECT_EQ(context.html(), "<P><IMG src=\"http://e.org/a.png\">ab</P>");
  EXPECT_THAT(document().under_way(), IsEmpty());
  EXPECT_TRUE(context.values.IsDirty);
}

TEST_F(PictureUploading, SeveralGoOneAfterTheOther) {
  drop({write("a.png"), write("b.gif"), write("a.png")});
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("a.png", "b.gif"));
  EXPECT_EQ(count("http://e.org/a.png"), 2u) << "both that show it";
  EXPECT_EQ(count("http://e.org/b.gif"), 1u);
  EXPECT_NE(during[1].find("http://e.org/a.png"), std::string::npos) << "the first has its address by then";
}

TEST_F(PictureUploading, WhatFailsStaysLocal) {
  refused = "a.png";
  const std::u16string local = write("a.png");
  drop({local});
  context.loop.settle();
  EXPECT_EQ(count(to_utf8(local)), 1u);
  EXPECT_THAT(document().under_way(), IsEmpty());
}

// Each try may take until a server has not answered.
TEST_F(PictureUploading, AfterAFailureTheRestStaysLocalToo) {
  refused = "b.png";
  drop({write("a.png"), write("b.png"), write("c.png")});
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("a.png", "b.png"));
  EXPECT_EQ(count("file://"), 2u);
  EXPECT_EQ(uploads->waiting(), 0u);
}

TEST_F(PictureUploading, AFileThatHasGoneHoldsNobodyUp) {
  const std::u16string gone = write("a.png");
  drop({gone, write("b.png")});
  std::filesystem::remove(folder / "a.png");
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("b.png"));
  EXPECT_EQ(count("http://e.org/b.png"), 1u);
}

TEST_F(PictureUploading, WithoutTheSettingNothingIsUploaded) {
  context.values.UploadImages = false;
  drop({write("a.png")});
  context.loop.settle();
  EXPECT_THAT(uploaded, IsEmpty());
  EXPECT_EQ(count("file://"), 1u);
}

TEST_F(PictureUploading, AnotherTransferIsWaitedFor) {
  busy = true;
  drop({write("a.png")});
  context.loop.pump(1000);
  EXPECT_THAT(uploaded, IsEmpty());
  busy = false;
  for (int turns = 0; turns < 10; ++turns) context.loop.pump(100);
  EXPECT_THAT(uploaded, ElementsAre("a.png"));
}

TEST_F(PictureUploading, APictureThatTheUserTakesAwayMeanwhileStaysAway) {
  on_upload = [this] { document().tree().journal().undo(); };
  drop({write("a.png")});
  context.loop.settle();
  EXPECT_EQ(context.html(), "<P>ab</P>");
}

TEST_F(PictureUploading, UndoTakesThePictureAndItsNewAddressAway) {
  drop({write("a.png")});
  context.loop.settle();
  document().tree().journal().undo();
  EXPECT_EQ(context.html(), "<P>ab</P>");
  document().tree().journal().redo();
  EXPECT_EQ(context.html(), "<P><IMG src=\"http://e.org/a.png\">ab</P>");
}

TEST_F(PictureUploading, PicturesThatComeDuringAnUploadFollow) {
  on_upload = [this] {
    on_upload = {};
    drop({write("late.png")});
  };
  drop({write("a.png")});
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("a.png", "late.png"));
  EXPECT_EQ(count("http://e.org/late.png"), 1u);
}

TEST_F(PictureUploading, PastedBytesAreKeptUntilTheyAreOnTheServer) {
  platform::TransferData data;
  data.image = "PNG";
  data.image_type = "image/png";
  refused = "pasted-8d3aaf19f3adfd1c.png";
  EXPECT_TRUE(browser::paste_into(document(), data));
  context.loop.settle();
  const std::filesystem::path kept = folder / "state" / "tvxHTML" / "pictures" / refused;
  EXPECT_EQ(bytes_of(kept), "PNG");
  EXPECT_EQ(count("file://" + kept.string()), 1u) << "local, so that it is counted and nothing is lost";

  refused.clear();
  uploads->pictures_came(context.DOM(), {u"file://" + from_utf8(kept.string())});
  context.loop.settle();
  EXPECT_EQ(count("http://e.org/pasted-"), 1u);
  uploads.reset();
  EXPECT_FALSE(std::filesystem::exists(kept));
}

TEST_F(PictureUploading, BytesThatTheDocumentStillShowsAreKept) {
  platform::TransferData data;
  data.image = "PNG";
  data.image_type = "image/png";
  EXPECT_TRUE(browser::paste_into(document(), data));
  context.loop.settle();
  const std::filesystem::path kept =
      folder / "state" / "tvxHTML" / "pictures" / "pasted-8d3aaf19f3adfd1c.png";
  context.load(u"<img src=\"file://" + from_utf8(kept.string()) + u"\">");
  uploads.reset();
  EXPECT_TRUE(std::filesystem::exists(kept));
}

TEST_F(PictureUploading, TheHostsStoreComesBeforeOurOwnFolder) {
  context.values.LocalImageStore = u"/store/";
  EXPECT_EQ(uploads->folder(), u"/store/");
  context.values.LocalImageStore.clear();
  EXPECT_NE(uploads->folder(), u"");
  context.values.UploadImages = false;
  EXPECT_EQ(uploads->folder(), u"");
}

TEST_F(PictureUploading, AControlThatGoesMeanwhileIsLeftAlone) {
  on_upload = [this] { context.ended = true; };
  drop({write("a.png"), write("b.png")});
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("a.png"));
  EXPECT_EQ(count("file://"), 2u);
  drop({write("c.png")});
  uploads.reset();
  context.loop.settle();
  EXPECT_THAT(uploaded, ElementsAre("a.png"));
}

}  // namespace
}  // namespace tvx::core
