#include "tvx/transfer/library_dialog.h"

#include "transfer/client_fixture.h"
#include "tvx/base/url.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/transfer/date_stamp.h"

namespace tvx::transfer {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Opener : LibraryEvents {
  std::vector<std::string> heard;
  void ImageInserted(const std::u16string& url) override { heard.push_back("inserted " + to_utf8(url)); }
  void FTPError(std::int32_t number, const std::u16string&) override {
    heard.push_back("error " + std::to_string(number));
  }
  void FTPConnected() override { heard.emplace_back("connected"); }
  void FTPDisconnected() override { heard.emplace_back("disconnected"); }
  void unloaded() override { heard.emplace_back("unloaded"); }
};

class Library : public testing::Test {
 protected:
  Library() {
    folder = std::filesystem::temp_directory_path() / ("tvx-library-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder / "sub");
    server.form = platform::ListingForm::Lines;
    make();
  }
  ~Library() override {
    dialog.reset();
    std::filesystem::remove_all(folder);
  }

  void make() {
    dialog = std::make_unique<frmLibraryImage>(
        ClientSurroundings{.network = network,
                           .loop = loop,
                           .show_wait = [this](platform::Form&) { ++waits_shown; },
                           .ended = [this] { return ended; }},
        dialogs, platform::WindowHandle::none, opener);
    dialog->Host = u"server";
    dialog->InitDir = u"/pics";
    dialog->set_address(u"http://e.org/pics/");
    dialog->BlockSize = 65536;
  }
  /// A line as a server prints it.
  void has(const std::string& name, int size, const std::string& date = "Jan 02 2025") {
    server.listing += "-rw-r--r-- 1 ada ada " + std::to_string(size) + " " + date + " " + name + "\r\n";
  }
  void has_folder(const std::string& name) {
    server.listing += "drwxr-xr-x 1 ada ada 4096 Jan 02 2025 " + name + "\r\n";
  }
  /// The user sees the dialog, and then acts.
  void show(const std::function<void()>& act = [] {}) {
    forms.expect({.form = u"frmLibraryImage", .while_open = [act](platform::Form&) { act(); }});
    forms.Show(dialog->form(), platform::WindowHandle::none);
  }
  platform::ListView& list() { return dialog->form().Controls(u"lstImage").list_view(); }
  std::vector<std::string> column(int number) {
    std::vector<std::string> texts;
    for (int row = 0; row < list().count(); ++row)
      texts.push_back(to_utf8(list().item(row).in_column(number)));
    return texts;
  }
  void press(std::u16string_view button) { EXPECT_TRUE(dialog->form().Controls(button).click()); }
  std::u16string write(const std::string& name, const std::string& bytes = "bytes") {
    std::ofstream(folder / name) << bytes;
    return from_utf8((folder / name).string());
  }
  bool drop(const std::vector<std::u16string>& paths) {
    std::string uris;
    for (const std::u16string& path : paths) uris += to_utf8(file_url(path)) + "\r\n";
    return list().drop(platform::TransferItemSource({{std::string(platform::targets::files), uris}}));
  }
  std::string note() { return to_utf8(list().note()); }

  std::filesystem::path folder;
  headless::VirtualTimeLoop loop;
  headless::Dialogs dialogs;
  headless::Forms forms;
  FakeServer server;
  FakeNetwork network{server};
  Opener opener;
  int waits_shown = 0;
  bool ended = false;
  std::unique_ptr<frmLibraryImage> dialog;
};

TEST_F(Library, ShowsTheStartFoldersPicturesWhenItComesToTheFront) {
  has("b.png", 20);
  has("a.JPG", 1234);
  has("notes.txt", 5);
  has("c.gif", 3);
  has("d.jpeg", 4);
  show();
  EXPECT_THAT(column(0), ElementsAre("b.png", "a.JPG", "c.gif", "d.jpeg")) << "in the server's order";
  EXPECT_EQ(list().item(0).small_icon, 1);
  EXPECT_THAT(server.asked, Contains("go /pics"));
  EXPECT_EQ(server.open_connections, 0);
  EXPECT_EQ(note(), "");
}

TEST_F(Library, AFileWithAnEndingInTheMiddleIsListed) {
  has("photo.gif.txt", 1);
  show();
  EXPECT_THAT(column(0), ElementsAre("photo.gif.txt"));
}

TEST_F(Library, SubfoldersAreNotListed) {
  has_folder("album.png");
  has("a.png", 1);
  show();
  EXPECT_THAT(column(0), ElementsAre("a.png"));
}

TEST_F(Library, ASizeIsSortedByFourteenDigits) {
  has("a.png", 1234);
  show();
  EXPECT_THAT(column(1), ElementsAre("1234"));
  EXPECT_THAT(column(3), ElementsAre("00000000001234"));
}

TEST_F(Library, TheDateIsOneNumber) {
  has("a.png", 1, "Jan 02 2025");
  show();
  EXPECT_THAT(column(2), ElementsAre("202501020000"));
  EXPECT_EQ(date_stamp(45000.5), u"202303151200");
  EXPECT_EQ(date_stamp(0), u"189912300000");
  EXPECT_EQ(date_stamp(45000 + 0.999999), u"202303160000");
  EXPECT_EQ(date_stamp(1e300), u"189912300000");
}

TEST_F(Library, TwoClicksOnTheDateGiveAscendingThenDescendingOrder) {
  has("b.png", 1, "Mar 02 2025");
  has("c.png", 1, "Jan 02 2025");
  has("a.png", 1, "Feb 02 2025");
  show([this] {
    list().click_column(2);
    EXPECT_THAT(column(0), ElementsAre("c.png", "a.png", "b.png"));
    list().click_column(2);
    EXPECT_THAT(column(0), ElementsAre("b.png", "a.png", "c.png"));
  });
}

TEST_F(Library, SizesAreSortedAsNumbersByAColumnThatNobodySees) {
  has("a.png", 1000);
  has("b.png", 999);
  has("c.png", 20);
  EXPECT_TRUE(list().columns()[3].hidden);
  show([this] {
    list().hide_column(3, false);
    list().click_column(1);
    EXPECT_EQ(list().SortKey(), 3);
    EXPECT_THAT(column(1), ElementsAre("20", "999", "1000"));
    EXPECT_TRUE(list().columns()[3].hidden) << "it would show itself when it is sorted by";
    list().click_column(0);
    EXPECT_THAT(column(0), ElementsAre("c.png", "b.png", "a.png")) << "the order turns round with each click";
  });
}

TEST_F(Library, InsertingWithNothingSelectedDoesNothing) {
  has("a.png", 1);
  show([this] {
    press(u"cmdInsert");
    EXPECT_TRUE(dialog->form().Visible());
  });
  EXPECT_THAT(opener.heard, Not(Contains(HasSubstr("inserted"))));
}

TEST_F(Library, SeveralPicturesAreInsertedInOneVisit) {
  has("a b.png", 1);
  has("c.png", 1);
  show([this] {
    list().select(0);
    press(u"cmdInsert");
    list().double_click(1);
    EXPECT_TRUE(dialog->form().Visible());
  });
  EXPECT_THAT(opener.heard, Contains("inserted http://e.org/pics/a b.png"));
  EXPECT_THAT(opener.heard, Contains("inserted http://e.org/pics/c.png"));
}

TEST_F(Library, RefreshAsksTheServerAnew) {
  has("a.png", 1);
  show([this] {
    has("b.png", 1);
    press(u"cmdRefresh");
    EXPECT_THAT(column(0), ElementsAre("a.png", "b.png"));
  });
}

TEST_F(Library, AnEmptyFolderSaysSo) {
  show();
  EXPECT_EQ(note(), "There are no images in this folder. Drop some here to upload them.");
}

TEST_F(Library, AFailedListingSaysWhy) {
  server.before = [](const std::string& call) {
    if (call == "connect") throw RuntimeError(platform::network_errors::login_failure, u"530 Not for you");
  };
  show();
  EXPECT_EQ(note(), "The images can't be listed.");
  EXPECT_THAT(to_utf8(list().note_detail()), HasSubstr("530 Not for you"));
  EXPECT_THAT(opener.heard, Contains(HasSubstr("error")));
}

TEST_F(Library, AListingThatBreaksOffSaysWhy) {
  server.before = [](const std::string& call) {
    if (call == "list") throw RuntimeError(platform::network_errors::connection_lost, u"The line is dead");
  };
  show();
  EXPECT_EQ(note(), "The images can't be listed.");
  EXPECT_THAT(to_utf8(list().note_detail()), HasSubstr("The line is dead"));
  EXPECT_EQ(server.open_connections, 0);
}

TEST_F(Library, ADropUploadsFilesAndRefusesFoldersInTheirOrder) {
  std::vector<std::string> boxes;
  dialogs.on_opened([&](const headless::ShownDialog& shown) {
    const auto& box = std::get<platform::MessageBox>(shown);
    boxes.push_back(to_utf8(box.title) + ": " + to_utf8(box.text));
    EXPECT_EQ(box.icon, platform::MessageIcon::information);
    EXPECT_TRUE(server.files.empty()) << "the folder comes before the file";
  });
  show([this] { EXPECT_TRUE(drop({from_utf8((folder / "sub").string()), write("new.png")})); });
  EXPECT_THAT(
      boxes,
      ElementsAre("HTML Editor: Directories may not be uploaded. Please upload the files individually"));
  EXPECT_EQ(server.files[u"new.png"], "bytes");
  EXPECT_THAT(server.asked, Contains("write 1 new.png")) << "as text, as the list is fetched";
  EXPECT_GT(waits_shown, 0);
}

TEST_F(Library, AfterADropTheListIsFetchedAnew) {
  has("a.png", 1);
  show([this] {
    has("new.png", 5);
    drop({write("new.png")});
    EXPECT_THAT(column(0), ElementsAre("a.png", "new.png"));
  });
}

TEST_F(Library, AnUploadThatFailsIsTold) {
  has("a.png", 1);
  show([this] {
    server.before = [](const std::string& call) {
      if (call == "write 1") throw RuntimeError(platform::network_errors::access_denied, u"550 Read only");
    };
    drop({write("new.png")});
    EXPECT_EQ(note(), "Not all files could be uploaded.");
    EXPECT_THAT(to_utf8(list().note_detail()), HasSubstr("550 Read only"));
    EXPECT_THAT(column(0), ElementsAre("a.png"));
  });
}

TEST_F(Library, OnlyFilesCanBeDropped) {
  const platform::TransferItemSource text({{std::string(platform::targets::text), "words"}});
  EXPECT_FALSE(list().drag_over(text));
  EXPECT_FALSE(list().drop(text));
}

TEST_F(Library, WhatIsDroppedDuringATransferFollowsIt) {
  show([this] {
    bool once = true;
    server.before = [&](const std::string& call) {
      if (call == "write 1" && std::exchange(once, false)) drop({write("second.png")});
    };
    drop({write("first.png")});
    server.before = {};
  });
  EXPECT_TRUE(server.files.contains(u"first.png"));
  EXPECT_TRUE(server.files.contains(u"second.png"));
}

TEST_F(Library, ClosingInTheMiddleOfAListingEndsIt) {
  for (int i = 0; i < 300; ++i) has("p" + std::to_string(i) + ".png", i);
  loop.post_delayed(50, [this] { press(u"cmdCancel"); });
  show();
  EXPECT_FALSE(dialog->form().Visible());
  EXPECT_LT(list().count(), 300);
  dialog.reset();
  EXPECT_EQ(server.open_connections, 0);
  EXPECT_EQ(opener.heard.back(), "unloaded");
}

TEST_F(Library, UnloadingSaysGoodbyeAndTellsItsOpener) {
  show([this] { press(u"cmdCancel"); });
  dialog.reset();
  EXPECT_EQ(opener.heard.back(), "unloaded");
}

TEST_F(Library, TenThousandFilesDoNotHoldTheLoopUp) {
  for (int i = 0; i < 10000; ++i) has("p" + std::to_string(i) + ".png", i);
  std::int64_t first_row = -1;
  const std::int64_t start = loop.now();
  struct Rows : platform::ListViewObserver {
    std::function<void()> on_row;
    void row_inserted(int) override { on_row(); }
  } rows;
  rows.on_row = [&] {
    if (first_row < 0) first_row = loop.now() - start;
  };
  list().add_observer(rows);
  show();
  list().remove_observer(rows);
  EXPECT_EQ(list().count(), 10000);
  EXPECT_LT(first_row, 100);
}

// --- the pictures beside the rows ---

TEST_F(Library, OnlyThePicturesOfSeenRowsAreFetched) {
  for (const char* name : {"a.png", "b.png", "c.png"}) {
    has(name, 3);
    server.files[from_utf8(name)] = name;
  }
  show([this] {
    server.asked.clear();
    list().see_rows(1, 2);
    loop.settle();
    EXPECT_FALSE(list().item(0).has_picture);
    EXPECT_TRUE(list().item(1).has_picture);
    EXPECT_TRUE(list().item(2).has_picture);
    EXPECT_THAT(server.asked,
                ElementsAre("open", "connect server", "go /pics", "read 2 b.png", "read 2 c.png"));
    list().see_rows(1, 2);
    loop.settle();
    EXPECT_EQ(server.asked.size(), 5u) << "what is there isn't fetched again";
  });
}

TEST_F(Library, ThePictureThatIsScrolledAwayIsGivenUp) {
  has("big.png", 1000000);
  has("next.png", 3);
  server.files[u"big.png"] = std::string(1000000, 'x');
  server.files[u"next.png"] = "abc";
  show([this] {
    std::size_t blocks = 0;
    server.before = [&](const std::string& call) {
      if (call == "block" && ++blocks == 2) list().see_rows(1, 1);
    };
    list().see_rows(0, 0);
    loop.settle();
    server.before = {};
    EXPECT_FALSE(list().item(0).has_picture);
    EXPECT_TRUE(list().item(1).has_picture);
    EXPECT_THAT(server.asked, Contains("interrupt"));
    EXPECT_LT(blocks, 10u);
    list().see_rows(0, 0);
    loop.settle();
    EXPECT_TRUE(list().item(0).has_picture) << "it can be wanted again";
  });
}

TEST_F(Library, HugeFilesHaveNoSmallPicture) {
  has("huge.png", 20 << 20);
  show([this] {
    server.asked.clear();
    list().see_rows(0, 0);
    loop.settle();
    EXPECT_THAT(server.asked, IsEmpty());
  });
}

TEST_F(Library, AServerThatAllowsOneConnectionIsLeftInPeace) {
  for (int i = 0; i < 20; ++i) has("p" + std::to_string(i) + ".png", 3);
  show([this] {
    int tries = 0;
    server.before = [&](const std::string& call) {
      if (call != "connect") return;
      ++tries;
      throw RuntimeError(platform::network_errors::extended_error, u"421 Too many connections");
    };
    list().see_rows(0, 19);
    loop.settle();
    EXPECT_EQ(tries, 3);
    EXPECT_EQ(note(), "");
  });
}

TEST_F(Library, ClosingDropsThePicturesConnection) {
  has("a.png", 3);
  server.files[u"a.png"] = "abc";
  show([this] {
    list().see_rows(0, 0);
    loop.settle();
    EXPECT_EQ(server.open_connections, 1);
    press(u"cmdCancel");
  });
  dialog.reset();
  EXPECT_EQ(server.open_connections, 0);
}

TEST_F(Library, ClosingWhileAPictureIsFetchedLeavesNothingBehind) {
  has("a.png", 3);
  server.files[u"a.png"] = "abc";
  show([this] {
    server.before = [this](const std::string& call) {
      if (call == "block") dialog->form().cancel();
    };
    list().see_rows(0, 0);
    loop.settle();
    server.before = {};
  });
  dialog.reset();
  loop.settle();
  EXPECT_EQ(server.open_connections, 0);
}

}  // namespace
}  // namespace tvx::transfer
