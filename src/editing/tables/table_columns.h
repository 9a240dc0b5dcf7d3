#pragma once

#include <cstddef>
#include <vector>

#include "tvx/dom/node.h"

/// The columns of a table as its cells fill them: HTML standard, section 4.9.12 "forming a table".
namespace tvx::editing {

/// Goes down the rows of one section, and knows which cells reach into the row that it stands in.
class ColumnWalk {
 public:
  /// A column as the rows so far leave it: the cell that stands in it, and how many rows that still fills,
  /// the present one included.
  struct Column {
    const dom::Element* cell = nullptr;
    int rows_left = 0;
  };

  void begin_row();
  /// Puts the row's next cell into the next free columns, and gives the first of them. The cell's span is in
  /// `columns()` then.
  std::size_t place(const dom::Element& cell);
  const std::vector<Column>& columns() const { return columns_; }
  /// The column after that of the cell put last.
  std::size_t next() const { return next_; }

 private:
  std::vector<Column> columns_;
  std::size_t next_ = 0;
};

/// A cell, or a COL, and the columns that it fills: from `first` to before `after`.
struct PlacedCell {
  dom::Element* cell = nullptr;
  std::size_t first = 0, behind = 0;
};

/// The table's own cells in tree order; those of tables inside of it aren't among them.
std::vector<PlacedCell> placed_cells(const dom::Element& table);
/// Its COL elements, and groups that stand for columns without any.
std::vector<PlacedCell> placed_columns(const dom::Element& table);

bool is_cell(const dom::Node& node);

}  // namespace tvx::editing
