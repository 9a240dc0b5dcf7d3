#pragma once

#include <string>
#include <string_view>

namespace tvx::core {

/// The documents that a control begins with, byte by byte: 8-bit characters, CR LF, no line end at the end.
inline constexpr int template_plain = 101;
/// The same with a body that shows no background image.
inline constexpr int template_without_background = 102;

/// Throws RuntimeError(5) for another number.
std::string_view template_bytes(int resource);

/// A path as it may stand after "file:///": with "/" for "\", and with those characters escaped that would
/// begin another part of the address.
std::u16string path_in_address(std::u16string_view path);

/// What goes into a template.
struct TemplateValues {
  std::u16string_view base_url;
  /// The address of the style sheet, or the path, as in an address, of the file that holds its text.
  bool style_sheet_is_address = false;
  std::u16string_view style_sheet;
};
std::u16string expand_template(int resource, const TemplateValues& values);

}  // namespace tvx::core
