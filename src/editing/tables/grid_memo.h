#pragma once

#include <cstdint>
#include <memory>

#include "tvx/editing/tables/table_grid.h"

namespace tvx::editing {

/// While this lives, the grid of a table is made once and not for each question: a window that asks what each
/// of its items could do now asks two dozen of them. What changes meanwhile is seen.
class GridMemo {
 public:
  GridMemo();
  ~GridMemo();
  GridMemo(const GridMemo&) = delete;
  GridMemo& operator=(const GridMemo&) = delete;

 private:
  friend std::shared_ptr<const TableGrid> grid_of(const dom::Element& table);

  GridMemo* before_;
  dom::Ref<dom::Element> table_;
  std::uint64_t version_ = 0;  // of the document
  std::shared_ptr<const TableGrid> grid_;
};

/// Good until the table changes.
std::shared_ptr<const TableGrid> grid_of(const dom::Element& table);

}  // namespace tvx::editing
