#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The seven sizes of the FONT element. Editing commands standard, section "The fontSize command".
namespace tvx::editing {

/// The keyword for a size from 1 to 7: "x-small" to "xxx-large".
std::u16string_view font_size_keyword(int size);
/// The size of a keyword; none if it is no such keyword.
std::optional<int> font_size_of_keyword(std::u16string_view keyword);
/// What the fontSize command takes: a number, or a signed one, which is relative to 3. None if it is no
/// number.
std::optional<int> parse_font_size_argument(std::u16string_view text);
/// Pixels of a keyword or a length in an absolute unit; none for anything else.
std::optional<double> font_size_in_pixels(std::u16string_view value);
/// "Legacy font size for" a CSS value: "1" to "7".
std::u16string legacy_font_size_of(std::u16string_view value);

}  // namespace tvx::editing
