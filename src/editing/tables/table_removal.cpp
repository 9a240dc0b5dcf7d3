#include "tvx/editing/tables/table_removal.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tables/table_spans.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// How much of [from, to) is within [first, after).
std::size_t overlap(std::size_t from, std::size_t to, std::size_t first, std::size_t after) {
  const std::size_t low = std::max(from, first), high = std::min(to, after);
  return high > low ? high - low : 0;
}

bool is_space(const Node* node) {
  const auto* text = node ? dom::as<dom::Text>(node) : nullptr;
  return text && std::ranges::all_of(text->data(), is_ascii_space);
}

/// The row takes its line of the source along: else white space would stand before the first row, which needs
/// a tag of its section then.
void remove_line_of(Element& row) {
  Node* before = row.previous_sibling();
  Node* after = row.next_sibling();
  const bool is_last = is_space(after) && !after->next_sibling();
  Node* line = is_last && is_space(before) ? before : after;
  if (is_space(line)) dom::remove(*line);
}

/// A comment in a row that goes is no part of it.
void remove_row(Element& row) {
  const Ref<Element> held(row);
  const Ref<Node> section(row.parent());
  for (const Ref<Node>& child : children_of(row))
    if (child->type() == dom::NodeType::Comment) move_preserving_ranges(child, *section, &row);
  remove_line_of(row);
  dom::remove(row);
  if (!section->is(Tag::Table) && !dom::first_child_element(*section)) dom::remove(*section);
}

void remove_column_elements(Element& table, std::size_t first, std::size_t after) {
  for (const PlacedCell& column : placed_columns(table)) {
    const std::size_t lost = overlap(column.first, column.behind, first, after);
    if (lost == 0) continue;
    const std::size_t width = column.behind - column.first;
    if (lost < width) {
      set_span(*column.cell, dom::Name(u"span"), width - lost);
      continue;
    }
    const Ref<Element> gone(column.cell);
    const Ref<Node> group(gone->parent());
    dom::remove(*gone);
    if (group->is(Tag::Colgroup) && !dom::first_child_element(*group)) dom::remove(*group);
  }
}

bool begins_in_row(const TableGrid& grid, std::size_t row) { return grid.first_in_row(row, 0) != nullptr; }

bool begins_in_column(const TableGrid& grid, std::size_t column) {
  for (std::size_t row = 0; row < grid.rows(); ++row) {
    const GridCell* cell = grid.at(row, column);
    if (!cell || cell->column == column) return true;
  }
  return false;
}

/// A row without cells of its own that others fill from above.
bool is_hollow_row(const TableGrid& grid, std::size_t row) {
  return row > 0 && grid.at(row, 0) && !begins_in_row(grid, row);
}

}  // namespace

void remove_rows(Element& table, const GridPart& part) {
  const TableGrid grid(table);
  const std::size_t bottom = std::min(part.bottom, grid.rows());
  for (const GridCell& cell : grid.cells()) {
    const std::size_t end = cell.row + cell.height;
    const std::size_t lost = overlap(cell.row, end, part.top, bottom);
    if (lost == 0 || lost == cell.height) continue;
    if (cell.row >= part.top) {
      const GridCell* next = grid.first_in_row(bottom, cell.column);
      move_preserving_ranges(Ref<Node>(cell.cell), grid.row(bottom), next ? next->cell : nullptr);
    }
    set_span(*cell.cell, dom::names::rowspan, cell.height - lost);
  }
  for (std::size_t row = part.top; row < bottom; ++row) remove_row(grid.row(row));
}

void remove_columns(Element& table, const GridPart& part) {
  const TableGrid grid(table);
  for (const GridCell& cell : grid.cells()) {
    const std::size_t lost = overlap(cell.column, cell.column + cell.width, part.left, part.right);
    if (lost == 0) continue;
    if (lost < cell.width)
      set_span(*cell.cell, dom::names::colspan, cell.width - lost);
    else
      dom::remove(*cell.cell);
  }
  remove_column_elements(table, part.left, part.right);
}

void close_up(Element& table) {
  const TableGrid grid(table);
  std::vector<std::size_t> rows, columns;
  for (std::size_t row = 0; row < grid.rows(); ++row)
    if (is_hollow_row(grid, row)) rows.push_back(row);
  for (std::size_t column = 1; column < grid.columns(); ++column)
    if (!begins_in_column(grid, column)) columns.push_back(column);
  const auto within = [](const std::vector<std::size_t>& all, std::size_t from, std::size_t size) {
    return std::size_t(
        std::ranges::count_if(all, [&](std::size_t each) { return each >= from && each < from + size; }));
  };
  if (rows.empty() && columns.empty()) return;
  for (const GridCell& cell : grid.cells()) {
    if (const std::size_t lost = within(rows, cell.row, cell.height))
      set_span(*cell.cell, dom::names::rowspan, cell.height - lost);
    if (const std::size_t lost = within(columns, cell.column, cell.width))
      set_span(*cell.cell, dom::names::colspan, cell.width - lost);
  }
  for (const std::size_t row : rows) remove_row(grid.row(row));
  for (auto column = columns.rbegin(); column != columns.rend(); ++column)
    remove_column_elements(table, *column, *column + 1);
}

}  // namespace tvx::editing
