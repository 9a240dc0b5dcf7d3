#pragma once

#include <string>
#include <string_view>

namespace tvx {

// Percent-encode sets (URL standard, section 1.3): the ASCII characters beyond the control characters that
// are written as %XX. Control characters and all above U+007E are always escaped.

inline constexpr std::u16string_view control_escapes = u"";
inline constexpr std::u16string_view fragment_escapes = u" \"<>`";
inline constexpr std::u16string_view path_escapes = u" \"#<>?^`{}";
inline constexpr std::u16string_view user_escapes = u" \"#<>?^`{}/;=@[\\]|";
/// A name of the file system, in which "%" and "\" are letters like others.
inline constexpr std::u16string_view file_name_escapes = u" \"#<>?^`{}%\\";

constexpr std::u16string_view query_escapes(bool special) { return special ? u" \"#<>'" : u" \"#<>"; }

/// The %XX of the UTF-8 bytes of each character that is in the set.
std::u16string percent_encoded(std::u16string_view text, std::u16string_view escapes);

/// Every %XX undone. The bytes of one run of them are UTF-8; if they aren't, they are Windows-1252, which
/// addresses of older pages are in.
std::u16string percent_decoded(std::u16string_view text);

}  // namespace tvx
