#pragma once

#include <cstdint>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// Editing commands standard, section "Toggling lists", and what else asks of lists.
namespace tvx::editing {

class Editor;

bool is_html_element_of(const dom::Node& node, dom::Name name);

/// "The selection's list state".
enum class ListState : std::uint8_t { None, Ordered, Unordered, Mixed, MixedOrdered, MixedUnordered };
ListState list_state(Editor& editor);
ListState list_state(const dom::Range& range);

/// Makes lists of the selected lines, or takes them out of their list if all stand in one of that kind.
void toggle_lists(Editor& editor, dom::Tag tag);

/// All items around a node, the innermost first; `node` itself too.
std::vector<dom::Ref<dom::Node>> items_around(dom::Node* node);
/// "Normalize sublists" for every item around either end of a range.
void normalize_items_of(const dom::Range& range);

}  // namespace tvx::editing
