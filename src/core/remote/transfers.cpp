#include "tvx/core/remote/transfers.h"

#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/core/chrome/dialog_host.h"
#include "tvx/core/events.h"
#include "tvx/core/remote/action.h"
#include "tvx/core/remote/batch.h"
#include "tvx/network/curl_network.h"

namespace tvx::core {

namespace {

constexpr std::u16string_view words_of_wait_dialog = u"WaitSettings";

}  // namespace

Transfers::Transfers(Context& context, DialogHost& dialogs)
    : Part(context),
      own_network_(surroundings().network ? nullptr
                                          : std::make_unique<network::CurlNetwork>(surroundings().loop)),
      dialogs_(dialogs),
      around_{.network = own_network_ ? *own_network_ : *surroundings().network,
              .loop = surroundings().loop,
              .show_wait = [this](platform::Form& form) { dialogs_.open_beside(form, words_of_wait_dialog); },
              .ended = [this] { return context_.terminated(); }},
      client_(std::make_unique<transfer::clsFTP>(around_, static_cast<transfer::FTPEvents&>(*this))) {}

Transfers::~Transfers() = default;

void Transfers::end() { client_->interrupt(); }

// --- the operations of hosts ---

void Transfers::copy_account(WithPort with_port, WithDialog with_dialog) {
  client_->Host = properties_.FTPHost;
  client_->UserName = properties_.FTPUser;
  client_->Password = properties_.FTPPassword;
  client_->InitDir = properties_.FTPInitDir;
  client_->Passive = properties_.FTPPassive;
  if (with_port == WithPort::Yes) client_->FTPPort = properties_.FTPPort;
  client_->TransferType = static_cast<platform::RemoteTransferType>(properties_.FTPTransferType);
  client_->ProxyBypassList = properties_.FTPProxyBypassList;
  client_->ProxyServer = properties_.FTPProxyServer;
  if (with_dialog == WithDialog::Yes) client_->ShowDialog = properties_.ShowFTPDialog;
  client_->BlockSize = properties_.FTPBlockSize;
}

bool Transfers::refuse(std::u16string_view name) {
  FTPError(platform::network_errors::transfer_in_progress,
           std::u16string(name) + u" - Message: Another transfer is in progress");
  return false;
}

// The port is not copied: these operations keep to the one that an image upload has brought, else to 21.
bool Transfers::run(std::u16string_view name, WithDialog with_dialog, const std::function<void()>& work) {
  if (running_) return refuse(name);
  const Action action(*this);
  copy_account(WithPort::No, with_dialog);
  properties_.FTPActionInProgress = true;
  if (client_->Connect()) {
    attempt(work);
    client_->Disconnect();
  }
  properties_.FTPActionInProgress = false;
  return true;
}

bool Transfers::move_file(std::u16string_view name, const std::function<bool()>& move) {
  bool moved = false;
  run(name, WithDialog::Yes, [&] {
    if (client_->InitDir.empty() || client_->SetCurrDirectory(client_->InitDir)) moved = move();
  });
  return moved;
}

bool Transfers::PutFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  return move_file(u"PutFileFTP", [&] { return client_->PutFileProgress(RemoteFile, LocalFile); });
}

bool Transfers::GetFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  return move_file(u"GetFileFTP", [&] { return client_->GetFileProgress(LocalFile, RemoteFile); });
}

bool Transfers::DeleteFileFTP(std::u16string_view RemoteFile) {
  bool deleted = false;
  run(u"DeleteFileFTP", WithDialog::Yes, [&] {
    client_->SetCurrDirectory(client_->InitDir);
    deleted = client_->DeleteFile(RemoteFile);
  });
  return deleted;
}

std::shared_ptr<transfer::clsDirectoryList> Transfers::ListFilesFTP(std::u16string_view RemoteDirectory,
                                                                    std::u16string_view Filter) {
  std::shared_ptr<transfer::clsDirectoryList> list;
  run(u"ListFilesFTP", WithDialog::No, [&] {
    client_->SetCurrDirectory(RemoteDirectory.empty() ? client_->InitDir : std::u16string(RemoteDirectory));
    client_->GetDirectoryListing(Filter);
    list = client_->Directory();
  });
  return list;
}

void Transfers::FTPCancelTransfer() { client_->set_ActionCancelled(true); }

// --- what the client says ---

template <class Event>
void Transfers::tell_host(const Event& event) {
  if (!context_.terminated()) raise(event);
}

void Transfers::tell_success(std::int32_t id, std::u16string text) {
  tell_host([&](HTMLedEvents& host) { host.FTPSuccess(id, text); });
}

void Transfers::TransferProgress(std::int32_t current, std::int32_t total) {
  if (batch_) batch_->show_bytes(current, total);
  tell_host([&](HTMLedEvents& host) { host.FTPTransferProgress(current, total); });
}

void Transfers::FTPError(std::int32_t number, const std::u16string& text) {
  tell_host([&, copy = text](HTMLedEvents& host) mutable { host.FTPError(number, copy); });
}

void Transfers::Connected() { tell_success(0, u"Connected to Host : " + properties_.FTPHost); }
void Transfers::Disconnected() { tell_success(25, u"Disconnected from Host : " + properties_.FTPHost); }
void Transfers::GetPutSuccess() { tell_success(1, u"File Transfer Complete!"); }
void Transfers::FTPEvent(std::int32_t id, const std::u16string& text) { tell_success(id, text); }

// --- one picture ---

std::u16string Transfers::UploadImageFile(std::u16string_view path) {
  if (running_) {
    refuse(u"UploadImageFile");
    return {};
  }
  const Action action(*this);
  std::u16string address;
  copy_account(WithPort::Yes, WithDialog::Yes);
  properties_.FTPActionInProgress = true;
  if (client_->Connect()) {
    attempt([&] { address = upload_connected(path); });
    tell_host([](HTMLedEvents& host) { host.EndImageUpload(); });
  } else {
    FTPError(11, u"Could not connect to FTP Host!");
  }
  properties_.FTPActionInProgress = false;
  client_->Disconnect();
  return address;
}

/// A file that has vanished sends nothing and counts as a failed transfer.
std::u16string Transfers::upload_connected(std::u16string_view path) {
  tell_host([](HTMLedEvents& host) { host.BeginImageUpload(); });
  client_->SetCurrDirectory(client_->InitDir);
  const std::u16string name(FileNameFromPath(path));
  bool uploaded = false;
  attempt([&] { uploaded = client_->PutFileProgress(name, path); });
  if (uploaded) return properties_.FTPSaveToURL + name;
  if (!client_->ActionCancelled()) {
    client_->Disconnect();
    FTPError(12, u"A FTP error has occured and the file cannot be uploaded!");
  }
  return {};
}

}  // namespace tvx::core
