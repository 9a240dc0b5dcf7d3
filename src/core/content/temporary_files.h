#pragma once

#include <string>
#include <string_view>

#include "tvx/platform/window.h"

/// The control's files among the user's temporary ones: the document that it starts with, its style sheet,
/// and the picture that a dialog shows.
namespace tvx::core {

inline constexpr std::u16string_view document_file = u"msHTMLEdit.html";
inline constexpr std::u16string_view style_sheet_file = u"tvxStyle.css";
inline constexpr std::u16string_view picture_file = u"tvxPicture";

std::u16string with_final_slash(std::u16string folder);

/// The window handle before the name keeps two controls apart, and lets navigations to these files be told
/// from others. Empty where no folder can be used: nothing is ever written to the current one.
std::u16string temporary_file(platform::WindowHandle hwnd, std::u16string_view name);
void remove_temporary_files(platform::WindowHandle hwnd);
/// Removes what controls left whose processes are gone: killed, or fallen with their machine. Files of the
/// last day stay, for a process may live where this one can't see it.
void sweep_temporary_files(platform::WindowHandle hwnd);

}  // namespace tvx::core
