#include "tvx/editing/gestures/cell_selection.h"

#include <algorithm>

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/gestures/alignment.h"
#include "tvx/editing/gestures/gesture_step.h"
#include "tvx/editing/gestures/line_commands.h"
#include "tvx/editing/gestures/writer_state.h"
#include "tvx/editing/gestures/writing_place.h"
#include "tvx/editing/inline/remove_format.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

/// A cell without text has nothing that these could act on.
bool acts_on_text(std::u16string_view command) {
  static constexpr std::u16string_view names[] = {
      u"bold",      u"italic",    u"underline",   u"strikethrough", u"subscript", u"superscript",
      u"forecolor", u"backcolor", u"hilitecolor", u"fontname",      u"fontsize",  u"removeformat"};
  return std::ranges::any_of(
      names, [&](std::u16string_view name) { return equals_ignoring_ascii_case(command, name); });
}

bool execute_in_text(Editor& editor, std::u16string_view command, std::u16string_view value) {
  if (equals_ignoring_ascii_case(command, u"removeformat") && editor.selection().collapsed())
    return editor.enabled(command) && write_plain_from_here(editor);
  return acts_on_lines(command) ? execute_on_lines(editor, command, value) : editor.execute(command, value);
}

bool execute_in_cells(Editor& editor, std::vector<Ref<Element>> cells, std::u16string_view command,
                      std::u16string_view value) {
  const dom::UndoStep step(editor.document().journal(), command);
  const HeldSelection held(editor.selection());
  const SelectedCorners corners = selected_corners(editor);
  const Ref<Element> anchor(corners.anchor), focus(corners.focus);
  if (acts_on_text(command))
    std::erase_if(cells, [](const Ref<Element>& cell) { return is_empty_line(*cell); });
  // What is on everywhere goes off everywhere: all are asked before the first is done.
  std::vector<bool> on;
  for (const Ref<Element>& cell : cells) on.push_back(state_of_cell(cell, command).value_or(false));
  const std::u16string alignment = alignment_of_command(command);
  const bool all_on = std::ranges::all_of(on, [](bool each) { return each; });
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (on[i] && !all_on) continue;
    if (!alignment.empty() && align_block(*cells[i], alignment)) continue;
    select_cells(editor, *cells[i], *cells[i]);
    execute_in_text(editor, command, value);
  }
  select_cells(editor, *anchor, *focus);
  return true;
}

/// A picture stands in a line, as letters do.
bool insert_picture(Editor& editor, std::u16string_view address) {
  if (address.empty() || !editor.enabled(u"insertImage")) return false;
  const HeldSelection held(editor.selection());
  const dom::UndoStep step(editor.document().journal(), u"insertImage");
  stand_in_line(editor);
  return editor.execute(u"insertImage", address);
}

/// What is cut leaves the line that it has emptied, as what is deleted does.
bool cut_selected(Editor& editor) {
  if (!editor.enabled(u"cut")) return false;
  const HeldSelection held(editor.selection());
  const dom::UndoStep step(editor.document().journal(), u"Cut");
  const bool in_line = starts_in_line(editor);
  if (!editor.execute(u"cut")) return false;
  if (in_line) {
    hold_emptied_line(editor, Wrappers::Strip);
    wrap_line_beside_blocks(editor);
  }
  return true;
}

/// The cell beside another; null at the table's edge.
const GridCell* cell_beside(const TableGrid& grid, const GridCell& from, CellStep step) {
  switch (step) {
    case CellStep::Backward: return from.column > 0 ? grid.at(from.row, from.column - 1) : nullptr;
    case CellStep::Forward: return grid.at(from.row, from.column + from.width);
    case CellStep::Up: return from.row > 0 ? grid.at(from.row - 1, from.column) : nullptr;
    case CellStep::Down: return grid.at(from.row + from.height, from.column);
  }
  return nullptr;
}

}  // namespace

bool extend_cells(Editor& editor, CellStep step) {
  const SelectedCorners corners = selected_corners(editor);
  if (!corners || !corners.several()) return false;
  const TableGrid grid(*corners.table);
  const GridCell* from = grid.of(*corners.focus);
  const GridCell* next = from ? cell_beside(grid, *from, step) : nullptr;
  if (!next) return step == CellStep::Backward || step == CellStep::Forward;
  select_cells(editor, *corners.anchor, *next->cell);
  return true;
}

void take_whole_cells(Editor& editor) {
  const SelectedCorners corners = selected_corners(editor);
  if (corners && corners.several()) select_cells(editor, *corners.anchor, *corners.focus);
}

bool execute_as_writer(Editor& editor, std::u16string_view command, std::u16string_view value) {
  if (equals_ignoring_ascii_case(command, u"insertimage")) return insert_picture(editor, value);
  if (equals_ignoring_ascii_case(command, u"cut")) return cut_selected(editor);
  if (!acts_on_text(command) && !acts_on_lines(command)) return execute_in_text(editor, command, value);
  editor.document().journal().end_typing_run();
  const Gesture gesture(editor, command, dom::StepJoin::Never, Compare::All);
  std::vector<Ref<Element>> cells = selected_cells(editor);
  return cells.empty() ? execute_in_text(editor, command, value)
                       : execute_in_cells(editor, std::move(cells), command, value);
}

}  // namespace tvx::editing
