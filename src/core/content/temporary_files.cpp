#include "tvx/core/content/temporary_files.h"

#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/platform/special_folders.h"

namespace tvx::core {

std::u16string with_final_slash(std::u16string folder) {
  if (!folder.empty() && folder.back() != u'/' && folder.back() != u'\\') folder += u'/';
  return folder;
}

std::u16string temporary_file(platform::WindowHandle hwnd, std::u16string_view name) {
  const std::u16string folder =
      with_final_slash(platform::GetSpecialFolder(hwnd, platform::CSIDL_INTERNET_CACHE));
  return folder + to_text(platform::number_of(hwnd)) + std::u16string(name);
}

void remove_temporary_files(platform::WindowHandle hwnd) {
  for (std::u16string_view name : {style_sheet_file, document_file}) {
    std::error_code ignored;  // a file that is gone already is none of our business
    attempt([&] { std::filesystem::remove(file_system_path(temporary_file(hwnd, name)), ignored); });
  }
}

}  // namespace tvx::core
