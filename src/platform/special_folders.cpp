#include "tvx/platform/special_folders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <map>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

constexpr std::size_t longest_path = 259;

std::map<int, std::u16string>& fixed_folders() {
  static std::map<int, std::u16string> folders;
  return folders;
}

/// The value of an environment variable that must name a folder from the root on (XDG Base Directory
/// Specification: relative paths are to be ignored); empty if it doesn't.
std::string absolute_path_in(const char* variable) {
  const char* value = std::getenv(variable);
  return value && value[0] == '/' ? value : "";
}

std::string cache_home() {
  const std::string cache = absolute_path_in("XDG_CACHE_HOME");
  if (!cache.empty()) return cache;
  const std::string home = absolute_path_in("HOME");
  return home.empty() ? "" : home + "/.cache";
}

/// Makes the folders above; that they exist is seen when the last one is made.
void make_parents(const std::string& path) {
  for (std::size_t slash = path.find('/', 1); slash != path.npos; slash = path.find('/', slash + 1)) {
    mkdir(path.substr(0, slash).c_str(), 0700);
  }
}

/// Whether `path` is a folder that the user alone can use, made if need be. A link is not accepted: in a
/// folder for everybody's temporary files anyone could have laid it there.
bool make_private(const std::string& path) {
  mkdir(path.c_str(), 0700);
  struct stat status;
  if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid())
    return false;
  if ((status.st_mode & 077) != 0 && chmod(path.c_str(), 0700) != 0) return false;
  return access(path.c_str(), W_OK | X_OK) == 0;
}

bool fits(const std::string& path) { return from_utf8(path).size() < longest_path; }

std::string cache_folder() {
  const std::string home = cache_home();
  if (!home.empty() && fits(home + "/tvxHTML")) {
    make_parents(home + "/tvxHTML");
    if (make_private(home + "/tvxHTML")) return home + "/tvxHTML/";
  }
  const std::string temporary = absolute_path_in("TMPDIR");
  const std::string own = (temporary.empty() ? "/tmp" : temporary) + "/tvxHTML-" + std::to_string(geteuid());
  return fits(own) && make_private(own) ? own + "/" : "";
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
