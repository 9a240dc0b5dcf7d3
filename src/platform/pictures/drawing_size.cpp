#include "tvx/platform/pictures/drawing_size.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace tvx::platform {
namespace {

using std::string_view;

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

string_view after_space(string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  return text;
}

/// What comes after `end`; empty where it doesn't come.
string_view after(string_view text, string_view end) {
  const std::size_t at = text.find(end);
  return at == text.npos ? string_view() : text.substr(at + end.size());
}

/// After a document type, which may hold declarations in brackets, with ">" in quoted texts.
string_view after_document_type(string_view text) {
  bool declares = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"' || c == '\'') {
      const std::size_t end = text.find(c, i + 1);
      if (end == text.npos) return {};
      i = end;
    } else if (c == '[') {
      declares = true;
    } else if (c == ']') {
      declares = false;
    } else if (c == '>' && !declares) {
      return text.substr(i + 1);
    }
  }
  return {};
}

/// From the name of the first element on; empty where there is none.
string_view first_element(string_view text) {
  while (true) {
    text = after_space(text);
    if (!text.starts_with('<')) return {};
    if (text.starts_with("<?")) {
      text = after(text, "?>");
    } else if (text.starts_with("<!--")) {
      text = after(text, "-->");
    } else if (text.starts_with("<!")) {
      text = after_document_type(text);
    } else {
      return text.substr(1);
    }
  }
}

/// UTF-16 with a byte order mark, without the letters that no tag needs; UTF-8 as it is.
std::string in_bytes(string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return std::string(bytes.substr(3));
  const bool little = bytes.starts_with("\xFF\xFE"), big = bytes.starts_with("\xFE\xFF");
  if (!little && !big) return std::string(bytes);
  std::string text;
  for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
    const char low = bytes[little ? i : i + 1], high = bytes[little ? i + 1 : i];
    text += high == 0 && static_cast<unsigned char>(low) < 0x80 ? low : '?';
  }
  return text;
}

/// The values of the attributes that tell a size.
struct Attributes {
  string_view width, height, viewBox;
};

bool is_drawing(string_view& element) {
  const std::size_t end = std::min(element.find_first_of(" \t\r\n/>"), element.size());
  string_view name = element.substr(0, end);
  if (const std::size_t colon = name.find(':'); colon != name.npos) name.remove_prefix(colon + 1);
  element.remove_prefix(end);
  return name == "svg";
}

/// Nothing where the tag doesn't end within the text.
std::optional<Attributes> attributes_of(string_view text) {
  Attributes found;
  while (true) {
    text = after_space(text);
    if (text.empty()) return std::nullopt;
    if (text.starts_with('>') || text.starts_with("/>")) return found;
    const std::size_t equals = text.find_first_of("=>");
    if (equals == text.npos || text[equals] == '>') return std::nullopt;
    const string_view name = text.substr(0, text.find_first_of(" \t\r\n="));
    text = after_space(text.substr(equals + 1));
    if (text.empty() || (text.front() != '"' && text.front() != '\'')) return std::nullopt;
    const std::size_t end = text.find(text.front(), 1);
    if (end == text.npos) return std::nullopt;
    const string_view value = text.substr(1, end - 1);
    if (name == "width") found.width = value;
    if (name == "height") found.height = value;
    if (name == "viewBox") found.viewBox = value;
    text.remove_prefix(end + 1);
  }
}

/// A number at the start of the text, which is cut off; nothing where there is none.
std::optional<double> take_number(string_view& text) {
  text = after_space(text);
  constexpr std::size_t longest = 40;
  const std::string digits(text.substr(0, std::min(text.find_first_not_of("+-.0123456789eE"), longest)));
  // "1em" is a number and a unit; "e" belongs to the number only before digits.
  const char* start = digits.c_str();
  char* end = nullptr;
  const double number = std::strtod(start, &end);
  if (end == start || !std::isfinite(number)) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - start));
  return number;
}

struct Unit {
  string_view name;
  double pixels;
};
constexpr Unit units[] = {{"", 1},    {"px", 1},         {"pt", 4.0 / 3},   {"pc", 16},
                          {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}, {"Q", 96 / 101.6},
                          {"em", 16}, {"rem", 16},       {"ex", 8}};

/// Nothing for a share of what the drawing stands in ("100%"), and for what is no length.
std::optional<double> length_of(string_view text) {
  const auto number = take_number(text);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  if (!number || *number <= 0) return std::nullopt;
  for (const Unit& unit : units)
    if (unit.name == text) return *number * unit.pixels;
  return std::nullopt;
}

/// Width through height of the drawing's own area.
std::optional<double> proportion_of(string_view viewBox) {
  std::array<double, 4> values{};
  for (double& value : values) {
    const auto number = take_number(viewBox);
    if (!number) return std::nullopt;
    value = *number;
    viewBox = after_space(viewBox);
    if (viewBox.starts_with(',')) viewBox.remove_prefix(1);
  }
  const double proportion = values[2] / values[3];
  if (values[2] <= 0 || values[3] <= 0 || !std::isfinite(proportion) || proportion <= 0) return std::nullopt;
  return proportion;
}

std::optional<PictureSize> in_pixels(double width, double height) {
  constexpr double most = std::numeric_limits<std::int32_t>::max();
  const double w = std::round(width), h = std::round(height);
  if (!(w >= 1 && h >= 1 && w <= most && h <= most)) return std::nullopt;
  return PictureSize{static_cast<std::int32_t>(w), static_cast<std::int32_t>(h)};
}

/// What stands where nobody gives a size, as for all that is embedded in a page.
constexpr double default_width = 300, default_height = 150;

std::optional<PictureSize> size_from(const Attributes& attributes) {
  const auto width = length_of(attributes.width), height = length_of(attributes.height);
  if (width && height) return in_pixels(*width, *height);
  const auto proportion = proportion_of(attributes.viewBox);
  if (width) return in_pixels(*width, proportion ? *width / *proportion : default_height);
  if (height) return in_pixels(proportion ? *height * *proportion : default_width, *height);
  if (!proportion) return in_pixels(default_width, default_height);
  return *proportion >= default_width / default_height
             ? in_pixels(default_width, default_width / *proportion)
             : in_pixels(default_height * *proportion, default_height);
}

}  // namespace

bool may_be_drawing(string_view start) {
  return start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF") ||
         start.starts_with("\xEF\xBB\xBF") || after_space(start).starts_with('<') ||
         (!start.empty() && after_space(start).empty());
}

std::optional<PictureSize> drawing_size(string_view bytes) {
  const std::string text = in_bytes(bytes);
  string_view element = first_element(text);
  if (!is_drawing(element)) return std::nullopt;
  const auto attributes = attributes_of(element);
  return attributes ? size_from(*attributes) : std::nullopt;
}

}  // namespace tvx::platform
