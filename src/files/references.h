#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tvx::files {

/// One character in 16-bit units.
std::u16string to_utf16(char32_t character);

/// Markup, as the serialiser writes it, with every character that `holds` refuses written in ASCII: as a
/// numeric reference, and where those mean nothing as CSS ("\2713 ") or script ("\u2713") writes it.
/// Names of elements and attributes can't be written otherwise; such a character is lost there.
std::u16string with_references(std::u16string_view markup, const std::function<bool(char32_t)>& holds);

}  // namespace tvx::files
