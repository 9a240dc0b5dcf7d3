#include "tvx/platform/special_folders.h"

#include <map>

#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

constexpr std::size_t longest_path = 259;

std::map<int, std::u16string>& fixed_folders() {
  static std::map<int, std::u16string> folders;
  return folders;
}

std::string cache_home() {
  const std::string cache = absolute_path_in("XDG_CACHE_HOME");
  if (!cache.empty()) return cache;
  const std::string home = absolute_path_in("HOME");
  return home.empty() ? "" : home + "/.cache";
}

bool fits(const std::string& path) { return from_utf8(path).size() < longest_path; }

std::string cache_folder() {
  const std::string home = cache_home();
  if (!home.empty() && fits(home + "/tvxHTML") && make_private_folder(home + "/tvxHTML"))
    return home + "/tvxHTML/";
  const std::string own = private_temporary_folder();
  return !own.empty() && fits(own) ? own + "/" : "";
}

}  // namespace

std::u16string GetSpecialFolder(WindowHandle, int folderId) {
  if (const auto fixed = fixed_folders().find(folderId); fixed != fixed_folders().end()) return fixed->second;
  return folderId == CSIDL_INTERNET_CACHE ? from_utf8(cache_folder()) : std::u16string();
}

void set_special_folder(int folderId, std::optional<std::u16string> path) {
  if (path) {
    fixed_folders().insert_or_assign(folderId, *std::move(path));
  } else {
    fixed_folders().erase(folderId);
  }
}

}  // namespace tvx::platform
