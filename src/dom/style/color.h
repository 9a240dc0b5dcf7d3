#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tvx::dom::style {

/// A colour of CSS: sRGB and alpha from 0 (transparent) to 1.
struct Color {
  std::uint8_t red = 0, green = 0, blue = 0;
  double alpha = 1;

  friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color transparent{0, 0, 0, 0};

/// CSS Color: names, "#rgb", "#rgba", "#rrggbb", "#rrggbbaa", rgb(), rgba(), hsl(), hsla(), "transparent".
/// None for anything else, "currentcolor" included: that needs an element.
std::optional<Color> parse_color(std::u16string_view text);

/// What color attributes mean (HTML standard, "rules for parsing a legacy color value"): "red", "#f00",
/// "ff0000", and a colour made of nearly any other text. None for "" and "transparent".
std::optional<Color> parse_legacy_color(std::u16string_view text);

/// "rgb(255, 0, 0)", and with an alpha below 1 "rgba(255, 0, 0, 0.5)".
std::u16string to_text(const Color& color);
/// "#ff0000". The alpha is lost.
std::u16string to_hex(const Color& color);

}  // namespace tvx::dom::style
