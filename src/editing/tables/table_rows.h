#pragma once

#include "tvx/dom/node.h"

namespace tvx::editing {

/// A row with empty cells after the last row of a table's section, a column under each column: where a cell
/// of several rows ends there, it is continued by one of its own. A head gets no second row by this; its row
/// goes into a body of its own, with ordinary cells. Gives the row's first cell; empty where cells that reach
/// below their section leave no column.
dom::Ref<dom::Element> add_row_like(dom::Element& last_row);

}  // namespace tvx::editing
