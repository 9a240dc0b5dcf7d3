#include "tvx/platform/pictures/picture_store.h"

#include <sys/stat.h>

#include <algorithm>

#include "tvx/base/fault.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"

namespace tvx::platform {

namespace {

/// The mode of what stands there; 0 where nothing does.
mode_t mode_of(std::u16string_view path) {
  const std::string name = file_system_path(path);
  struct stat status;
  const bool names_one = !name.empty() && name.find('\0') == name.npos;
  return names_one && stat(name.c_str(), &status) == 0 ? status.st_mode : 0;
}

}  // namespace

bool is_local_file(std::u16string_view path) {
  const mode_t mode = mode_of(path);
  return mode != 0 && !S_ISDIR(mode);
}

bool is_local_folder(std::u16string_view path) { return S_ISDIR(mode_of(path)); }

std::u16string store_picture(std::u16string_view path, std::u16string_view folder) {
  std::u16string stored(folder);
  if (!stored.ends_with(u'/') && !stored.ends_with(u'\\')) stored += u'/';
  stored += FileNameFromPath(path);
  if (is_local_file(stored)) return stored;
  fault_point(u"FileCopy");
  save_atomically(stored, read_all_bytes(path));
  return stored;
}

std::u16string local_picture_address(std::u16string_view path) {
  std::u16string address(path);
  std::replace(address.begin(), address.end(), u'\\', u'/');
  const bool starts_at_root = address.starts_with(u'/') && !address.starts_with(u"//");
  return (starts_at_root ? u"file://" : u"file:///") + address;
}

}  // namespace tvx::platform
