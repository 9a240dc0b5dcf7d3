#pragma once

#include <optional>

#include "tvx/browser/view/messages.h"
#include "tvx/dom/range.h"

namespace tvx::browser {

class Mirror;

/// Positions go down as the view knows them; none where the view has nothing yet. A position inside what
/// isn't shown is the position before that.
std::optional<ViewPlace> view_place(const Mirror& mirror, dom::Boundary boundary);

/// The node that the view has to have first, for a position to go down; null where nothing is missing.
dom::Node* missing_at(const Mirror& mirror, dom::Boundary boundary);

/// Positions come up as the tree has them. None for a node that is gone.
std::optional<dom::Boundary> nearest_boundary(const Mirror& mirror, const std::optional<ViewPlace>& place);
/// None as well if the tree has changed there since the patch `seen`, which the view had applied when it
/// named the position.
std::optional<dom::Boundary> boundary_seen(const Mirror& mirror, const std::optional<ViewPlace>& place,
                                           PatchNumber seen);

}  // namespace tvx::browser
