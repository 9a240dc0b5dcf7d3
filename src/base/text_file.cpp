#include "tvx/base/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/file_replacement.h"
#include "tvx/base/open_file.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

bool is_folder(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The folder part of a path, without its last "/"; "/" for a file in the root, "." where there is none.
std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == path.npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// A NUL would cut the name short and so name another file.
bool names_a_file(const std::string& path) { return !path.empty() && path.find('\0') == path.npos; }

/// Whether a file can stand there: links are replaced; devices, pipes and folders stay what they are.
bool is_file_to_write(const std::string& path) {
  struct stat status;
  return names_a_file(path) &&
         (lstat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode) || S_ISLNK(status.st_mode));
}

struct FileBytes {
  std::string bytes;
  /// Why there are not all bytes; empty where there are.
  std::string failure;
};

std::string why_unreadable(const struct stat& status, std::size_t limit) {
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  if (!S_ISREG(status.st_mode)) return "it is not a regular file";
  if (status.st_size > 0 && static_cast<std::size_t>(status.st_size) > limit)
    return "it is larger than " + std::to_string(limit >> 20) + " MB";
  return {};
}

// A pipe waits for its writer and a device has no end. Looked at before it is opened, for opening alone can
// make a device do something, and once more after, for it may have become another.
FileBytes read_file(std::u16string_view path, std::size_t limit) {
  FileBytes result;
  const std::string name = file_system_path(path);
  struct stat status;
  const auto broken_off = [&](int reason) {
    result.failure = std::strerror(reason);
    return result;
  };
  if (!names_a_file(name)) return broken_off(ENOENT);
  if (stat(name.c_str(), &status) != 0) return broken_off(errno);
  result.failure = why_unreadable(status, limit);
  if (!result.failure.empty()) return result;
  OpenFile file(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.is_open() || fstat(file.descriptor(), &status) != 0) return broken_off(errno);
  result.failure = why_unreadable(status, limit);
  if (!result.failure.empty()) return result;
  result.bytes.reserve(static_cast<std::size_t>(std::max<off_t>(status.st_size, 0)) + 1);
  if (!file.read(result.bytes, limit)) return broken_off(errno);
  if (result.bytes.size() <= limit) return result;
  status.st_size = static_cast<off_t>(result.bytes.size());
  result.bytes.clear();
  result.failure = why_unreadable(status, limit);
  return result;
}

[[noreturn]] void fail_to_save(const std::string& path, int reason) {
  throw RuntimeError(errors::path_access, from_utf8("Can't save " + path + ": " + std::strerror(reason)));
}

}  // namespace

std::string file_system_path(std::u16string_view path) {
  std::string out = to_utf8(path);
  std::replace(out.begin(), out.end(), '\\', '/');
  if (out.empty() || out.front() == '/' || out.find('/') == out.npos) return out;
  if (!is_folder(folder_of(out)) && is_folder(folder_of("/" + out))) out.insert(out.begin(), '/');
  return out;
}

bool WriteTextFile(std::u16string_view path, std::u16string_view text) {
  const std::string name = file_system_path(path);
  return attempt([&] {
    if (fault_point(u"WriteTextFile")) fail_to_save(name, EIO);
    if (!is_file_to_write(name)) fail_to_save(name, EINVAL);
    const std::string bytes = CodePage::system().encode(text);
    // Without rights on its folder a file can't be replaced, but it can be written to.
    if (!can_write_beside(name) && eaccess(name.c_str(), W_OK) == 0)
      overwrite_file(name, bytes);
    else
      replace_file(name, bytes, OldFile::Forget);
  });
}

// For the program's own files, which nobody misses: no disk is waited for.
bool write_printed_line(std::u16string_view path, std::u16string_view text) {
  const std::string name = file_system_path(path);
  if (!is_file_to_write(name)) return false;
  unlink(name.c_str());
  OpenFile file(open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0666));
  return file.is_open() && file.write(CodePage::system().encode(text) + CodePage::system().encode(u"\r\n")) &&
         file.close();
}

FileText ReadTextFile(std::u16string_view path, std::size_t limit) {
  FileBytes file = read_file(path, limit);
  FileText result{CodePage::system().decode(file.bytes), std::move(file.failure)};
  std::erase_if(result.text, [](char16_t c) { return c == u'\r' || c == u'\n'; });
  return result;
}

std::optional<std::string> read_bytes(std::u16string_view path, std::size_t limit) {
  FileBytes file = read_file(path, limit);
  if (!file.failure.empty()) return std::nullopt;
  return std::move(file.bytes);
}

std::string read_all_bytes(std::u16string_view path, std::size_t limit) {
  FileBytes file = read_file(path, limit);
  if (!file.failure.empty())
    throw RuntimeError(errors::path_access,
                       u"Can't read " + std::u16string(path) + u": " + from_utf8(file.failure));
  return std::move(file.bytes);
}

void save_atomically(std::u16string_view path, std::string_view bytes) {
  const std::string name = file_system_path(path);
  if (!names_a_file(name)) fail_to_save(name, ENOENT);
  const std::string target = link_target(name);
  struct stat old;
  const bool exists = stat(target.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) fail_to_save(name, S_ISDIR(old.st_mode) ? EISDIR : EINVAL);
  // A rename needs rights on the folder alone; a file that the user protected stays protected.
  if (exists && eaccess(target.c_str(), W_OK) != 0) fail_to_save(name, errno);
  // A new file under the name would be another one to the other names, or the user's in place of its owner's.
  const bool is_ours = !exists || geteuid() == 0 || old.st_uid == geteuid();
  if (exists && (old.st_nlink > 1 || !is_ours || !can_write_beside(target)))
    overwrite_file(target, bytes);
  else
    replace_file(target, bytes, OldFile::Keep);
}

}  // namespace tvx
