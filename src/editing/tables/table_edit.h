#pragma once

#include "tvx/editing/tables/table_grid.h"

/// Surgery on tables that keeps them rectangular, whatever cells span. The undo step is the caller's.
namespace tvx::editing {

enum class RowSide : bool { Above, Below };
enum class ColumnSide : bool { Left, Right };

/// A row beside the cell, a cell under each column; cells that reach over the new row grow by it. Below the
/// last row of a head it is a row of the body. Gives its cell in the column of `cell`.
dom::Ref<dom::Element> insert_row(dom::Element& cell, RowSide side);
/// A column beside the cell; cells that reach over it grow by it. Gives its cell in the row of `cell`.
dom::Ref<dom::Element> insert_column(dom::Element& cell, ColumnSide side);

/// The cell takes in what is below it in its section, with all that the two cut. Gives the cell that holds
/// all then; empty where nothing is below.
dom::Ref<dom::Element> merge_down(dom::Element& cell);
bool can_merge_down(const dom::Element& cell);
/// Whether a part lies in one section and has no holes.
bool is_filled(const TableGrid& grid, const GridPart& part);
/// The cells of a part become the one at its top left, with their contents one after the other. Rows and
/// columns that no cell begins in any more go.
dom::Ref<dom::Element> merge_cells(const TableGrid& grid, const GridPart& part);
/// A cell that spans becomes the cells that it filled; one that doesn't becomes two side by side.
void split_cell(dom::Element& cell);

bool has_header_row(const dom::Element& table);
/// The first row becomes the table's head, or the head's rows become rows of its body.
void set_header_row(dom::Element& table, bool on);

/// Makes the table so large that a part fits, with empty cells.
void grow_table(dom::Element& table, std::size_t rows, std::size_t columns);
/// Takes out what is in a cell, and holds its line open.
void empty_cell(dom::Element& cell);

}  // namespace tvx::editing
