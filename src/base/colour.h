#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tvx {

/// A colour as the platform stores it: red in the low byte, then green, then blue. -1: failure or cancel.
using Colour = std::int32_t;

inline constexpr Colour no_colour = -1;
inline constexpr Colour white = 0xFFFFFF;

/// Red, green and blue as decimal texts with the separator between them. The split is by arithmetic, with
/// nothing cut off: a value outside the colours gives parts outside 0 to 255.
std::u16string ColourToRGB(Colour value, std::u16string_view separator);

/// The first three parts of `text`, decimal numbers, as "RRGGBB": hexadecimal in upper case, at least two
/// digits a part, no "#". A negative part shows its 32 bits. Fewer than three parts, or a part that is no
/// number: RuntimeError `type_mismatch`.
std::u16string RGBToHex(std::u16string_view text, std::u16string_view separator);

}  // namespace tvx
