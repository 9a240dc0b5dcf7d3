#pragma once

#include <functional>

#include "tvx/dom/range.h"
#include "tvx/editing/tree/surgery.h"

/// Editing commands standard, "effectively contained": what a range covers but for the tags at its edges.
namespace tvx::editing {

/// Calls `visitor` for the nodes effectively contained in the range, in tree order, until it answers false.
/// Linear in what it visits. The visitor must not change the tree.
void walk_effectively_contained(const dom::Range& range, const std::function<bool(dom::Node&)>& visitor);
/// Those that fit.
NodeList effectively_contained_nodes(const dom::Range& range, const NodeCriteria& criteria);
/// Null if there is none.
dom::Node* first_formattable_in(const dom::Range& range);

}  // namespace tvx::editing
