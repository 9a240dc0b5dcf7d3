#pragma once

#include <optional>

#include "tvx/dom/node.h"

namespace tvx::editing {

class Editor;

/// Where the edge between two columns has been dragged to. Lengths are CSS pixels.
struct ColumnEdge {
  dom::Element* before = nullptr;  // a cell that ends at the edge, in the table's direction
  dom::Element* after = nullptr;   // a cell that begins there
  // The widths that both are to have, as `width` counts for them; what isn't known stays as it is.
  std::optional<int> before_width, after_width;
  int shift = 0;        // how far the edge goes forward
  int table_width = 0;  // what a width in percent is a part of
};

/// Moves the edge between two columns, as one undo step. All cells that fill the same columns as one of the
/// two get the width of that; of other cells that end or begin at the edge those that name a width, as do the
/// columns' COL elements. A width is written where the element has it, in its inline style or else in the
/// attribute; one in percent stays in percent. False where the cells can't be edited, or aren't neighbours in
/// one table.
bool size_columns(Editor& editor, const ColumnEdge& edge);

/// A cell that begins where this one ends: in its own row, else in another; null where the table ends there.
dom::Element* cell_behind(const dom::Element& cell);

}  // namespace tvx::editing
