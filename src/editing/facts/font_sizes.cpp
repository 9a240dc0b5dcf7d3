#include "tvx/editing/facts/font_sizes.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tvx/base/strings.h"
#include "tvx/dom/style/presentational_hints.h"

namespace tvx::editing {

namespace {

struct Size {
  std::u16string_view keyword;
  double pixels;  // with a medium size of 16 pixels: CSS fonts standard, section 2.5
};
constexpr std::array<Size, 7> sizes{{{u"x-small", 10},
                                     {u"small", 13},
                                     {u"medium", 16},
                                     {u"large", 18},
                                     {u"x-large", 24},
                                     {u"xx-large", 32},
                                     {u"xxx-large", 48}}};

// Lengths in absolute units; CSS values standard, section 6.2.
struct Unit {
  std::u16string_view name;
  double pixels;
};
constexpr std::array<Unit, 7> units{{{u"px", 1},
                                     {u"pt", 96.0 / 72},
                                     {u"pc", 16},
                                     {u"in", 96},
                                     {u"cm", 96 / 2.54},
                                     {u"mm", 96 / 25.4},
                                     {u"q", 96 / 101.6}}};

}  // namespace

std::u16string_view font_size_keyword(int size) { return sizes[size - 1].keyword; }

std::optional<int> font_size_of_keyword(std::u16string_view keyword) {
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    if (equals_ignoring_ascii_case(sizes[i].keyword, keyword)) return int(i) + 1;
  }
  return std::nullopt;
}

namespace {

// HTML standard, section 2.3.4.3 "valid floating-point number".
bool is_valid_number(std::u16string_view text) {
  std::size_t at = 0;
  const auto digits = [&] {
    const std::size_t begin = at;
    while (at < text.size() && is_ascii_digit(text[at])) ++at;
    return at > begin;
  };
  if (at < text.size() && text[at] == u'-') ++at;
  bool number = digits();
  if (at < text.size() && text[at] == u'.') {
    ++at;
    if (!digits()) return false;
    number = true;
  }
  if (!number) return false;
  if (at < text.size() && ascii_lower(text[at]) == u'e') {
    ++at;
    if (at < text.size() && (text[at] == u'+' || text[at] == u'-')) ++at;
    if (!digits()) return false;
  }
  return at == text.size();
}

}  // namespace

std::optional<int> parse_font_size_argument(std::u16string_view text) {
  text = trimmed(text);
  const bool plus = !text.empty() && text[0] == u'+';
  if (!is_valid_number(plus ? text.substr(1) : text)) return std::nullopt;
  return dom::style::parse_legacy_font_size(text);
}

std::optional<double> font_size_in_pixels(std::u16string_view value) {
  value = trimmed(value);
  if (const auto size = font_size_of_keyword(value)) return sizes[*size - 1].pixels;
  if (equals_ignoring_ascii_case(value, u"xx-small")) return 9;
  double number = 0, scale = 0;
  std::size_t at = 0;
  for (; at < value.size() && (is_ascii_digit(value[at]) || (value[at] == u'.' && scale == 0)); ++at) {
    if (value[at] == u'.') {
      scale = 1;
      continue;
    }
    number = number * 10 + (value[at] - u'0');
    scale *= 10;
  }
  if (at == 0) return std::nullopt;
  if (scale > 0) number /= scale;
  for (const Unit& unit : units) {
    if (equals_ignoring_ascii_case(unit.name, value.substr(at))) return number * unit.pixels;
  }
  return std::nullopt;
}

std::u16string legacy_font_size_of(std::u16string_view value) {
  const std::optional<double> pixels = font_size_in_pixels(value);
  if (!pixels) return {};
  std::size_t size = 0;
  while (size + 1 < sizes.size() &&
         std::floor(*pixels) >= (sizes[size].pixels + sizes[size + 1].pixels) / 2) {
    ++size;
  }
  return to_text(std::int64_t(size) + 1);
}

}  // namespace tvx::editing
