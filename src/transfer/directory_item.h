#pragma once

#include <cstdint>
#include <string>

namespace tvx::transfer {

/// An entry of a remote folder. Dates are days since 1899-12-30 in local time, the time of day as fraction.
struct clsDirectoryItem {
  bool readonly = false, Hidden = false, System = false, Directory = false, Archive = false, Normal = false,
       Temporary = false, Compressed = false, Offline = false;
  double CreationTime = 0, LastAccessTime = 0, LastWriteTime = 0;
  std::int32_t FileSize = 0;  // the low 32 bits
  std::u16string Filename;
};

}  // namespace tvx::transfer
