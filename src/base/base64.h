#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// RFC 4648, section 4: with padding, in one line.
std::string to_base64(std::string_view bytes);
/// White space is skipped, padding may be missing; nothing for any other character.
std::optional<std::string> from_base64(std::string_view text);

}  // namespace tvx
