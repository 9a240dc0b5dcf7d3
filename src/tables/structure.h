#pragma once

#include "tvx/dom/node.h"

/// Surgery on tables: what the items of the cell and row submenu and of the table's own menu do. Each call is
/// one undo step. The width of a row is the number of its cells: spans don't count, and a new cell or row
/// takes over neither attributes nor content.
///
/// Hosts and their users know these operations with all their peculiarities, so the peculiarities stay:
/// a body counts its rows over the whole table where a head or a foot counts its own, a merged cell spans
/// two columns whatever it spanned before, and "after" a cell means one position before it.
namespace tvx::tables {

// --- on one cell or row ---
//
// A step that fails, or that something needed for is missing, is skipped; the next one is done all the same.
// None of these throws.

void delete_cell(dom::Element& cell);
void delete_row(dom::Element& row);
/// A row with as many cells as `row` has.
void insert_row_above(dom::Element& row);
void insert_row_below(dom::Element& row);
void insert_cell_before(dom::Element& cell);
void insert_cell_after(dom::Element& cell);
/// The neighbour takes the content in and spans two columns; the cell goes, also where it has no neighbour.
void merge_cell_left(dom::Element& cell);
/// The cell takes its neighbour's content in and spans two columns, also where it has no neighbour.
void merge_cell_right(dom::Element& cell);

// --- at the end of a table ---
//
// The first failing step ends these with its RuntimeError; what was done by then stays.

/// After the last row, as wide as the first. Fails in a table without rows, which gets an empty one.
void append_row(dom::Element& table);
void delete_last_row(dom::Element& table);
/// A cell at the end of every row.
void append_column(dom::Element& table);
/// The last cell of every row goes, also of rows that are shorter than others.
void delete_last_column(dom::Element& table);

}  // namespace tvx::tables
