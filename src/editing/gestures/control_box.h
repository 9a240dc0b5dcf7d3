#pragma once

#include <optional>

#include "tvx/dom/node.h"

namespace tvx::editing {

class Editor;

/// Where a dragged handle or edge leaves an element: CSS pixels, as the properties of those names count them.
/// What is absent stays as it is.
struct ControlBox {
  std::optional<int> width, height, left, top;
  /// The width that it had, for one that is written in percent.
  std::optional<int> width_was = {};
};

/// Gives an element a size, as one undo step. Each measure is written where the element has it: in the inline
/// style if that names it, else images, tables, objects, frames and rules take attributes, form fields and
/// all others the style. A width in percent stays in percent where it is told what it was. False where the
/// element stands in a position that can't be edited.
bool set_control_box(Editor& editor, dom::Element& element, const ControlBox& box);

/// Whether its own style takes an element out of the flow, so that it has a place of its own.
bool is_absolutely_positioned(const dom::Element& element);

/// Whether the user may drag an element to another place: it is absolutely positioned by its own style and
/// the mode "2D-Position" is on.
bool is_movable(const Editor& editor, const dom::Element& element);

/// Moves such an element, as one undo step: `left` and `top` are set, and `right` and `bottom`, which would
/// pull at it, go. False where the element can't be moved.
bool move_positioned(Editor& editor, dom::Element& element, int left, int top);

}  // namespace tvx::editing
