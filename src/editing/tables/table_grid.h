#pragma once

#include <unordered_map>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// A cell and the slots that it fills.
struct GridCell {
  dom::Element* cell = nullptr;
  std::size_t row = 0, column = 0;    // the first slot
  std::size_t height = 1, width = 1;  // in rows and columns, as far as its section goes
};

/// A part of a grid, from the first to before the last row and column.
struct GridPart {
  std::size_t top = 0, left = 0, bottom = 0, right = 0;
};

/// A table as the rows and columns that its cells fill: HTML standard, section 4.9.12 "forming a table". Rows
/// are those of all sections in tree order. Good until the table changes.
class TableGrid {
 public:
  explicit TableGrid(const dom::Element& table);

  std::size_t rows() const { return rows_.size(); }
  std::size_t columns() const { return columns_; }
  dom::Element& row(std::size_t index) const { return *rows_[index]; }
  /// The cell that fills a slot; null where none does.
  const GridCell* at(std::size_t row, std::size_t column) const;
  const GridCell* of(const dom::Element& cell) const;
  /// In tree order.
  const std::vector<GridCell>& cells() const { return cells_; }
  /// Cells that begin in that row, from a column on; null if none does.
  const GridCell* first_in_row(std::size_t row, std::size_t column) const;

  /// The least part that holds both cells and cuts none.
  GridPart part_between(const dom::Element& a, const dom::Element& b) const;
  /// The same around a part that is given.
  GridPart whole_cells(GridPart part) const;
  /// The cells of a part, in tree order.
  std::vector<dom::Element*> cells_in(const GridPart& part) const;

 private:
  void add_section(const std::vector<dom::Element*>& rows);
  std::vector<dom::Element*> rows_;
  std::vector<GridCell> cells_;
  std::vector<std::vector<int>> slots_;  // by row and column: an entry of cells_, -1 for none
  std::unordered_map<const dom::Element*, std::size_t> places_;
  std::size_t columns_ = 0;
};

/// The table whose cell that is; null for a cell without one.
dom::Element* table_of(const dom::Element& cell);
/// The innermost cell around a node that may be edited, the node itself too.
dom::Element* cell_around(dom::Node* node);

}  // namespace tvx::editing
