#pragma once

#include <vector>

#include <optional>

#include "tvx/dom/node.h"
#include "tvx/dom/style/property_values.h"

namespace tvx::dom::style {

/// What an element's old attributes say of its style (HTML standard, section 15.3: "presentational hints"),
/// as author declarations that any rule outweighs.
void append_presentational_hints(const Element& element, std::vector<PropertyValue>& values);

/// Whether an attribute of that name can change how anything looks, apart from what selectors ask.
bool is_presentational(Name attribute);

/// FONT's size ("4", "+1", "-2") as 1 to 7 (HTML standard, "rules for parsing a legacy font size").
std::optional<int> parse_legacy_font_size(std::u16string_view text);

/// The direction that a `dir` attribute of "auto" finds in the element's text.
Direction direction_of_text(const Element& element);

}  // namespace tvx::dom::style
