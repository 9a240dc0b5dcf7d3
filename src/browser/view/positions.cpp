#include "tvx/browser/view/positions.h"

#include <algorithm>

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {

namespace {

/// What isn't shown inside has a position before it.
dom::Boundary outside_of_hidden(dom::Boundary boundary) {
  for (dom::Node* node = boundary.node; node; node = node->parent()) {
    const auto* element = dom::as<dom::Element>(node);
    if (element && !mirrors_children(*element) && boundary.node->parent()) boundary = dom::before(*node);
  }
  return boundary;
}

}  // namespace

std::optional<ViewPlace> view_place(const Mirror& mirror, dom::Boundary boundary) {
  boundary = outside_of_hidden(boundary);
  if (!boundary.node || !mirror.knows(*boundary.node)) return {};
  const auto offset = mirror.offset_in_view(*boundary.node, boundary.offset);
  if (!offset) return {};
  return ViewPlace{boundary.node->id(), static_cast<std::uint32_t>(*offset)};
}

dom::Node* missing_at(const Mirror& mirror, dom::Boundary boundary) {
  boundary = outside_of_hidden(boundary);
  if (!boundary.node || !mirror.knows(*boundary.node)) return boundary.node;
  if (mirror.offset_in_view(*boundary.node, boundary.offset)) return nullptr;
  dom::Node* after = dom::child_at(*boundary.node, boundary.offset);
  return after ? after : boundary.node->last_child();
}

std::optional<dom::Boundary> nearest_boundary(const Mirror& mirror, const std::optional<ViewPlace>& place) {
  dom::Node* node = place ? mirror.node(place->node) : nullptr;
  if (!node || !dom::is_connected(*node)) return {};
  return dom::Boundary{
      node, std::min<Offset>(mirror.offset_in_document(*node, place->offset), dom::length_of(*node))};
}

std::optional<dom::Boundary> boundary_seen(const Mirror& mirror, const std::optional<ViewPlace>& place,
                                           PatchNumber seen) {
  if (!place || mirror.last_change(place->node) > seen) return {};
  return nearest_boundary(mirror, place);
}

}  // namespace tvx::browser
