#pragma once

#include <vector>

#include "tvx/dom/range.h"

/// What walks over the nodes of a range start and end with.
namespace tvx::editing {

/// The first node in tree order that begins after a boundary; null at the end of the tree.
dom::Node* first_after(const dom::Boundary& position);
/// The nodes that begin in the range and hold its end, the outermost last.
std::vector<const dom::Node*> holders_of_end(const dom::Range& range);

}  // namespace tvx::editing
