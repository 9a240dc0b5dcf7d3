#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/style/computed.h"
#include "tvx/dom/style/declarations.h"

/// Specified values of the properties that are computed here, in the form that the cascade works with.
namespace tvx::dom::style {

enum class ValueKind : std::uint8_t {
  Keyword,     // number: the property's enumerator, its bits, or a font weight
  Pixels,      // number
  Unitless,    // number: a length without a unit, which quirks mode takes
  Em,          // number
  RootEm,      // number
  Percentage,  // number
  Relative,    // number: 1 bolder, larger; -1 lighter, smaller
  Color,
  CurrentColor,
  Family,  // text
  Inherit,
  Initial,
  Unset,
  Revert,
  CellCenter  // text-align of TH: centred unless something above says otherwise
};

struct StyleValue {
  ValueKind kind = ValueKind::Initial;
  double number = 0;
  Color color;
  std::u16string text;
};

struct PropertyValue {
  Property property;
  bool important = false;
  StyleValue value;
};

/// The longhand of that CSS name; none if it isn't computed here.
std::optional<Property> property_of(std::u16string_view name);
bool is_inherited(Property property);

/// None if the value is none of that property.
std::optional<StyleValue> parse_value(Property property, std::u16string_view text);
/// All that the declarations say of the computed properties, shorthands taken apart.
std::vector<PropertyValue> property_values(const Declarations& declarations);

/// The pixels of size keyword 1 ("xx-small") to 8 ("xxx-large"); FONT size 1 is 2.
double keyword_font_size(int index);

/// The text of a computed value, but for the family.
std::u16string value_text(const ComputedValues& values, Property property);

}  // namespace tvx::dom::style
