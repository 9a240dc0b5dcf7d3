#pragma once

#include <optional>
#include <string>

#include "tvx/platform/window.h"

namespace tvx::platform {

/// Where files live for a while: `$XDG_CACHE_HOME/tvxHTML/`, usually `~/.cache/tvxHTML/`.
inline constexpr int CSIDL_INTERNET_CACHE = 32;

/// The folder with that number, with a "/" at its end; empty if there is none. It is made when first asked
/// for and is the user's alone: who could write there could put a page into the editor. Where the home folder
/// can't be used, a private folder among the temporary files is used instead. At most 259 characters.
/// Of the numbers only `CSIDL_INTERNET_CACHE` is known.
std::u16string GetSpecialFolder(WindowHandle owner, int folderId);

/// Fixes the answer, as it stands, for programs and tests; nothing: back to the system's.
void set_special_folder(int folderId, std::optional<std::u16string> path);

}  // namespace tvx::platform
