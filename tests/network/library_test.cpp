#include "network/server_fixture.h"
#include "tvx/base/url.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/transfer/library_dialog.h"

/// The library of remote pictures, in front of a real server.
namespace tvx::network {
namespace {

struct Nobody : transfer::LibraryEvents {
  void ImageInserted(const std::u16string& url) override { inserted.push_back(to_utf8(url)); }
  std::vector<std::string> inserted;
};

class RemoteLibrary : public RealServer {
 protected:
  ~RemoteLibrary() override { dialog.reset(); }

  void open(const std::function<void()>& act) {
    network = std::make_unique<CurlNetwork>(loop, options);
    dialog = std::make_unique<transfer::frmLibraryImage>(
        transfer::ClientSurroundings{.network = *network, .loop = loop}, dialogs,
        platform::WindowHandle::none, opener);
    dialog->Host = from_utf8("ftp://127.0.0.1:" + std::to_string(port));
    dialog->UserName = u"ada";
    dialog->Password = u"secret";
    dialog->InitDir = u"pics";
    dialog->Passive = true;
    dialog->BlockSize = 65536;
    dialog->set_address(u"http://e.org/");
    forms.expect({.form = u"frmLibraryImage", .while_open = [act](platform::Form&) { act(); }});
    forms.Show(dialog->form(), platform::WindowHandle::none);
  }
  platform::ListView& list() { return dialog->form().Controls(u"lstImage").list_view(); }
  std::vector<std::string> listed() {
    std::vector<std::string> names;
    for (int row = 0; row < list().count(); ++row) names.push_back(to_utf8(list().item(row).text));
    std::ranges::sort(names);
    return names;
  }
  void pump_until(const std::function<bool()>& is_so) {
    for (const std::int64_t end = milliseconds() + 10000; !is_so() && milliseconds() < end;) loop.pump(20);
    EXPECT_TRUE(is_so());
  }
  void drop(const std::u16string& path) {
    list().drop(platform::TransferItemSource(
        {{std::string(platform::targets::files), to_utf8(file_url(path)) + "\r\n"}}));
  }

  headless::Dialogs dialogs;
  headless::Forms forms;
  Nobody opener;
  std::unique_ptr<transfer::frmLibraryImage> dialog;
};

TEST_F(RemoteLibrary, ListsShowsUploadsAndInserts) {
  std::filesystem::create_directories(remote / "pics" / "album.png");
  write_remote("pics/a b.png", some_bytes(3000));
  write_remote("pics/notes.txt", "x");
  start_pyftpd();
  open([this] {
    EXPECT_THAT(listed(), ElementsAre("a b.png"));
    EXPECT_EQ(list().item(0).sub_items[0], u"3000");
    list().see_rows(0, 0);
    pump_until([this] { return list().item(0).has_picture; });
    drop(write_local("new.gif", "GIF89a"));
    EXPECT_THAT(listed(), ElementsAre("a b.png", "new.gif"));
    list().select(list().find(u"new.gif"));
    dialog->form().Controls(u"cmdInsert").click();
  });
  EXPECT_EQ(remote_bytes("pics/new.gif"), "GIF89a");
  EXPECT_THAT(opener.inserted, ElementsAre("http://e.org/new.gif"));
}

TEST_F(RemoteLibrary, AServerThatHasGoneIsTold) {
  std::filesystem::create_directories(remote / "pics");
  write_remote("pics/a.png", "PNG");
  start_pyftpd();
  open([this] {
    EXPECT_THAT(listed(), ElementsAre("a.png"));
    server.reset();
    dialog->form().Controls(u"cmdRefresh").click();
    EXPECT_THAT(listed(), ElementsAre("a.png")) << "what was there stays to be seen";
    EXPECT_EQ(list().note(), u"The images can't be listed.");
    EXPECT_FALSE(list().note_detail().empty());
    drop(write_local("new.gif", "GIF89a"));
    EXPECT_EQ(list().note(), u"The images can't be listed.");
  });
}

TEST_F(RemoteLibrary, LeavesNoDescriptorBehind) {
  std::filesystem::create_directories(remote / "pics");
  write_remote("pics/a.png", some_bytes(100000));
  start_pyftpd();
  open([] {});
  dialog.reset();
  network.reset();
  const int before = open_descriptors();
  for (int i = 0; i < 5; ++i) {
    open([this] {
      list().see_rows(0, 0);
      loop.pump(0);
    });
    dialog.reset();
    network.reset();
  }
  EXPECT_LE(open_descriptors(), before);
}

}  // namespace
}  // namespace tvx::network
