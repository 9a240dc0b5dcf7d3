#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/style/computed.h"

/// What the editing commands ask about an element's look, in their own terms. dom/style answers, never the
/// view.
namespace tvx::editing {

enum class Display : std::uint8_t {
  None,
  Inline,
  InlineBlock,  // a box in a line
  Block         // every other value: the commands make no difference between them
};
Display display_of(const dom::Element& element);
using dom::style::WhiteSpace;
WhiteSpace white_space_of(const dom::Element& element);
/// Whether no element at or above the node has "display: none".
bool is_rendered(const dom::Node& node);
/// What `details` that aren't open hold beside their summary: it has a style, but no place in the page.
bool is_folded_away(const dom::Node& node);

// --- the element's own style attribute ---

/// What it sets a property to; none if it doesn't.
std::optional<std::u16string> own_style(const dom::Element& element, std::u16string_view property);
/// The one property that the attribute sets, unknown ones counted in; none if it sets none or several.
std::optional<std::u16string> only_own_property(const dom::Element& element);
bool sets_nothing(const dom::Element& element);

}  // namespace tvx::editing
