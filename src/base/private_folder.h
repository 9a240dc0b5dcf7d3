#pragma once

#include <string>

/// Folders that the user alone can use. Paths as the file system takes them.
namespace tvx {

/// The value of an environment variable that must name a folder from the root on (XDG Base Directory
/// Specification: relative paths are to be ignored); empty if it doesn't.
std::string absolute_path_in(const char* variable);

/// Makes the folder, and those above it; false if it can't be made, is another user's, or can't be written
/// to.
bool make_private_folder(const std::string& path);

/// Where a program keeps what must outlive it: `$XDG_STATE_HOME/tvxHTML`, usually `~/.local/state/tvxHTML`,
/// and a private folder among the temporary files where that can't be used. Empty if there is none.
std::string state_folder();

/// The user's own folder among the temporary files; empty if there can be none.
std::string private_temporary_folder();

}  // namespace tvx
