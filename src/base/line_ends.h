#pragma once

#include <string>
#include <string_view>

/// Texts have LF inside; hosts and their text boxes have CR LF. CR, LF and CR LF alike end a line.
namespace tvx {

std::u16string with_lf(std::u16string_view text);
std::u16string with_crlf(std::u16string_view text);

}  // namespace tvx
