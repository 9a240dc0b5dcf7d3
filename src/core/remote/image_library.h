#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tvx/core/part.h"
#include "tvx/transfer/library_dialog.h"

namespace tvx::core {

class Transfers;

/// Opens the library of remote pictures, and inserts what is chosen there.
class ImageLibrary final : public Part, private transfer::LibraryEvents {
 public:
  using Insert = std::function<void(const std::u16string& url)>;
  ImageLibrary(Context& context, Transfers& transfers, Insert insert)
      : Part(context), transfers_(transfers), insert_(std::move(insert)) {}

  /// Returns when it is closed. One that is open stays as it is.
  void open();
  /// The dialog while it is open, null else.
  transfer::frmLibraryImage* fLib() const { return fLib_.get(); }

 private:
  void ImageInserted(const std::u16string& url) override { insert_(url); }

  Transfers& transfers_;
  Insert insert_;
  std::unique_ptr<transfer::frmLibraryImage> fLib_;
};

}  // namespace tvx::core
