#include <algorithm>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/grid_memo.h"
#include "tvx/editing/tables/selected_cells.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tables/table_edit.h"
#include "tvx/editing/tables/table_removal.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"

/// Commands on the table around the selection: what they act on is the selected cells, or the caret's cell.
namespace tvx::editing {

namespace {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

bool in_cell(const Editor& editor) { return selected_part(editor).has_value(); }

Element& last_cell_of_column(const SelectedPart& selected) {
  const TableGrid grid(*selected.table);
  const GridCell* last = grid.at(selected.part.bottom - 1, selected.part.left);
  return last ? *last->cell : *selected.cell;
}
Element& last_cell_of_row(const SelectedPart& selected) {
  const TableGrid grid(*selected.table);
  const GridCell* last = grid.at(selected.part.top, selected.part.right - 1);
  return last ? *last->cell : *selected.cell;
}

bool caret_into(Editor& editor, const Ref<Element>& cell) {
  if (cell) editor.selection().collapse({cell.get(), 0});
  return bool(cell);
}

template <RowSide side>
bool add_row(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  Element& cell = side == RowSide::Above ? *selected->cell : last_cell_of_column(*selected);
  return caret_into(editor, insert_row(cell, side));
}

template <ColumnSide side>
bool add_column(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  Element& cell = side == ColumnSide::Left ? *selected->cell : last_cell_of_row(*selected);
  return caret_into(editor, insert_column(cell, side));
}

/// A table that has lost all of its cells goes; the caret stands where it was, on a line.
void remove_table(Editor& editor, Element& table) {
  const HeldGap gap{Ref<Node>(table.parent()), Ref<Node>(table.next_sibling())};
  dom::remove(table);
  const bool alone = !has_visible_child(*gap.parent);
  if (!alone) return editor.selection().collapse(normalized_caret_place(position_of(gap)));
  const bool is_container = is_editing_host(*gap.parent) || !is_text_block(*gap.parent);
  if (!is_container || is_cell(*gap.parent)) {
    append_line_break(*gap.parent);
    return editor.selection().collapse({gap.parent.get(), 0});
  }
  const Ref<Element> line = editor.document().create_element(dom::Name(editor.paragraph_separator()));
  append_line_break(*line);
  insert_all(gap, {line});
  editor.selection().collapse({line.get(), 0});
}

/// After rows or columns went: into the cell that came in their stead, or the last one.
void caret_near(Editor& editor, Element& table, std::size_t row, std::size_t column) {
  const TableGrid grid(table);
  if (grid.cells().empty()) return remove_table(editor, table);
  const GridCell* cell = grid.at(std::min(row, grid.rows() - 1), std::min(column, grid.columns() - 1));
  if (!cell) cell = &grid.cells().back();
  editor.selection().collapse(normalized_caret_place({cell->cell, 0}));
}

bool delete_rows(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  remove_rows(*selected->table, selected->part);
  close_up(*selected->table);
  caret_near(editor, *selected->table, selected->part.top, selected->part.left);
  return true;
}

bool delete_columns(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  remove_columns(*selected->table, selected->part);
  close_up(*selected->table);
  caret_near(editor, *selected->table, selected->part.top, selected->part.left);
  return true;
}

bool can_merge(const Editor& editor) {
  const auto selected = selected_part(editor);
  return selected && selected->several && is_filled(*grid_of(*selected->table), selected->part);
}
void caret_to_end(Editor& editor, Element& cell) {
  const HeldPosition end = end_of_lines(cell, true);
  editor.selection().collapse(normalized_caret_place(end ? end.place() : Boundary{&cell, 0}));
}
bool merge_selected(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  merge_cells(TableGrid(*selected->table), selected->part);
  caret_to_end(editor, *selected->cell);
  return true;
}

bool has_cell_below(const Editor& editor) {
  const auto selected = selected_part(editor);
  return selected && !selected->several && can_merge_down(*selected->cell);
}
// What is below may be wider and stand below others too: the caret's cell is then one of those that go.
bool merge_with_below(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  const Ref<Element> kept = merge_down(*selected->cell);
  if (!cell_around(editor.selection().focus().node)) caret_to_end(editor, *kept);
  return true;
}

bool in_one_cell(const Editor& editor) {
  const auto selected = selected_part(editor);
  return selected && !selected->several;
}
bool split(Editor& editor, std::u16string_view) {
  split_cell(*selected_part(editor)->cell);
  return true;
}

bool has_head(Editor& editor) {
  const auto selected = selected_part(editor);
  return selected && has_header_row(*selected->table);
}
bool switch_head(Editor& editor, std::u16string_view) {
  Element& table = *selected_part(editor)->table;
  set_header_row(table, !has_header_row(table));
  return true;
}

bool select_row_cells(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  if (selected) select_rows(editor, *selected);
  return selected.has_value();
}
bool select_column_cells(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  if (selected) select_columns(editor, *selected);
  return selected.has_value();
}
bool select_table(Editor& editor, std::u16string_view) {
  const auto selected = selected_part(editor);
  if (!selected) return false;
  editor.document().journal().end_typing_run();
  editor.selection().select_control(*selected->table);
  return true;
}

const CommandDefinition rows[] = {
    {.name = u"insertRowAbove",
     .label = u"Insert Row",
     .action = add_row<RowSide::Above>,
     .applies = in_cell},
    {.name = u"insertRowBelow",
     .label = u"Insert Row",
     .action = add_row<RowSide::Below>,
     .applies = in_cell},
    {.name = u"insertColumnLeft",
     .label = u"Insert Column",
     .action = add_column<ColumnSide::Left>,
     .applies = in_cell},
    {.name = u"insertColumnRight",
     .label = u"Insert Column",
     .action = add_column<ColumnSide::Right>,
     .applies = in_cell},
    {.name = u"deleteRow", .label = u"Delete Row", .action = delete_rows, .applies = in_cell},
    {.name = u"deleteColumn", .label = u"Delete Column", .action = delete_columns, .applies = in_cell},
    {.name = u"mergeCells", .label = u"Merge Cells", .action = merge_selected, .applies = can_merge},
    {.name = u"mergeCellDown",
     .label = u"Merge Cells",
     .action = merge_with_below,
     .applies = has_cell_below},
    {.name = u"splitCell", .label = u"Split Cell", .action = split, .applies = in_one_cell},
    {.name = u"headerRow",
     .label = u"Header Row",
     .action = switch_head,
     .state = has_head,
     .applies = in_cell},
    {.name = u"selectRow", .label = u"", .action = select_row_cells, .applies = in_cell, .is_mode = true},
    {.name = u"selectColumn",
     .label = u"",
     .action = select_column_cells,
     .applies = in_cell,
     .is_mode = true},
    {.name = u"selectTable", .label = u"", .action = select_table, .applies = in_cell, .is_mode = true},
};

}  // namespace

std::span<const CommandDefinition> table_commands() { return rows; }

}  // namespace tvx::editing
