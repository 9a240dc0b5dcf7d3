#include "tvx/core/dialogs/fetched_picture.h"

#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/file_replacement.h"
#include "tvx/base/strings.h"
#include "tvx/browser/loading/http_client.h"
#include "tvx/browser/natural_size.h"
#include "tvx/core/content/temporary_files.h"

namespace tvx::core {

FetchedPicture::FetchedPicture(Context& context) : Part(context) {}

FetchedPicture::~FetchedPicture() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove(to_utf8(path_), ignored);
}

void FetchedPicture::fetch(std::u16string_view address, std::function<void()> arrived) {
  if (const auto bytes = browser::picture_in_address(address)) {
    keep(*bytes);
  } else if (address.starts_with(u"http:") || address.starts_with(u"https:")) {
    client_ = std::make_unique<browser::HttpClient>(surroundings().loop);
    client_->fetch(address, "image/*",
                   [this, arrived = std::move(arrived)](const browser::HttpAnswer& answer) {
                     if (answer.has_content() && keep(answer.body)) arrived();
                   });
  }
}

// Without a preview the dialog does all that it does otherwise.
bool FetchedPicture::keep(std::string_view bytes) {
  const std::u16string file = temporary_file(surroundings().hwnd, picture_file);
  if (file.empty()) return false;
  return attempt([&] {
    replace_file(to_utf8(file), bytes, OldFile::Forget);
    path_ = file;
  });
}

}  // namespace tvx::core
