#include "tvx/base/file_replacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#include "tvx/base/error.h"
#include "tvx/base/open_file.h"
#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

constexpr std::string_view unfinished = ".tvx-";
constexpr std::string_view any_letters = "XXXXXX";

[[noreturn]] void fail(const std::string& path, int reason, const std::string& more = {}) {
  throw RuntimeError(errors::path_access,
                     from_utf8("Can't save " + path + ": " + std::strerror(reason) + more));
}

/// The folder part of a path, without its last "/"; "/" for a file in the root, "." where there is none.
std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == path.npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// The mode of a file that the user makes without thinking of modes.
mode_t usual_mode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

/// Access lists, labels, and what the user's programs note on a file. What may not be kept isn't.
void copy_attributes(const std::string& from, int to) {
  const ssize_t size = listxattr(from.c_str(), nullptr, 0);
  if (size <= 0) return;
  std::string names(static_cast<std::size_t>(size), '\0');
  const ssize_t listed = listxattr(from.c_str(), names.data(), names.size());
  if (listed <= 0) return;
  names.resize(static_cast<std::size_t>(listed));
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const char* name = names.c_str() + at;
    std::string value(1 << 16, '\0');  // the longest that Linux keeps
    const ssize_t length = getxattr(from.c_str(), name, value.data(), value.size());
    if (length >= 0) fsetxattr(to, name, value.data(), static_cast<std::size_t>(length), 0);
  }
}

/// A file beside the target that either takes its position or goes away again. It is locked for as long as
/// its program lives, by which one that nobody will finish is known.
class Replacement {
 public:
  explicit Replacement(const std::string& target) : target_(target) {
    do {
      name_ = folder_of(target) + "/" + std::string(unfinished) + std::string(any_letters);
      file_ = std::make_unique<OpenFile>(mkostemp(name_.data(), O_CLOEXEC));
      if (!file_->is_open()) fail(target_, errno);
      flock(file_->descriptor(), LOCK_EX);
    } while (is_swept());
  }
  ~Replacement() {
    if (!placed_) unlink(name_.c_str());
  }

  void fill(std::string_view bytes, const struct stat* old) {
    if (!file_->write(bytes)) fail(target_, errno);
    // Another owner can be kept by the superuser alone; changed first, for it clears the set-id bits.
    if (old && fchown(file_->descriptor(), old->st_uid, old->st_gid) != 0) errno = 0;
    if (fchmod(file_->descriptor(), old ? old->st_mode & 07777 : usual_mode()) != 0) fail(target_, errno);
    if (old) copy_attributes(target_, file_->descriptor());
    if (fsync(file_->descriptor()) != 0) fail(target_, errno);
  }

  void take_place() {
    if (rename(name_.c_str(), target_.c_str()) != 0) fail(target_, errno);
    placed_ = true;
    // The new name is on the disk once its folder is; a file system that can't promise it has done its best.
    const OpenFile folder(open(folder_of(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.is_open()) fsync(folder.descriptor());
  }

 private:
  /// By another program, in the moment before the lock.
  bool is_swept() const {
    struct stat status;
    return fstat(file_->descriptor(), &status) == 0 && status.st_nlink == 0;
  }

  std::string target_;
  std::string name_;
  std::unique_ptr<OpenFile> file_;
  bool placed_ = false;
};

/// The new text in the state folder while the file itself is neither old nor new.
class SafeCopy {
 public:
  SafeCopy(const std::string& target, std::string_view bytes) {
    const std::string folder = state_folder();
    if (folder.empty()) fail(target, EACCES, " (no folder for a copy)");
    const std::size_t slash = target.rfind('/');
    name_ = folder + "/saving-XXXXXX-" + target.substr(slash == target.npos ? 0 : slash + 1);
    const int letters_behind = static_cast<int>(name_.size() - folder.size() - std::strlen("/saving-XXXXXX"));
    OpenFile file(mkostemps(name_.data(), letters_behind, O_CLOEXEC));
    if (!file.is_open()) fail(target, errno, " (" + folder + ")");
    if (!file.write(bytes) || fsync(file.descriptor()) != 0 || !file.close()) {
      const int reason = errno;
      remove();
      fail(target, reason, " (" + folder + ")");
    }
  }
  void remove() { unlink(name_.c_str()); }
  const std::string& name() const { return name_; }

 private:
  std::string name_;
};

/// Room for a longer text before the first byte of the old one is written over.
int reserve(int file, off_t old_size, std::size_t new_size) {
  if (static_cast<off_t>(new_size) <= old_size) return 0;
  const int reason = posix_fallocate(file, old_size, static_cast<off_t>(new_size) - old_size);
  if (reason == 0 || reason == EOPNOTSUPP || reason == EINVAL) return 0;
  return ftruncate(file, old_size) == 0 ? reason : errno;
}

bool write_over(OpenFile& file, std::string_view bytes) {
  return lseek(file.descriptor(), 0, SEEK_SET) == 0 && file.write(bytes) &&
         ftruncate(file.descriptor(), static_cast<off_t>(bytes.size())) == 0 && fsync(file.descriptor()) == 0;
}

bool is_unfinished_save(std::string_view name) {
  return name.size() == unfinished.size() + any_letters.size() && name.starts_with(unfinished);
}

/// Nobody holds the lock of a file whose program is gone.
void remove_if_dead(const std::string& name) {
  const OpenFile file(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
  struct stat status;
  if (!file.is_open() || fstat(file.descriptor(), &status) != 0) return;
  if (!S_ISREG(status.st_mode) || status.st_uid != geteuid()) return;
  if (flock(file.descriptor(), LOCK_EX | LOCK_NB) == 0) unlink(name.c_str());
}

}  // namespace

std::string link_target(const std::string& path) {
  constexpr int longest_chain = 40;
  std::string target = path;
  for (int links = 0; links < longest_chain; ++links) {
    std::string next(4096, '\0');
    const ssize_t length = readlink(target.c_str(), next.data(), next.size());
    if (length < 0) return target;
    next.resize(static_cast<std::size_t>(length));
    target = next.starts_with('/') ? next : folder_of(target) + "/" + next;
  }
  fail(path, ELOOP);
}

void replace_file(const std::string& path, std::string_view bytes, OldFile old) {
  sweep_unfinished_saves(path);
  struct stat status;
  const bool keep = old == OldFile::Keep && stat(path.c_str(), &status) == 0;
  Replacement replacement(path);
  replacement.fill(bytes, keep ? &status : nullptr);
  replacement.take_place();
}

void overwrite_file(const std::string& path, std::string_view bytes) {
  OpenFile file(open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status;
  if (!file.is_open() || fstat(file.descriptor(), &status) != 0) fail(path, errno);
  std::string old;
  OpenFile reader(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  const bool known = reader.is_open() && reader.read(old, std::numeric_limits<off_t>::max());
  SafeCopy copy(path, bytes);
  int reason = reserve(file.descriptor(), status.st_size, bytes.size());
  if (reason == 0 && write_over(file, bytes)) return copy.remove();
  const bool untouched = reason != 0;
  if (reason == 0) reason = errno;
  if (!untouched && !(known && write_over(file, old))) fail(path, reason, "; the text is in " + copy.name());
  copy.remove();
  fail(path, reason);
}

bool can_write_beside(const std::string& path) { return eaccess(folder_of(path).c_str(), W_OK | X_OK) == 0; }

void sweep_unfinished_saves(const std::string& path) {
  const std::string folder = folder_of(path);
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) return;
  while (const dirent* entry = readdir(entries.get()))
    if (is_unfinished_save(entry->d_name)) remove_if_dead(folder + "/" + entry->d_name);
}

}  // namespace tvx
