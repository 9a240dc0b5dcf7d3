#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// A path as the file system takes it, in UTF-8: the one place where a text that names a file meets the
/// system. "\" becomes "/", and the leading "/" that is lost when "file:///" is cut off an address comes
/// back: if the folder named doesn't exist seen from here but does from the root. A bare file name stays.
std::string file_system_path(std::u16string_view path);

/// Most bytes that are read of a file: nobody edits more, and some files have no end.
inline constexpr std::size_t largest_document = std::size_t{256} << 20;
inline constexpr std::size_t largest_sheet = std::size_t{16} << 20;

/// Writes `text` in the system code page in place of what was there, of a link too; no length, no byte order
/// mark and no line end is added. The new file is whole before the old one goes. Returns whether the text
/// arrived; where it didn't, the old file is as it was. False for what isn't a file: a device, a pipe.
bool WriteTextFile(std::u16string_view path, std::u16string_view text);

/// As `WriteTextFile`, with the CR LF that ends a printed line, for files that can be made anew: of a write
/// that fails a part may stay.
bool write_printed_line(std::u16string_view path, std::u16string_view text);

struct FileText {
  std::u16string text;
  /// Why the file couldn't be read, or reading broke off; `text` is what had been read by then.
  std::string failure;
  bool complete() const { return failure.empty(); }
};

// Only regular files are read: a pipe would wait for its writer, a device give without end. A file of more
// than `limit` bytes isn't read at all.

/// The lines of a file in the system code page, joined without their line ends (CR LF, CR or LF).
FileText ReadTextFile(std::u16string_view path, std::size_t limit = largest_document);

/// The bytes of a file; nothing if it can't be read to its end.
std::optional<std::string> read_bytes(std::u16string_view path, std::size_t limit = largest_document);
/// The same for those who tell the user: fails with RuntimeError `path_access` and a text that says why.
std::string read_all_bytes(std::u16string_view path, std::size_t limit = largest_document);

/// Puts `bytes` in place of the file: whatever happens on the way, there is either the old file or the new
/// one, whole and on the disk. A link stays a link; mode, owner and extended attributes stay; a new file gets
/// the user's usual mode. A file with other names (hard links), of another owner, or in a folder that can't
/// be written to is written in place, with a copy in the user's state folder until it is on the disk. Fails
/// with RuntimeError `path_access` and a text for the user; the old file is then untouched.
void save_atomically(std::u16string_view path, std::string_view bytes);

}  // namespace tvx
