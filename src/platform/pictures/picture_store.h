#pragma once

#include <string>
#include <string_view>

/// Pictures on this computer that documents show, and the folder in which a host keeps copies of them.
namespace tvx::platform {

/// Whether the path names a file; a folder is none.
bool is_local_file(std::u16string_view path);

bool is_local_folder(std::u16string_view path);

/// Copies the file into the folder and gives the copy's path: the folder with a bar at its end, and the
/// file's name. A file of that name that is there already stays, and counts as the copy. Throws RuntimeError
/// `path_access` if it can't be copied.
std::u16string store_picture(std::u16string_view path, std::u16string_view folder);

/// The address of a local picture as it is inserted: "file:///" and the path, with "/" for "\". A path that
/// starts at the root brings the third "/" itself.
std::u16string local_picture_address(std::u16string_view path);

}  // namespace tvx::platform
