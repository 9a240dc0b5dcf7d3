#pragma once

#include "dom/range.h"

namespace tvx::editing {

/// A place between the children of a node, held by the child behind it (null: at the end). Stepping over
/// a child or up to the parent costs the same among two children or two hundred thousand, which counting
/// offsets would not. In a text it stands for the text as a whole: it has no children.
struct Gap {
  dom::Node* node = nullptr;
  dom::Node* next = nullptr;

  static Gap before(dom::Node& child) { return {child.parent(), &child}; }
  static Gap after(dom::Node& child) { return {child.parent(), child.next_sibling()}; }
  static Gap start_of(dom::Node& node) { return {&node, node.first_child()}; }
  static Gap end_of(dom::Node& node) { return {&node, nullptr}; }
  static Gap at(dom::Boundary place) { return {place.node, dom::child_at(*place.node, place.offset)}; }

  dom::Node* previous() const { return next ? next->previous_sibling() : node->last_child(); }
  bool at_start() const { return previous() == nullptr; }
  bool at_end() const { return next == nullptr; }
  /// Counts the children before it, or behind it where those are none.
  dom::Boundary boundary() const { return {node, next ? dom::index_of(*next) : dom::length_of(*node)}; }
  friend bool operator==(const Gap&, const Gap&) = default;
};

}  // namespace tvx::editing
