#pragma once

#include "tvx/dom/range.h"

namespace tvx::editing {

/// A position between the children of a node, named by the child after it (null: at the end). Stepping over
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
  /// Counts the children before it, or after it where those are none.
  dom::Boundary boundary() const { return {node, next ? dom::index_of(*next) : dom::length_of(*node)}; }
  friend bool operator==(const Gap&, const Gap&) = default;
};

/// A position anywhere: an offset in a text or comment, a gap between children elsewhere.
struct WalkPosition {
  Gap gap;
  Offset offset = 0;  // in character data
  dom::CharacterData* data = nullptr;

  explicit WalkPosition(dom::Boundary place)
      : gap{place.node, nullptr}, data(dom::as<dom::CharacterData>(place.node)) {
    if (data) {
      offset = place.offset < data->length() ? place.offset : data->length();
    } else {
      gap = Gap::at(place);
    }
  }
  dom::Node& node() const { return *gap.node; }
  bool is_text() const { return gap.node->is_text(); }
  /// The child right before or after it, null where there is none.
  dom::Node* previous() const { return data ? nullptr : gap.previous(); }
  dom::Node* next() const { return data ? nullptr : gap.next; }
  bool at_start() const { return data ? offset == 0 : gap.at_start(); }
  bool at_end() const { return data ? offset == data->length() : gap.at_end(); }
  dom::Boundary boundary() const { return data ? dom::Boundary{data, offset} : gap.boundary(); }

  void enter_end(dom::Node& child) {
    gap = Gap::end_of(child);
    data = dom::as<dom::CharacterData>(&child);
    offset = data ? data->length() : 0;
  }
  void enter_start(dom::Node& child) {
    gap = Gap::start_of(child);
    data = dom::as<dom::CharacterData>(&child);
    offset = 0;
  }
  void leave_backward() {
    gap = Gap::before(node());
    data = nullptr;
  }
  void leave_forward() {
    gap = Gap::after(node());
    data = nullptr;
  }
  bool same_as(const WalkPosition& other) const { return gap == other.gap && offset == other.offset; }
};

}  // namespace tvx::editing
