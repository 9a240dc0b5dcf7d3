#include "tvx/editing/tables/table_grid.h"

#include <algorithm>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/table_columns.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Tag;

TableGrid::TableGrid(const Element& table) {
  std::vector<Element*> outside;  // rows that stand in no section
  const auto end_outside = [&] {
    add_section(outside);
    outside.clear();
  };
  for (Node* part = table.first_child(); part; part = part->next_sibling()) {
    if (part->is(Tag::Tr)) outside.push_back(static_cast<Element*>(part));
    if (!(part->is(Tag::Thead) || part->is(Tag::Tbody) || part->is(Tag::Tfoot))) continue;
    end_outside();
    std::vector<Element*> rows;
    for (Node* row = part->first_child(); row; row = row->next_sibling())
      if (row->is(Tag::Tr)) rows.push_back(static_cast<Element*>(row));
    add_section(rows);
  }
  end_outside();
  for (std::vector<int>& row : slots_) row.resize(columns_, -1);
}

void TableGrid::add_section(const std::vector<Element*>& rows) {
  const std::size_t first_row = rows_.size();
  rows_.insert(rows_.end(), rows.begin(), rows.end());
  slots_.resize(rows_.size());
  ColumnWalk walk;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t row = first_row + i;
    walk.begin_row();
    for (Node* node = rows[i]->first_child(); node; node = node->next_sibling()) {
      if (!is_cell(*node)) continue;
      auto& element = static_cast<Element&>(*node);
      GridCell cell{&element, row, walk.place(element), 1, 1};
      cell.width = walk.next() - cell.column;
      const int height = walk.columns()[cell.column].rows_left;
      cell.height = std::min<std::size_t>(std::size_t(std::max(height, 1)), rows_.size() - row);
      columns_ = std::max(columns_, cell.column + cell.width);
      for (std::size_t y = row; y < row + cell.height; ++y) {
        slots_[y].resize(std::max(slots_[y].size(), cell.column + cell.width), -1);
        for (std::size_t x = cell.column; x < cell.column + cell.width; ++x)
          slots_[y][x] = int(cells_.size());
      }
      places_[&element] = cells_.size();
      cells_.push_back(cell);
    }
  }
}

const GridCell* TableGrid::at(std::size_t row, std::size_t column) const {
  if (row >= slots_.size() || column >= columns_) return nullptr;
  const int index = slots_[row][column];
  return index < 0 ? nullptr : &cells_[std::size_t(index)];
}

const GridCell* TableGrid::of(const Element& cell) const {
  const auto found = places_.find(&cell);
  return found == places_.end() ? nullptr : &cells_[found->second];
}

const GridCell* TableGrid::first_in_row(std::size_t row, std::size_t column) const {
  for (; column < columns_; ++column)
    if (const GridCell* cell = at(row, column); cell && cell->row == row && cell->column >= column)
      return cell;
  return nullptr;
}

GridPart TableGrid::whole_cells(GridPart part) const {
  for (bool grown = true; grown;) {
    grown = false;
    for (const GridCell& cell : cells_) {
      const std::size_t bottom = cell.row + cell.height, right = cell.column + cell.width;
      if (cell.row >= part.bottom || bottom <= part.top || cell.column >= part.right || right <= part.left)
        continue;
      const GridPart before = part;
      part.top = std::min(part.top, cell.row);
      part.left = std::min(part.left, cell.column);
      part.bottom = std::max(part.bottom, bottom);
      part.right = std::max(part.right, right);
      grown = grown || before.top != part.top || before.left != part.left || before.bottom != part.bottom ||
              before.right != part.right;
    }
  }
  return part;
}

GridPart TableGrid::part_between(const Element& a, const Element& b) const {
  const GridCell* first = of(a);
  const GridCell* second = of(b);
  if (!first || !second) return {};
  GridPart part;
  part.top = std::min(first->row, second->row);
  part.left = std::min(first->column, second->column);
  part.bottom = std::max(first->row + first->height, second->row + second->height);
  part.right = std::max(first->column + first->width, second->column + second->width);
  return whole_cells(part);
}

std::vector<Element*> TableGrid::cells_in(const GridPart& part) const {
  std::vector<Element*> cells;
  for (const GridCell& cell : cells_)
    if (cell.row >= part.top && cell.row < part.bottom && cell.column >= part.left &&
        cell.column < part.right)
      cells.push_back(cell.cell);
  return cells;
}

Element* table_of(const Element& cell) {
  return cell.parent() ? dom::enclosing(*cell.parent(), Tag::Table) : nullptr;
}

Element* cell_around(Node* node) {
  for (; node && is_editable(*node); node = node->parent())
    if (is_cell(*node)) return static_cast<Element*>(node);
  return nullptr;
}

}  // namespace tvx::editing
