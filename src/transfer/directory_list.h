#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tvx/transfer/directory_item.h"

namespace tvx::transfer {

/// What the system keeps of an entry beside its name.
struct DirectoryFacts {
  std::uint32_t attributes = 0;
  double creation = 0, last_access = 0, last_write = 0;  // days since 1899-12-30
  std::uint64_t size = 0;
};
inline constexpr std::uint32_t attribute_directory = 0x10, attribute_normal = 0x80;

/// The entries of one listing, in the server's order, known by position and by name.
class clsDirectoryList {
 public:
  /// Positions count from 1. What isn't there is an item that stands for the folder above.
  clsDirectoryItem item(std::int32_t position) const;
  /// Names compare without regard to case.
  clsDirectoryItem item(std::u16string_view name) const;
  std::int32_t count() const { return static_cast<std::int32_t>(items_.size()); }

  // --- inside ---
  /// Of two names that differ in case only the first stays in the list. Returns the new item all the same.
  clsDirectoryItem add(const DirectoryFacts& facts, std::u16string_view name);
  /// Takes away the first, the third, the fifth and so on of the entries that were there: the positions shift
  /// while it goes.
  void clear();
  const std::vector<clsDirectoryItem>& items() const { return items_; }

 private:
  std::vector<clsDirectoryItem> items_;
  std::unordered_map<std::u16string, std::size_t> places_;  // by the name in lower case
};

/// A time of the system, in units of 100 nanoseconds since 1601 in UTC, as a date in local time.
double FileTimeToDate(std::int64_t file_time);

}  // namespace tvx::transfer
