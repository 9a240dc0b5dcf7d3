#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tvx/core/part.h"

namespace tvx::browser {
class HttpClient;
}

namespace tvx::core {

/// A picture that has no file on this computer, brought into one for as long as this lives, so that a dialog
/// can show it.
class FetchedPicture final : public Part {
 public:
  explicit FetchedPicture(Context& context);
  ~FetchedPicture();
  FetchedPicture(const FetchedPicture&) = delete;
  FetchedPicture& operator=(const FetchedPicture&) = delete;

  /// Of a "data:" address its file is there at once. One of "http:" or "https:" is asked for; `arrived` is
  /// called by the loop, and only if the picture came.
  void fetch(std::u16string_view address, std::function<void()> arrived);
  /// Empty until it is there.
  const std::u16string& path() const { return path_; }

 private:
  bool keep(std::string_view bytes);

  std::unique_ptr<browser::HttpClient> client_;
  std::u16string path_;
};

}  // namespace tvx::core
