#pragma once

#include <string>
#include <vector>

#include "tvx/files/kept_page.h"

/// Where edited pages are kept until they are saved: in the user's state folder, one folder a running
/// program.
namespace tvx::htmled {

/// A folder of one program, which is known by a lock to belong to a living one: however the program ends, the
/// system takes the lock away.
class UnsavedFolder {
 public:
  /// This program's own, made when something is kept in it. With nothing in it in the end it is removed.
  UnsavedFolder() = default;
  ~UnsavedFolder();
  UnsavedFolder(UnsavedFolder&& other) noexcept;
  UnsavedFolder(const UnsavedFolder&) = delete;
  UnsavedFolder& operator=(const UnsavedFolder&) = delete;

  /// Those of programs that are gone, held by this one from now on.
  static std::vector<UnsavedFolder> abandoned();

  /// Puts the bytes in place of the file of that name, whole or not at all. Throws RuntimeError path_access.
  void keep(const std::string& name, std::string_view bytes);
  void forget(const std::string& name) const;
  /// The files that hold a whole page, with their names; others are of no use to anybody and go.
  std::vector<std::pair<std::string, files::KeptPage>> pages() const;

 private:
  explicit UnsavedFolder(std::string path, int lock) : path_(std::move(path)), lock_(lock) {}
  void make();

  std::string path_;
  int lock_ = -1;
};

}  // namespace tvx::htmled
