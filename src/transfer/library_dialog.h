#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "tvx/platform/form.h"
#include "tvx/transfer/folder_pictures.h"
#include "tvx/transfer/ftp_client.h"

namespace tvx::platform {
class CommonDialogs;
}

namespace tvx::transfer {

/// What the library says to who has opened it.
class LibraryEvents {
 public:
  virtual ~LibraryEvents() = default;
  virtual void ImageInserted(const std::u16string& url) = 0;
  virtual void FTPError(std::int32_t /*number*/, const std::u16string& /*text*/) {}
  virtual void FTPConnected() {}
  virtual void FTPDisconnected() {}
  virtual void unloaded() {}
};

/// `frmLibraryImage`: the pictures in the server's start folder as a list, from which some are inserted, and
/// onto which files are dropped to upload them. It has a client of its own; the pictures beside the rows come
/// over one more connection, as far as they are seen.
class frmLibraryImage final : private platform::FormHandler,
                              private platform::ListViewHandler,
                              private FTPEvents {
 public:
  frmLibraryImage(const ClientSurroundings& around, platform::CommonDialogs& dialogs,
                  platform::WindowHandle owner, LibraryEvents& events);
  /// Unloads it.
  ~frmLibraryImage() override;

  // --- set before it is shown ---
  std::u16string Host, UserName, Password, InitDir;
  bool Passive = false;
  std::int32_t Port = 21;
  std::u16string ProxyBypassList, ProxyServer;
  std::int32_t BlockSize = 100;
  /// What goes before a file's name in the address that is inserted.
  void set_address(std::u16string_view url) { lstImage_.set_Tag(url); }

  platform::Form& form() { return form_; }
  clsFTP& lFTP() { return lFTP_; }
  /// Fetches the list.
  void Connect();

 private:
  // platform::FormHandler, platform::ListViewHandler
  void Click(platform::FormControl& button) override;
  void Activate(platform::Form& form) override;
  void ColumnClick(platform::ListView& list, int column) override;
  void DblClick(platform::ListView&) override { insert_selected(); }
  void DblClick(platform::FormControl&) override {}
  bool OLEDragOver(platform::ListView& list, const platform::TransferSource& source) override;
  void OLEDragDrop(platform::ListView& list, const platform::TransferSource& source) override;
  void rows_seen(platform::ListView& list, int first, int last) override;

  // FTPEvents
  void FTPError(std::int32_t number, const std::u16string& text) override;
  void Connected() override { events_.FTPConnected(); }
  void Disconnected() override { events_.FTPDisconnected(); }

  void copy_account();
  void list_folder();
  void fill_list();
  void add_row(const clsDirectoryItem& entry);
  void fetch_seen_pictures();
  void insert_selected();
  void upload(const std::vector<std::u16string>& paths);
  void upload_one(const std::u16string& path);
  void run_waiting_uploads();
  void close();
  bool has_to_end() const { return closed_ || (around_.ended && around_.ended()); }

  const ClientSurroundings around_;
  platform::CommonDialogs& dialogs_;
  const platform::WindowHandle owner_;
  LibraryEvents& events_;
  platform::Form form_{u"frmLibraryImage", u"Remote Images"};
  platform::FormControl& lstImage_;
  platform::ListView& list_;
  clsFTP lFTP_;
  FolderPictures pictures_;
  std::deque<std::vector<std::u16string>> waiting_;  // dropped while something else was under way
  std::u16string failure_;                           // what the client said last
  int first_seen_ = 0, last_seen_ = -1;              // rows
  bool first_listing_done_ = false, busy_ = false, closed_ = false;
};

}  // namespace tvx::transfer
