#include "tvx/editing/gestures/cell_selection.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/tables/table_edit.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

struct Corners {
  Element* table = nullptr;
  Element* first = nullptr;
  Element* last = nullptr;
};

/// The cells of one table that the ends of a selection stand in; without a table if they are one cell.
Corners corners_of(const dom::Range& range) {
  const Content before_end = content_beside(range.end, Direction::Backward);
  for (Element* first = cell_around(range.start.node); first;) {
    Element* table = table_of(*first);
    if (!table) return {};
    if (dom::is_inclusive_ancestor(*table, *range.end.node)) {
      Element* last = cell_around(range.end.node);
      while (last && table_of(*last) != table)
        last = table_of(*last) ? cell_around(table_of(*last)->parent()) : nullptr;
      // A selection that ends where a cell's text starts has come to it, not over it.
      if (last && before_end.kind == ContentKind::LeaveBlock && before_end.node == last &&
          !is_empty_line(*last))
        return {};
      return last && last != first ? Corners{table, first, last} : Corners{};
    }
    first = cell_around(table->parent());
  }
  return {};
}

void select_content(Editor& editor, Element& cell) {
  editor.selection().set(normalized_caret_place({&cell, 0}),
                         normalized_caret_place({&cell, dom::length_of(cell)}));
}

bool acts_in_each_cell(std::u16string_view command) {
  for (std::u16string_view name : {u"bold",
                                   u"italic",
                                   u"underline",
                                   u"strikethrough",
                                   u"subscript",
                                   u"superscript",
                                   u"forecolor",
                                   u"backcolor",
                                   u"hilitecolor",
                                   u"fontname",
                                   u"fontsize",
                                   u"justifyleft",
                                   u"justifycenter",
                                   u"justifyright",
                                   u"justifyfull",
                                   u"insertorderedlist",
                                   u"insertunorderedlist",
                                   u"formatblock",
                                   u"indent",
                                   u"outdent",
                                   u"removeformat"})
    if (equals_ignoring_ascii_case(command, name)) return true;
  return false;
}

bool is_list_command(std::u16string_view command) {
  return equals_ignoring_ascii_case(command, u"insertorderedlist") ||
         equals_ignoring_ascii_case(command, u"insertunorderedlist");
}

bool execute_in_cells(Editor& editor, const std::vector<Ref<Element>>& cells, std::u16string_view command,
                      std::u16string_view value) {
  const dom::UndoStep step(editor.document().journal(), command);
  const HeldSelection held(editor.selection());
  const Ref<Element> first = cells.front(), last = cells.back();
  // A command that is on everywhere goes off everywhere: it is asked of all before the first is done.
  std::vector<Ref<Element>> wanted;
  bool all_on = true;
  for (const Ref<Element>& cell : cells) {
    select_content(editor, *cell);
    all_on = all_on && editor.state(command);
  }
  for (const Ref<Element>& cell : cells) {
    select_content(editor, *cell);
    const bool toggles = value.empty() && !equals_ignoring_ascii_case(command, u"indent") &&
                         !equals_ignoring_ascii_case(command, u"outdent");
    if (toggles && !all_on && editor.state(command)) continue;
    editor.execute(command, value);
  }
  const HeldPosition end = end_of_lines(*last, true);
  editor.selection().set(normalized_caret_place({first.get(), 0}),
                         end ? end.place() : Boundary{last.get(), dom::length_of(*last)});
  return true;
}

}  // namespace

std::vector<Ref<Element>> selected_cells(Editor& editor) {
  std::vector<Ref<Element>> cells;
  const Selection& selection = editor.selection();
  if (selection.type() != SelectionType::Text || selection.collapsed()) return cells;
  const Corners corners = corners_of(selection.range());
  if (!corners.table) return cells;
  const TableGrid grid(*corners.table);
  for (Element* cell : grid.cells_in(grid.part_between(*corners.first, *corners.last)))
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

namespace {

void select_part(Editor& editor, const TableGrid& grid, const GridPart& part) {
  const std::vector<Element*> cells = grid.cells_in(part);
  if (cells.empty()) return;
  editor.document().journal().end_typing_run();
  editor.selection().set(normalized_caret_place({cells.front(), 0}),
                         normalized_caret_place({cells.back(), dom::length_of(*cells.back())}));
}

}  // namespace

void select_row(Editor& editor, Element& cell) {
  if (!table_of(cell)) return;
  const TableGrid grid(*table_of(cell));
  if (const GridCell* place = grid.of(cell))
    select_part(editor, grid, {place->row, 0, place->row + place->height, grid.columns()});
}

void select_column(Editor& editor, Element& cell) {
  if (!table_of(cell)) return;
  const TableGrid grid(*table_of(cell));
  if (const GridCell* place = grid.of(cell))
    select_part(editor, grid, {0, place->column, grid.rows(), place->column + place->width});
}

bool execute_as_writer(Editor& editor, std::u16string_view command, std::u16string_view value) {
  if (acts_in_each_cell(command)) {
    const std::vector<Ref<Element>> cells = selected_cells(editor);
    if (!cells.empty()) return execute_in_cells(editor, cells, command, value);
  }
  if (!is_list_command(command)) return editor.execute(command, value);
  const dom::UndoStep step(editor.document().journal(), command);
  const bool done = toggle_list_as_writer(editor, command);
  return done || editor.execute(command, value);
}

}  // namespace tvx::editing
