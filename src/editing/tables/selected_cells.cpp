#include "tvx/editing/tables/selected_cells.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/grid_memo.h"
#include "tvx/editing/tables/table_edit.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

using dom::Element;
using dom::Ref;

namespace {

/// The cell of that table that a node stands in, however deep in tables inside of it.
Element* cell_of_table(const Element& table, dom::Node* node) {
  Element* cell = cell_around(node);
  while (cell && table_of(*cell) != &table)
    cell = table_of(*cell) ? cell_around(table_of(*cell)->parent()) : nullptr;
  return cell;
}

void select_part(Editor& editor, const Element& table, const GridPart& part) {
  const std::vector<Element*> cells = TableGrid(table).cells_in(part);
  if (!cells.empty()) select_cells(editor, *cells.front(), *cells.back());
}

}  // namespace

SelectedCorners selected_corners(const Editor& editor) {
  const Selection& selection = editor.selection();
  if (selection.type() == SelectionType::None) return {};
  const dom::Range range = selection.range();
  for (Element* start = cell_around(range.start.node); start;) {
    Element* table = table_of(*start);
    if (!table) return {};
    if (dom::is_inclusive_ancestor(*table, *range.end.node)) {
      Element* end = cell_of_table(*table, range.end.node);
      if (!end) return {};
      const bool forward = selection.type() == SelectionType::Control || selection.anchor() == range.start;
      return forward ? SelectedCorners{table, start, end} : SelectedCorners{table, end, start};
    }
    start = cell_around(table->parent());
  }
  return {};
}

std::optional<SelectedPart> selected_part(const Editor& editor) {
  const SelectedCorners corners = selected_corners(editor);
  if (!corners) return {};
  const auto grid = grid_of(*corners.table);
  const GridPart part = grid->part_between(*corners.anchor, *corners.focus);
  const GridCell* first = grid->at(part.top, part.left);
  Element* cell = first ? first->cell : corners.anchor;
  // A cell whose row is no row of the table stands in no grid.
  if (!grid->of(*cell)) return {};
  return SelectedPart{Ref(corners.table), part, Ref(cell), corners.several()};
}

std::vector<Ref<Element>> selected_cells(const Editor& editor) {
  std::vector<Ref<Element>> cells;
  const SelectedCorners corners = selected_corners(editor);
  if (!corners || !corners.several()) return cells;
  const TableGrid grid(*corners.table);
  for (Element* cell : grid.cells_in(grid.part_between(*corners.anchor, *corners.focus)))
    if (is_editable(*cell)) cells.emplace_back(cell);
  return cells;
}

bool empty_selected_cells(Editor& editor) {
  const std::vector<Ref<Element>> cells = selected_cells(editor);
  if (cells.empty()) return false;
  for (const Ref<Element>& cell : cells) empty_cell(*cell);
  editor.selection().collapse({cells.front().get(), 0});
  return true;
}

void select_cells(Editor& editor, Element& from, Element& to) {
  editor.document().journal().end_typing_run();
  // Into the first from its start on, into the last to its end, whichever comes first.
  const bool forward = &from == &to || dom::compare({&from, 0}, {&to, 0}) < 0;
  const auto start = [](Element& cell) { return normalized_caret_place({&cell, 0}); };
  const auto end = [](Element& cell) {
    const HeldPosition line = end_of_lines(cell, true);
    return line ? line.place() : dom::Boundary{&cell, dom::length_of(cell)};
  };
  editor.selection().set(forward ? start(from) : end(from), forward ? end(to) : start(to));
}

void select_rows(Editor& editor, const SelectedPart& selected) {
  const TableGrid grid(*selected.table);
  select_part(editor, *selected.table, {selected.part.top, 0, selected.part.bottom, grid.columns()});
}

void select_columns(Editor& editor, const SelectedPart& selected) {
  const TableGrid grid(*selected.table);
  select_part(editor, *selected.table, {0, selected.part.left, grid.rows(), selected.part.right});
}

}  // namespace tvx::editing
