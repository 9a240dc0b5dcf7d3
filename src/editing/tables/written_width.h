#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"

/// Lengths as documents have them written, in attributes and in style: "120", "120px", "33.3%", "4em".
namespace tvx::editing {

struct WrittenLength {
  double number = 0;
  std::u16string unit;  // as written, in small letters; "" for a bare number
  bool in_percent() const { return unit == u"%"; }
  bool in_pixels() const { return unit.empty() || unit == u"px"; }
};

/// None where the text doesn't begin with a number that isn't negative ("auto", "*").
std::optional<WrittenLength> read_length(std::u16string_view text);

/// To a tenth, which is a pixel of a thousand: "33.3%".
std::u16string percent_text(double percent);

/// An element's width where it has one: in its inline style if that names it, else in the attribute.
class WrittenWidth {
 public:
  explicit WrittenWidth(dom::Element& element);
  /// What stands there; none where there is nothing, or no length.
  const std::optional<WrittenLength>& now() const { return now_; }
  bool in_style() const { return in_style_; }
  void set_pixels(int pixels);
  void set_percent(double percent);

 private:
  void write(std::u16string_view attribute, std::u16string_view style);
  dom::Element& element_;
  bool in_style_ = false;
  std::optional<WrittenLength> now_;
};

}  // namespace tvx::editing
