#include "tvx/base/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

class File {
 public:
  explicit File(int descriptor) : descriptor_(descriptor) {}
  ~File() { close(); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool is_open() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  bool write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  /// Appends all that is left to `bytes`; false if reading breaks off.
  bool read(std::string& bytes) {
    constexpr std::size_t step = 1 << 16;
    for (;;) {
      const std::size_t size = bytes.size();
      bytes.resize(size + std::max(step, size / 2));
      const ssize_t got = ::read(descriptor_, bytes.data() + size, bytes.size() - size);
      bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
      if (got == 0) return true;
      if (got < 0 && errno != EINTR) return false;
    }
  }

  bool close() {
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
  }

 private:
  int descriptor_;
};

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

/// Devices and folders aren't files to be deleted.
void delete_file(const std::string& path) {
  struct stat status;
  if (lstat(path.c_str(), &status) != 0) return;
  if (S_ISREG(status.st_mode) || S_ISLNK(status.st_mode)) unlink(path.c_str());
}

/// A NUL would cut the name short and so name another file.
bool names_a_file(const std::string& path) { return !path.empty() && path.find('\0') == path.npos; }

bool write_bytes(std::u16string_view path, std::string_view bytes) {
  const std::string name = file_system_path(path);
  if (!names_a_file(name)) return false;
  delete_file(name);
  File file(open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  return file.is_open() && file.write(bytes) && file.close();
}

struct FileBytes {
  std::string bytes;
  bool complete = false;
};

FileBytes read_file(std::u16string_view path) {
  FileBytes result;
  const std::string name = file_system_path(path);
  if (!names_a_file(name)) return result;
  File file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
  result.complete = file.is_open() && file.read(result.bytes);
  return result;
}

[[noreturn]] void fail(const std::string& path, int reason) {
  throw RuntimeError(errors::path_access, from_utf8("Can't save " + path + ": " + std::strerror(reason)));
}

/// Where a chain of links ends, so that the link itself survives a rename over its name.
std::string link_target(const std::string& path) {
  char* resolved = realpath(path.c_str(), nullptr);
  if (!resolved) return path;
  std::string target = resolved;
  std::free(resolved);
  return target;
}

/// The mode of a file that the user makes without thinking of modes.
mode_t usual_mode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

/// A file beside the target that either takes its position or goes away again.
class Replacement {
 public:
  explicit Replacement(const std::string& target)
      : target_(target), name_(folder_of(target) + "/.tvx-XXXXXX"), file_(mkostemp(name_.data(), O_CLOEXEC)) {
    if (!file_.is_open()) fail(target_, errno);
  }
  ~Replacement() {
    if (!placed_) unlink(name_.c_str());
  }

  void fill(std::string_view bytes, const struct stat* old) {
    if (!file_.write(bytes)) fail(target_, errno);
    // Another owner can be kept by the superuser alone; changed first, for it clears the set-id bits.
    if (old && fchown(file_.descriptor(), old->st_uid, old->st_gid) != 0) errno = 0;
    if (fchmod(file_.descriptor(), old ? old->st_mode & 07777 : usual_mode()) != 0) fail(target_, errno);
    if (fsync(file_.descriptor()) != 0 || !file_.close()) fail(target_, errno);
  }

  void take_place() {
    if (rename(name_.c_str(), target_.c_str()) != 0) fail(target_, errno);
    placed_ = true;
    // The new name is on the disk once its folder is; a file system that can't promise it has done its best.
    const File folder(open(folder_of(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.is_open()) fsync(folder.descriptor());
  }

 private:
  std::string target_;
  std::string name_;
  File file_;
  bool placed_ = false;
};

}  // namespace

std::string file_system_path(std::u16string_view path) {
  std::string out = to_utf8(path);
  std::replace(out.begin(), out.end(), '\\', '/');
  if (out.empty() || out.front() == '/' || out.find('/') == out.npos) return out;
  if (!is_folder(folder_of(out)) && is_folder(folder_of("/" + out))) out.insert(out.begin(), '/');
  return out;
}

bool WriteTextFile(std::u16string_view path, std::u16string_view text) {
  bool broken = true;
  attempt([&] { broken = fault_point(u"WriteTextFile").has_value(); });
  if (broken) {
    // What was there is gone by the time a disk fails.
    unlink(file_system_path(path).c_str());
    return false;
  }
  return write_bytes(path, CodePage::system().encode(text));
}

bool write_printed_line(std::u16string_view path, std::u16string_view text) {
  return write_bytes(path, CodePage::system().encode(text) + CodePage::system().encode(u"\r\n"));
}

FileText ReadTextFile(std::u16string_view path) {
  const FileBytes file = read_file(path);
  FileText result{CodePage::system().decode(file.bytes), file.complete};
  std::erase_if(result.text, [](char16_t c) { return c == u'\r' || c == u'\n'; });
  return result;
}

std::optional<std::string> read_bytes(std::u16string_view path) {
  FileBytes file = read_file(path);
  if (!file.complete) return std::nullopt;
  return std::move(file.bytes);
}

void save_atomically(std::u16string_view path, std::string_view bytes) {
  const std::string name = file_system_path(path);
  if (!names_a_file(name)) fail(name, ENOENT);
  const std::string target = link_target(name);
  struct stat old;
  const bool exists = stat(target.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) fail(name, S_ISDIR(old.st_mode) ? EISDIR : EINVAL);
  // A rename needs rights on the folder alone; a file that the user protected stays protected.
  if (exists && eaccess(target.c_str(), W_OK) != 0) fail(name, errno);
  Replacement replacement(target);
  replacement.fill(bytes, exists ? &old : nullptr);
  replacement.take_place();
}

}  // namespace tvx
