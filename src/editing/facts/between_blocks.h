#pragma once

#include "tvx/dom/range.h"

namespace tvx::editing {

/// A position where nothing of a line is: on each side a block or the edge of what holds them.
struct Between {
  dom::Element* holder = nullptr;  // null: the position is in a line
  dom::Node* before = nullptr;
  dom::Node* after = nullptr;

  /// What a block that comes here stands before. White space at the end of what holds the blocks stays there:
  /// in a page it is that of the lines which end the page itself.
  dom::Node* new_block_before() const;
};

Between between_blocks(const dom::Boundary& place);

/// The node itself, or the one before or after it that isn't mere filling.
dom::Node* passed_filling(dom::Node* node, bool backward);

}  // namespace tvx::editing
