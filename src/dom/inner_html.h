#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"

/// HTML standard, section "DOM parsing and serialization APIs".
namespace tvx::dom {

/// The markup of what is in a node, in this system's letters.
std::u16string inner_html(const Node& node);
std::u16string outer_html(const Node& node);
/// Replaces all that is in the element by the markup, parsed in its context. One mutation for each child.
void set_inner_html(Element& element, std::u16string_view html);

}  // namespace tvx::dom
