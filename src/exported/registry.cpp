#include "tvx/exported/registry.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string_view>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/file_replacement.h"
#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"

namespace tvx::exported {

namespace {

constexpr std::size_t longest_line = 8000;

[[noreturn]] void fail(const std::string& what) { throw RuntimeError(errors::path_access, from_utf8(what)); }

std::string registry_folder() {
  std::string data = absolute_path_in("XDG_DATA_HOME");
  if (data.empty()) {
    const std::string home = absolute_path_in("HOME");
    if (home.empty()) fail("There is no folder for the user's data");
    data = home + "/.local/share";
  }
  const std::string folder = data + "/tvxHTML";
  if (!make_private_folder(folder)) fail(folder + " can't be written to");
  return folder;
}

/// One writer at a time, of all processes.
class Lock {
 public:
  explicit Lock(const std::string& path) : file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (file_ < 0 || flock(file_, LOCK_EX) != 0) {
      if (file_ >= 0) close(file_);
      fail(path + " can't be locked");
    }
  }
  ~Lock() { close(file_); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

 private:
  int file_;
};

/// A line's fields: name, identifier, path. A comment has none.
std::vector<std::string> fields_of(const std::string& line) {
  std::vector<std::string> fields;
  if (line.empty() || line[0] == '#') return fields;
  std::istringstream text(line);
  for (std::string field; std::getline(text, field, '\t');) fields.push_back(field);
  return fields;
}

bool is_of_class(const std::string& line, const std::string& name) {
  const std::vector<std::string> fields = fields_of(line);
  return !fields.empty() && equals_ignoring_ascii_case(from_utf8(fields[0]), from_utf8(name));
}

bool is_of_one(const std::string& line, const std::vector<RegisteredClass>& classes) {
  return std::ranges::any_of(classes,
                             [&](const RegisteredClass& each) { return is_of_class(line, each.name); });
}

/// The file without those lines, and with others at its end.
void rewrite(const std::function<bool(const std::string& line)>& goes, const std::string& added) {
  const std::string folder = registry_folder(), path = folder + "/classes";
  const Lock lock(folder + "/classes.lock");
  std::string text;
  std::ifstream old(path, std::ios::binary);
  for (std::string line; std::getline(old, line);)
    if (!goes(line)) text += line + "\n";
  if (text.empty() && !added.empty()) text = "# Classes, their identifiers and libraries.\n";
  replace_file(path, text + added, OldFile::Keep);
}

}  // namespace

std::string path_of_library() {
  Dl_info info;
  if (dladdr(reinterpret_cast<void*>(&path_of_library), &info) == 0) fail("The library has no path");
  return std::filesystem::absolute(info.dli_fname).lexically_normal();
}

void register_classes(const std::vector<RegisteredClass>& classes, const std::string& library) {
  std::string lines;
  for (const RegisteredClass& each : classes) {
    const std::string line = each.name + "\t" + each.id + "\t" + library + "\n";
    if (library.find_first_of("\t\r\n") != library.npos || line.size() > longest_line)
      fail(library + " can't stand in the registry");
    lines += line;
  }
  rewrite([&](const std::string& old) { return is_of_one(old, classes); }, lines);
}

void unregister_classes(const std::vector<RegisteredClass>& classes, const std::string& library) {
  rewrite(
      [&](const std::string& old) {
        const std::vector<std::string> fields = fields_of(old);
        return is_of_one(old, classes) && (fields.size() < 3 || fields[2] == library);
      },
      "");
}

}  // namespace tvx::exported
