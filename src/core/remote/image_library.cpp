#include "tvx/core/remote/image_library.h"

#include "tvx/base/error.h"
#include "tvx/core/remote/transfers.h"

namespace tvx::core {

// The reference goes when the dialog has closed, and with it what was under way in it.
void ImageLibrary::open() {
  if (fLib_) return;
  const KeepAlive alive(context_);
  transfer::LibraryEvents& events = *this;
  fLib_ = std::make_unique<transfer::frmLibraryImage>(transfers_.client_surroundings(),
                                                      surroundings().dialogs, surroundings().hwnd, events);
  fLib_->Host = properties_.FTPHost;
  fLib_->UserName = properties_.FTPUser;
  fLib_->Password = properties_.FTPPassword;
  fLib_->InitDir = properties_.FTPInitDir;
  fLib_->Passive = properties_.FTPPassive;
  fLib_->Port = properties_.FTPPort;
  fLib_->ProxyBypassList = properties_.FTPProxyBypassList;
  fLib_->ProxyServer = properties_.FTPProxyServer;
  fLib_->BlockSize = properties_.FTPBlockSize;
  fLib_->set_address(properties_.FTPSaveToURL);
  attempt([&] { context_.show_dialog(fLib_->form(), u"LibraryImageSettings"); });
  fLib_.reset();
}

}  // namespace tvx::core
