#pragma once

#include "tvx/dom/node.h"

namespace tvx::editing {

/// Says once, at the table, what a program says at each cell: plain lines, the room in the cells, that text
/// stands at the top. Widths stand in the first row, and nowhere where all columns are as wide.
void tidy_tables(dom::Node& content);

}  // namespace tvx::editing
