#include "htmled/unsaved/unsaved_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/file_replacement.h"
#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"

namespace tvx::htmled {
namespace {

namespace fs = std::filesystem;

constexpr const char* lock_name = "/lock";
constexpr std::string_view page_ending = ".page";

/// Of all programs of the user; empty: there can be none.
std::string common_folder() {
  const std::string state = state_folder();
  if (state.empty() || !make_private_folder(state + "/unsaved")) return {};
  return state + "/unsaved";
}

/// The lock of a folder; -1: another program has it.
int lock_of(const std::string& folder) {
  const int lock = ::open((folder + lock_name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) == 0) return lock;
  if (lock >= 0) ::close(lock);
  return -1;
}

}  // namespace

UnsavedFolder::UnsavedFolder(UnsavedFolder&& other) noexcept
    : path_(std::exchange(other.path_, {})), lock_(std::exchange(other.lock_, -1)) {}

// With the lock removed first another program might take what is left for abandoned, and find nothing in it.
UnsavedFolder::~UnsavedFolder() {
  if (path_.empty()) return;
  std::error_code ignored;
  if (pages().empty()) fs::remove_all(path_, ignored);
  if (lock_ >= 0) ::close(lock_);
}

std::vector<UnsavedFolder> UnsavedFolder::abandoned() {
  std::vector<UnsavedFolder> found;
  const std::string common = common_folder();
  if (common.empty()) return found;
  std::error_code failure;
  for (const fs::directory_entry& entry : fs::directory_iterator(common, failure)) {
    if (!entry.is_directory(failure) || entry.is_symlink(failure)) continue;
    const int lock = lock_of(entry.path().string());
    if (lock >= 0) found.push_back(UnsavedFolder(entry.path().string(), lock));
  }
  return found;
}

// Between the folder and its lock another program might find it abandoned, and empty: it is then made anew.
void UnsavedFolder::make() {
  for (int attempts = 0; lock_ < 0 && attempts < 8; ++attempts) {
    std::string path = common_folder() + "/" + std::to_string(::getpid()) + "-XXXXXX";
    if (!::mkdtemp(path.data())) break;
    lock_ = lock_of(path);
    if (lock_ >= 0) path_ = path;
  }
  if (lock_ < 0)
    throw RuntimeError(errors::path_access, from_utf8(std::string("Can't save : ") + std::strerror(errno)));
}

void UnsavedFolder::keep(const std::string& name, std::string_view bytes) {
  if (lock_ < 0) make();
  replace_file(path_ + "/" + name + std::string(page_ending), bytes, OldFile::Forget);
}

void UnsavedFolder::forget(const std::string& name) const {
  std::error_code ignored;
  if (!path_.empty()) fs::remove(path_ + "/" + name + std::string(page_ending), ignored);
}

std::vector<std::pair<std::string, files::KeptPage>> UnsavedFolder::pages() const {
  std::vector<std::pair<std::string, files::KeptPage>> found;
  std::error_code failure;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_, failure)) {
    if (entry.path().extension() != page_ending) continue;
    const auto bytes = read_bytes(from_utf8(entry.path().string()));
    if (!bytes) continue;
    if (auto page = files::read_kept_page(*bytes)) found.emplace_back(entry.path().stem().string(), *page);
  }
  return found;
}

}  // namespace tvx::htmled
