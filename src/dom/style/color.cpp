#include "tvx/dom/style/color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "tvx/base/strings.h"
#include "tvx/dom/style/css_tokens.h"

namespace tvx::dom::style {
namespace {

struct NamedColor {
  std::u16string_view name;
  std::uint32_t rgb;
};

// CSS Color Module Level 4, section 6.1 "Named Colors", by name.
constexpr NamedColor named_colors[] = {
#define TVX_COLOR(name, rgb) {name, rgb},
#include "tvx/dom/style/color_names.inc"
#undef TVX_COLOR
};

Color from_rgb(std::uint32_t rgb) {
  return {std::uint8_t(rgb >> 16), std::uint8_t(rgb >> 8), std::uint8_t(rgb), 1};
}

std::optional<Color> named(std::u16string_view text) {
  const std::u16string name = ascii_lower(text);
  const auto* found =
      std::lower_bound(std::begin(named_colors), std::end(named_colors), name,
                       [](const NamedColor& color, std::u16string_view key) { return color.name < key; });
  if (found == std::end(named_colors) || found->name != name) return std::nullopt;
  return from_rgb(found->rgb);
}

int hex_digit(char16_t c) {
  if (is_ascii_digit(c)) return c - u'0';
  c = ascii_lower(c);
  return c >= u'a' && c <= u'f' ? c - u'a' + 10 : -1;
}

std::optional<Color> from_hex(std::u16string_view digits) {
  std::array<int, 8> nibbles{};
  if (digits.size() != 3 && digits.size() != 4 && digits.size() != 6 && digits.size() != 8)
    return std::nullopt;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    nibbles[i] = hex_digit(digits[i]);
    if (nibbles[i] < 0) return std::nullopt;
  }
  const bool one_each = digits.size() < 6;
  const auto channel = [&](int i) {
    return std::uint8_t(one_each ? nibbles[i] * 17 : nibbles[2 * i] * 16 + nibbles[2 * i + 1]);
  };
  Color color{channel(0), channel(1), channel(2), 1};
  if (digits.size() == 4 || digits.size() == 8) color.alpha = std::round(channel(3) / 255.0 * 1000) / 1000;
  return color;
}

std::uint8_t to_byte(double value) { return std::uint8_t(std::lround(std::clamp(value, 0.0, 255.0))); }

/// CSS Color 4, section 7.1 "Converting HSL Colors to sRGB".
double hsl_channel(int n, double hue, double saturation, double lightness) {
  const double k = std::fmod(n + hue / 30, 12);
  const double a = saturation * std::min(lightness, 1 - lightness);
  return lightness - a * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}));
}

double hue_degrees(const Token& token) {
  double degrees = token.number;
  if (equals_ignoring_ascii_case(token.value, u"grad")) degrees *= 0.9;
  if (equals_ignoring_ascii_case(token.value, u"rad")) degrees *= 180 / 3.14159265358979323846;
  if (equals_ignoring_ascii_case(token.value, u"turn")) degrees *= 360;
  degrees = std::fmod(degrees, 360);
  return degrees < 0 ? degrees + 360 : degrees;
}

/// The numbers of rgb(...) and hsl(...), with commas throughout or blanks and a "/" before the alpha.
std::optional<std::vector<Token>> arguments(const std::vector<Token>& tokens) {
  std::vector<Token> values;
  bool commas = false, slash = false, separated = true;
  std::size_t at = 1;
  for (;; ++at) {
    const Token& token = tokens[at];
    if (token.is_gap()) continue;
    if (token.type == TokenType::CloseParen || token.type == TokenType::End) break;
    if (token.type == TokenType::Comma) {
      if (separated || values.empty() || slash || (values.size() > 1 && !commas)) return std::nullopt;
      commas = separated = true;
    } else if (token.is_delim(u'/')) {
      if (commas || values.size() != 3 || slash) return std::nullopt;
      slash = true;
    } else if (token.type == TokenType::Number || token.type == TokenType::Percentage ||
               token.type == TokenType::Dimension) {
      if (commas && !separated) return std::nullopt;
      values.push_back(token);
      separated = false;
    } else {
      return std::nullopt;
    }
  }
  if (tokens[at].type == TokenType::CloseParen) at = skip_gaps(tokens, at + 1);
  if (tokens[at].type != TokenType::End) return std::nullopt;
  const bool well_formed = commas ? !separated && values.size() <= 4 : values.size() == (slash ? 4u : 3u);
  if (values.size() < 3 || !well_formed) return std::nullopt;
  return values;
}

std::optional<Color> from_function(const std::vector<Token>& tokens) {
  const std::u16string name = ascii_lower(tokens[0].value);
  const bool rgb = name == u"rgb" || name == u"rgba";
  if (!rgb && name != u"hsl" && name != u"hsla") return std::nullopt;
  const auto values = arguments(tokens);
  if (!values) return std::nullopt;
  const auto& v = *values;
  Color color;
  if (rgb) {
    std::uint8_t* channels[] = {&color.red, &color.green, &color.blue};
    for (int i = 0; i < 3; ++i) {
      if (v[i].type == TokenType::Dimension || v[i].type != v[0].type) return std::nullopt;
      *channels[i] = to_byte(v[i].type == TokenType::Percentage ? v[i].number / 100 * 255 : v[i].number);
    }
  } else {
    if (v[0].type == TokenType::Percentage || v[1].type != TokenType::Percentage ||
        v[2].type != TokenType::Percentage) {
      return std::nullopt;
    }
    const double hue = hue_degrees(v[0]);
    const double saturation = std::clamp(v[1].number / 100, 0.0, 1.0);
    const double lightness = std::clamp(v[2].number / 100, 0.0, 1.0);
    color.red = to_byte(255 * hsl_channel(0, hue, saturation, lightness));
    color.green = to_byte(255 * hsl_channel(8, hue, saturation, lightness));
    color.blue = to_byte(255 * hsl_channel(4, hue, saturation, lightness));
  }
  if (v.size() == 4) {
    if (v[3].type == TokenType::Dimension) return std::nullopt;
    color.alpha = std::clamp(v[3].type == TokenType::Percentage ? v[3].number / 100 : v[3].number, 0.0, 1.0);
  }
  return color;
}

std::u16string decimal(double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.6g", value);
  return from_utf8(buffer);
}

}  // namespace

std::optional<Color> parse_color(std::u16string_view text) {
  text = trimmed(text);
  if (text.empty()) return std::nullopt;
  if (text[0] == u'#') return from_hex(text.substr(1));
  if (equals_ignoring_ascii_case(text, u"transparent")) return transparent;
  if (text.back() == u')') {
    const std::vector<Token> tokens = tokenize(text);
    return tokens[0].type == TokenType::Function ? from_function(tokens) : std::nullopt;
  }
  return named(text);
}

std::optional<Color> parse_legacy_color(std::u16string_view text) {
  if (text.empty()) return std::nullopt;
  text = trimmed(text);
  if (equals_ignoring_ascii_case(text, u"transparent")) return std::nullopt;
  if (const auto color = named(text)) return color;
  if (text.size() == 4 && text[0] == u'#') {
    if (const auto color = from_hex(text.substr(1))) return color;
  }
  std::u16string digits;
  for (std::size_t i = 0; i < text.size() && digits.size() < 128; ++i) {
    if (is_high_surrogate(text[i])) {
      digits += u"00";
      if (i + 1 < text.size() && is_low_surrogate(text[i + 1])) ++i;
    } else {
      digits += text[i];
    }
  }
  if (digits.size() > 128) digits.resize(128);
  if (!digits.empty() && digits[0] == u'#') digits.erase(0, 1);
  for (char16_t& c : digits) {
    if (hex_digit(c) < 0) c = u'0';
  }
  while (digits.empty() || digits.size() % 3) digits += u'0';
  std::size_t length = digits.size() / 3;
  std::array<std::u16string_view, 3> parts;
  for (std::size_t i = 0; i < 3; ++i) parts[i] = std::u16string_view(digits).substr(i * length, length);
  if (length > 8) {
    for (auto& part : parts) part.remove_prefix(length - 8);
    length = 8;
  }
  while (length > 2 && parts[0][0] == u'0' && parts[1][0] == u'0' && parts[2][0] == u'0') {
    for (auto& part : parts) part.remove_prefix(1);
    --length;
  }
  const auto channel = [](std::u16string_view part) {
    int value = 0;
    for (const char16_t c : part.substr(0, 2)) value = value * 16 + hex_digit(c);
    return std::uint8_t(value);
  };
  return Color{channel(parts[0]), channel(parts[1]), channel(parts[2]), 1};
}

std::u16string to_text(const Color& color) {
  std::u16string text = color.alpha < 1 ? u"rgba(" : u"rgb(";
  text += tvx::to_text(std::int64_t(color.red)) + u", " + tvx::to_text(std::int64_t(color.green)) + u", " +
          tvx::to_text(std::int64_t(color.blue));
  if (color.alpha < 1) text += u", " + decimal(color.alpha);
  return text + u")";
}

std::u16string to_hex(const Color& color) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", color.red, color.green, color.blue);
  return from_utf8(buffer);
}

}  // namespace tvx::dom::style
