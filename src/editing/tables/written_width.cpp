#include "tvx/editing/tables/written_width.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"

namespace tvx::editing {

std::optional<WrittenLength> read_length(std::u16string_view text) {
  const std::string written = to_utf8(ascii_lower(trimmed(text)));
  WrittenLength length;
  const char* const end = written.data() + written.size();
  const auto [behind, error] = std::from_chars(written.data(), end, length.number, std::chars_format::fixed);
  if (error != std::errc() || !std::isfinite(length.number) || std::signbit(length.number)) return {};
  length.unit = trimmed(from_utf8({behind, static_cast<std::size_t>(end - behind)}));
  return length;
}

std::u16string percent_text(double percent) {
  const auto tenths = std::lround(std::clamp(percent, 0.1, 10'000.0) * 10);
  std::u16string text = to_text(tenths / 10);
  if (tenths % 10) text += u'.' + to_text(tenths % 10);
  return text + u'%';
}

WrittenWidth::WrittenWidth(dom::Element& element) : element_(element) {
  const std::u16string styled = dom::style::inline_value(element, u"width");
  in_style_ = !styled.empty();
  now_ = read_length(in_style_ ? styled : std::u16string(element.attribute_or_empty(dom::names::width)));
}

void WrittenWidth::set_pixels(int pixels) {
  const std::u16string text = to_text(std::max(pixels, 1));
  write(text, text + u"px");
}

void WrittenWidth::set_percent(double percent) {
  const std::u16string text = percent_text(percent);
  write(text, text);
}

void WrittenWidth::write(std::u16string_view attribute, std::u16string_view style) {
  if (in_style_)
    dom::style::set_inline_value(element_, u"width", style);
  else
    dom::set_attribute(element_, dom::names::width, attribute);
}

}  // namespace tvx::editing
