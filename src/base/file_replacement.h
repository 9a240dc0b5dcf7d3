#pragma once

#include <string>
#include <string_view>

/// Files that are written anew as a whole. Paths as the file system takes them. What fails throws
/// RuntimeError `path_access` with a text for the user, and the old file is then what it was.
namespace tvx {

/// Where a chain of links ends, whether something is there or not. Throws where it has no end.
std::string link_target(const std::string& path);

/// What becomes of the old file's mode, owner and extended attributes.
enum class OldFile : unsigned char { Keep, Forget };
/// The new file beside the old one, whole and on the disk, and then in its position: whatever happens on the
/// way, one of both is there.
void replace_file(const std::string& path, std::string_view bytes, OldFile old);

/// The bytes in the file itself, for one that has other names, another owner, or a folder that may not be
/// written to. Until they are on the disk a copy of them stands in the state folder.
void overwrite_file(const std::string& path, std::string_view bytes);

/// Whether files can be made in the folder of `path`.
bool can_write_beside(const std::string& path);

/// Takes away what a program that was killed while it saved has left beside `path`.
void sweep_unfinished_saves(const std::string& path);

}  // namespace tvx
