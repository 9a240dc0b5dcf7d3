#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// A path as the file system takes it, in UTF-8: the one place where a text that names a file meets the
/// system. "\" becomes "/", and the leading "/" that is lost when "file:///" is cut off an address comes
/// back: if the folder named doesn't exist seen from here but does from the root. A bare file name stays.
std::string file_system_path(std::u16string_view path);

/// Writes `text` in the system code page in place of what was there; no length, no byte order mark and no
/// line end is added. Returns whether the whole text arrived; most callers don't ask.
bool WriteTextFile(std::u16string_view path, std::u16string_view text);

/// As `WriteTextFile`, with the CR LF that ends a printed line.
bool write_printed_line(std::u16string_view path, std::u16string_view text);

struct FileText {
  std::u16string text;
  /// False if the file couldn't be opened or reading broke off; `text` is what had been read by then.
  bool complete = false;
};

/// The lines of a file in the system code page, joined without their line ends (CR LF, CR or LF).
FileText ReadTextFile(std::u16string_view path);

/// The bytes of a file; nothing if it can't be read to its end.
std::optional<std::string> read_bytes(std::u16string_view path);

/// Puts `bytes` in place of the file in one step: whatever happens on the way, there is either the old file
/// or the new one, whole and on the disk. A link stays a link, the mode stays; a new file gets the user's
/// usual mode. Fails with RuntimeError `path_access` and a text for the user; the old file is then untouched.
void save_atomically(std::u16string_view path, std::string_view bytes);

}  // namespace tvx
