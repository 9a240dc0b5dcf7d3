#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/base/error.h"
#include "tvx/platform/remote_network.h"
#include "tvx/transfer/directory_list.h"

namespace tvx::platform {
class Form;
class MessageLoop;
}  // namespace tvx::platform

namespace tvx::transfer {

class frmWait;

/// What an FTP client says. All may be called while the message loop runs inside one of its operations.
class FTPEvents {
 public:
  virtual ~FTPEvents() = default;
  virtual void TransferProgress(std::int32_t /*current*/, std::int32_t /*total*/) {}
  /// A block couldn't be written to the server.
  virtual void Cancelled() {}
  virtual void FTPError(std::int32_t /*number*/, const std::u16string& /*text*/) {}
  virtual void Connected() {}
  virtual void Disconnected() {}
  virtual void GetPutSuccess() {}
  virtual void FTPEvent(std::int32_t /*id*/, const std::u16string& /*text*/) {}
};

/// What surrounds a client; all of it outlives the client.
struct ClientSurroundings {
  platform::RemoteNetwork& network;
  platform::MessageLoop& loop;
  /// Shows `frmWait` beside the work; it is off the screen when it is hidden. None: nobody sees it.
  std::function<void(platform::Form&)> show_wait = {};
  /// The owner has ended: what runs comes to its end.
  std::function<bool()> ended = {};
};

/// `clsFTP`: one connection with one server, over which one file at a time is moved, block by block, with the
/// message loop running between the blocks.
///
/// A transfer runs inside the call. What fails is told by FTPError and gives false; an operation that is
/// called while another one runs on the same client is refused so.
class clsFTP {
 public:
  clsFTP(ClientSurroundings around, FTPEvents& events);
  /// Drops the connection without a word: owners call Disconnect first.
  ~clsFTP();
  clsFTP(const clsFTP&) = delete;
  clsFTP& operator=(const clsFTP&) = delete;

  // --- the account ---
  std::u16string UserName, Password, Host;
  std::u16string InitDir;  // for callers; nothing here reads it
  bool Passive = false;
  std::int32_t FTPPort = 21;
  std::u16string ProxyServer, ProxyBypassList;
  bool ShowDialog = false;
  platform::RemoteTransferType TransferType = platform::RemoteTransferType::Binary;
  /// Bytes a block; below 1 it counts as 1. Up to 1,024 the client rests between two blocks.
  std::int32_t BlockSize = 100;

  /// The last listing; an empty one at first.
  const std::shared_ptr<clsDirectoryList>& Directory();

  /// Reading gives the value and clears it.
  bool ActionCancelled();
  /// True asks the running transfer to stop.
  void set_ActionCancelled(bool cancelled);

  // --- operations ---
  bool Connect();
  /// Called while an operation runs it ends that first. The result says nothing.
  bool Disconnect();
  bool GetFileProgress(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  /// Throws RuntimeError(53) where there is no such local file.
  bool PutFileProgress(std::u16string_view RemoteFile, std::u16string_view LocalFile);
  /// The low 32 bits; -1: there is no such file, -2: that can't be known.
  std::int32_t GetRemoteFileSize(std::u16string_view RemoteFile);
  /// `Path` ends in a pattern: "*.gif", "pictures/*.*".
  bool GetDirectoryListing(std::u16string_view Path);
  std::u16string GetCurrDirectory();
  /// An empty name is the folder where one is.
  bool SetCurrDirectory(std::u16string_view Path);
  bool DeleteFile(std::u16string_view Path);
  bool CreateDirectory(std::u16string_view Path);
  bool RemoveDirectory(std::u16string_view Path);
  bool RenameFile(std::u16string_view OldName, std::u16string_view NewName);

  /// Lines of the last listing that nobody could make sense of.
  int skipped_lines() const { return skipped_lines_; }
  bool connected() const { return connected_; }
  /// Whether an operation is under way.
  bool busy() const { return busy_; }
  /// What waits for a server gives up at once: the user, or the owner's end, says so.
  void interrupt();

 private:
  class Busy;
  class Run;  // a transfer, from its open remote file to its end
  class Download;
  class Upload;

  platform::RemoteConnection& connection() const;
  bool open_network();
  bool connect_to_server();
  /// One call to the server with its event; false where it fails, which is told.
  bool act(std::u16string_view context, std::u16string_view operation, const std::function<void()>& call,
           std::int32_t event_id, const std::u16string& event_text);
  using NameCall = void (platform::RemoteConnection::*)(std::u16string_view);
  /// One call with one name, which has to be a plain one.
  bool act_on_name(std::u16string_view context, std::u16string_view operation, std::u16string_view name,
                   NameCall call, std::int32_t event_id, const std::u16string& event_text);
  std::optional<DirectoryFacts> find_first(std::u16string_view pattern);
  std::int32_t ask_size(std::u16string_view name);
  bool read_listing(std::u16string_view path);
  /// Lets the message loop run between two blocks.
  void rest();
  bool has_to_end() const { return cancelled_ || (around_.ended && around_.ended()); }
  void report(std::u16string_view context, const RuntimeError& failure);
  bool refuse(std::u16string_view context);
  bool fail_to_open(std::u16string_view context, const RuntimeError& failure);

  const ClientSurroundings around_;
  FTPEvents& events_;
  std::unique_ptr<platform::NetworkSession> network_;
  std::unique_ptr<platform::RemoteConnection> connection_;
  std::shared_ptr<clsDirectoryList> directory_;
  std::int64_t rested_ = 0;
  int skipped_lines_ = 0;
  bool connected_ = false, cancelled_ = false, busy_ = false, disconnect_later_ = false;
};

}  // namespace tvx::transfer
