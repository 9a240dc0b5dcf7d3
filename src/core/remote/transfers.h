#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tvx/core/part.h"
#include "tvx/platform/remote_network.h"
#include "tvx/transfer/ftp_client.h"

namespace tvx::core {

class DialogHost;

/// What hosts and the control's own images do with the server that the properties name. Each operation
/// connects, acts and disconnects; while one runs, a second one is refused with an FTPError.
class Transfers final : public Part, private transfer::FTPEvents {
 public:
  Transfers(Context& context, DialogHost& dialogs);
  ~Transfers();

  bool PutFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  bool GetFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  bool DeleteFileFTP(std::u16string_view RemoteFile);
  /// Nothing where there is no connection.
  std::shared_ptr<transfer::clsDirectoryList> ListFilesFTP(std::u16string_view RemoteDirectory,
                                                           std::u16string_view Filter);
  void FTPCancelTransfer();

  /// Uploads one picture; the address under which it is seen then, or "". Tells the host of what fails.
  std::u16string UploadImageFile(std::u16string_view path);
  /// Uploads all pictures of the document that are local files, and gives them their new addresses. How many.
  std::int32_t UploadAllImages();

  transfer::clsFTP& cFTP() { return *client_; }
  /// What the client tells goes through here.
  transfer::FTPEvents& heard() { return *this; }
  /// For a client of a dialog's own.
  const transfer::ClientSurroundings& client_surroundings() const { return around_; }
  /// Whether an operation is under way: another one would be refused.
  bool running() const { return running_; }
  /// The control has ended.
  void end();

 private:
  class Action;
  class Batch;

  enum class WithPort : bool { No, Yes };
  enum class WithDialog : bool { No, Yes };
  void copy_account(WithPort with_port, WithDialog with_dialog);
  /// Connects, does the work and disconnects. False, and told, where another operation is under way.
  bool run(std::u16string_view name, WithDialog with_dialog, const std::function<void()>& work);
  bool move_file(std::u16string_view name, const std::function<bool()>& move);
  bool refuse(std::u16string_view name);
  std::u16string upload_connected(std::u16string_view path);

  // --- what the client says ---
  void TransferProgress(std::int32_t current, std::int32_t total) override;
  void FTPError(std::int32_t number, const std::u16string& text) override;
  void Connected() override;
  void Disconnected() override;
  void GetPutSuccess() override;
  void FTPEvent(std::int32_t id, const std::u16string& text) override;
  void tell_success(std::int32_t id, std::u16string text);
  template <class Event>
  void tell_host(const Event& event);

  std::unique_ptr<platform::RemoteNetwork> own_network_;  // where the surroundings bring none
  DialogHost& dialogs_;
  const transfer::ClientSurroundings around_;
  const std::unique_ptr<transfer::clsFTP> client_;
  Batch* batch_ = nullptr;
  bool running_ = false;
};

}  // namespace tvx::core
