#include "tvx/transfer/directory_list.h"

#include <ctime>

#include "tvx/base/text.h"

namespace tvx::transfer {
namespace {

clsDirectoryItem folder_above() {
  clsDirectoryItem item;
  item.Directory = true;
  item.System = true;
  item.Filename = u"..";
  return item;
}

clsDirectoryItem make_item(const DirectoryFacts& facts, std::u16string_view name) {
  const auto has = [&](std::uint32_t bit) { return (facts.attributes & bit) != 0; };
  clsDirectoryItem item;
  item.Archive = has(0x20);
  item.Compressed = has(0x800);
  item.Directory = has(attribute_directory);
  item.Hidden = has(0x2);
  item.Normal = has(attribute_normal);
  item.Offline = has(0x1000);
  item.readonly = has(0x1);
  item.System = has(0x4);
  item.Temporary = has(0x100);
  item.CreationTime = facts.creation;
  item.LastAccessTime = facts.last_access;
  item.LastWriteTime = facts.last_write;
  item.FileSize = static_cast<std::int32_t>(static_cast<std::uint32_t>(facts.size));
  item.Filename = name;
  return item;
}

}  // namespace

clsDirectoryItem clsDirectoryList::item(std::int32_t position) const {
  return position >= 1 && position <= count() ? items_[static_cast<std::size_t>(position) - 1]
                                              : folder_above();
}

clsDirectoryItem clsDirectoryList::item(std::u16string_view name) const {
  const auto found = places_.find(upper_cased(name));
  return found == places_.end() ? folder_above() : items_[found->second];
}

clsDirectoryItem clsDirectoryList::add(const DirectoryFacts& facts, std::u16string_view name) {
  clsDirectoryItem item = make_item(facts, name);
  if (places_.emplace(upper_cased(name), items_.size()).second) items_.push_back(item);
  return item;
}

void clsDirectoryList::clear() {
  const std::size_t entries = items_.size();
  for (std::size_t i = 0; i + 1 < entries && i < items_.size(); ++i)
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(i));
  places_.clear();
  for (std::size_t i = 0; i < items_.size(); ++i) places_.emplace(upper_cased(items_[i].Filename), i);
}

double FileTimeToDate(std::int64_t file_time) {
  constexpr std::int64_t units_a_second = 10'000'000, seconds_until_1970 = 11'644'473'600;
  constexpr double units_a_millisecond = 10'000, milliseconds_a_day = 86'400'000, days_until_1899 = 109'205;
  if (file_time <= 0) return file_time == 0 ? -days_until_1899 : 0;
  const std::time_t time = file_time / units_a_second - seconds_until_1970;
  std::tm local{};
  if (!localtime_r(&time, &local)) return 0;
  const std::int64_t local_time = file_time + std::int64_t{local.tm_gmtoff} * units_a_second;
  if (local_time < 0) return 0;
  return static_cast<double>(local_time) / units_a_millisecond / milliseconds_a_day - days_until_1899;
}

}  // namespace tvx::transfer
