#pragma once

#include "tvx/editing/tables/table_grid.h"

/// What goes out of tables. They stay rectangular, whatever cells span; the undo step is the caller's.
namespace tvx::editing {

/// Takes out the rows of a part, with the cells that stand in no other. A cell that reaches into them
/// shrinks; one that begins in them and reaches further begins below them. A section without rows goes.
void remove_rows(dom::Element& table, const GridPart& part);
/// The same of its columns, and of the COL elements that stand for them.
void remove_columns(dom::Element& table, const GridPart& part);
/// Takes out rows and columns in which no cell begins: those that reach over them shrink.
void close_up(dom::Element& table);

}  // namespace tvx::editing
