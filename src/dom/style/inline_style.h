#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/style/declarations.h"

namespace tvx::dom::style {

/// The `style` object of an element. Reads and writes its `style` attribute through dom/mutation.h.
///
/// Names are CSS names ("border-style") or the object model's ("borderStyle", "cssFloat", "styleFloat").
/// Assigning what the getter gives now is no mutation, no empty attribute is born, and removing the last
/// declaration removes the attribute.
class InlineStyle {
 public:
  explicit InlineStyle(Element& element) : element_(element) {}

  Element& element() const { return *element_; }

  /// The attribute's text as written, "" when absent.
  std::u16string css_text() const;
  void set_css_text(std::u16string_view text);

  /// The value in force, "" if none is.
  std::u16string get(std::u16string_view name) const;
  /// Sets a property; "" removes it. A bare number is in pixels where lengths are taken. A value that can't
  /// be one is ignored.
  void set(std::u16string_view name, std::u16string_view value, Important important = Important::No);
  void remove(std::u16string_view name);

  /// The declarations as they stand now, for reading.
  Declarations declarations() const;

 private:
  void write(const Declarations& declarations);
  Ref<Element> element_;
};

/// "border-style" for "borderStyle"; CSS names stay, in small letters.
std::u16string css_name_of(std::u16string_view name);

/// Short forms for one property by its CSS name; shorthands and longhands as Declarations tells.
std::u16string inline_value(const Element& element, std::u16string_view css_name);
void set_inline_value(Element& element, std::u16string_view css_name, std::u16string_view value);
void remove_inline_value(Element& element, std::u16string_view css_name);
/// How many declarations the style attribute holds; unknown properties count.
std::size_t inline_length(const Element& element);

}  // namespace tvx::dom::style
