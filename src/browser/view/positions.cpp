#include "tvx/browser/view/positions.h"

#include <algorithm>

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {

std::optional<ViewPlace> view_place(const Mirror& mirror, dom::Boundary boundary) {
  for (dom::Node* node = boundary.node; node; node = node->parent()) {
    const auto* element = dom::as<dom::Element>(node);
    if (element && !mirrors_children(*element) && boundary.node->parent()) boundary = dom::before(*node);
  }
  if (!boundary.node || !mirror.knows(*boundary.node)) return {};
  return ViewPlace{boundary.node->id(), static_cast<std::uint32_t>(boundary.offset)};
}

std::optional<dom::Boundary> nearest_boundary(const Mirror& mirror, const std::optional<ViewPlace>& place) {
  dom::Node* node = place ? mirror.node(place->node) : nullptr;
  if (!node || !dom::is_connected(*node)) return {};
  return dom::Boundary{node, std::min<Offset>(place->offset, dom::length_of(*node))};
}

std::optional<dom::Boundary> boundary_seen(const Mirror& mirror, const std::optional<ViewPlace>& place,
                                           PatchNumber seen) {
  if (!place || mirror.last_change(place->node) > seen) return {};
  return nearest_boundary(mirror, place);
}

}  // namespace tvx::browser
