#include "tvx/base/private_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace tvx {
namespace {

/// Makes the folders above; that they exist is seen when the last one is made.
void make_parents(const std::string& path) {
  for (std::size_t slash = path.find('/', 1); slash != path.npos; slash = path.find('/', slash + 1))
    mkdir(path.substr(0, slash).c_str(), 0700);
}

}  // namespace

std::string absolute_path_in(const char* variable) {
  const char* value = std::getenv(variable);
  return value && value[0] == '/' ? value : "";
}

// A link is not accepted: in a folder for everybody's temporary files anyone could have laid it there.
bool make_private_folder(const std::string& path) {
  make_parents(path);
  mkdir(path.c_str(), 0700);
  struct stat status;
  if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid())
    return false;
  if ((status.st_mode & 077) != 0 && chmod(path.c_str(), 0700) != 0) return false;
  return access(path.c_str(), W_OK | X_OK) == 0;
}

std::string state_folder() {
  std::string home = absolute_path_in("XDG_STATE_HOME");
  if (home.empty() && !absolute_path_in("HOME").empty()) home = absolute_path_in("HOME") + "/.local/state";
  if (!home.empty() && make_private_folder(home + "/tvxHTML")) return home + "/tvxHTML";
  return private_temporary_folder();
}

std::string private_temporary_folder() {
  const std::string temporary = absolute_path_in("TMPDIR");
  const std::string own = (temporary.empty() ? "/tmp" : temporary) + "/tvxHTML-" + std::to_string(geteuid());
  return make_private_folder(own) ? own : "";
}

}  // namespace tvx
