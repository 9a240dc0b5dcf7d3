#include "tvx/editing/gestures/cell_selection.h"

#include <algorithm>
#include <span>

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/alignment.h"
#include "tvx/editing/gestures/gesture_step.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/gestures/quotations.h"
#include "tvx/editing/gestures/writer_state.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

bool is_among(std::u16string_view command, std::span<const std::u16string_view> names) {
  return std::ranges::any_of(
      names, [&](std::u16string_view name) { return equals_ignoring_ascii_case(command, name); });
}

/// A cell without text has nothing that these could act on.
bool acts_on_text(std::u16string_view command) {
  static constexpr std::u16string_view names[] = {
      u"bold",      u"italic",    u"underline",   u"strikethrough", u"subscript", u"superscript",
      u"forecolor", u"backcolor", u"hilitecolor", u"fontname",      u"fontsize",  u"removeformat"};
  return is_among(command, names);
}

bool acts_on_lines(std::u16string_view command) {
  static constexpr std::u16string_view names[] = {
      u"justifyleft",         u"justifycenter", u"justifyright", u"justifyfull", u"insertorderedlist",
      u"insertunorderedlist", u"formatblock",   u"indent",       u"outdent"};
  return is_among(command, names);
}

bool is_list_command(std::u16string_view command) {
  return equals_ignoring_ascii_case(command, u"insertorderedlist") ||
         equals_ignoring_ascii_case(command, u"insertunorderedlist");
}

/// "center" for "justifyCenter".
std::u16string alignment_of_command(std::u16string_view command) {
  constexpr std::u16string_view prefix = u"justify";
  const std::u16string name = ascii_lower(command);
  if (!name.starts_with(prefix)) return {};
  const std::u16string side = name.substr(prefix.size());
  return side == u"full" ? u"justify" : side;
}

bool is_in_one_list(const Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (!range.start) return false;
  const dom::Node* common = dom::common_ancestor(*range.start.node, *range.end.node);
  return dom::enclosing(*common, dom::Tag::Ul) || dom::enclosing(*common, dom::Tag::Ol);
}

/// Items go with their lists, as by the Tab key. False where the command itself has to act.
bool move_items(Editor& editor, bool inward) {
  if (!is_in_one_list(editor)) return !inward && leave_quotations(editor);
  if (inward) return indent_items(editor);
  if (is_in_nested_list(editor)) return outdent_items(editor);
  // At the outermost level the button leads out of the list.
  leave_lists(editor);
  return true;
}

Element* list_around(Node* node) {
  while (node && !node->is(dom::Tag::Ul) && !node->is(dom::Tag::Ol)) node = node->parent();
  return static_cast<Element*>(node);
}

/// White space at an edge of a node.
NodeList filling_at(const Element& holder, bool at_end) {
  NodeList filling;
  for (Node* node = at_end ? holder.last_child() : holder.first_child();
       node && node->is_text() && is_filling(*node);
       node = at_end ? node->previous_sibling() : node->next_sibling())
    filling.insert(at_end ? filling.begin() : filling.end(), Ref<Node>(node));
  return filling;
}

/// A list that a command has made takes in the white space beside its lines, which parts them from their
/// neighbours in the source: it goes back there.
void give_back_filling(Element& list) {
  const Ref<Node> holder(list.parent());
  if (const NodeList before = filling_at(list, false); !before.empty())
    move_run_preserving_ranges(before, *holder, &list);
  if (const NodeList after = filling_at(list, true); !after.empty())
    move_run_preserving_ranges(after, *holder, list.next_sibling());
}

/// Between blocks there is no line to act on: one is made, as for what is typed there.
void make_line_between_blocks(Editor& editor) {
  const Selection& selection = editor.selection();
  const dom::Boundary caret = selection.focus();
  if (selection.type() != SelectionType::Text || !selection.collapsed() || caret.node->is_text()) return;
  if (!is_editing_host(*caret.node) || !has_visible_child(*caret.node)) return;
  const Node* after = dom::child_at(*caret.node, caret.offset);
  const Node* before = after ? after->previous_sibling() : caret.node->last_child();
  const auto stands_apart = [](const Node* node) {
    return !node || is_block_piece(*node) || is_filling(*node);
  };
  if (!stands_apart(before) || !stands_apart(after)) return;
  const Ref<Element> line = editor.document().create_element(dom::Name(editor.paragraph_separator()));
  append_line_break(*line);
  insert_all(gap_at(caret), {line});
  editor.selection().collapse({line.get(), 0});
}

bool make_list(Editor& editor, std::u16string_view command, std::u16string_view value) {
  const bool was_list = list_around(editor.selection().range().start.node) != nullptr;
  const bool done = toggle_list_as_writer(editor, command) || editor.execute(command, value);
  Element* list = was_list ? nullptr : list_around(editor.selection().range().end.node);
  if (list && is_editable(*list)) give_back_filling(*list);
  return done;
}

bool execute_in_text(Editor& editor, std::u16string_view command, std::u16string_view value) {
  const bool inward = equals_ignoring_ascii_case(command, u"indent");
  const bool moves = inward || equals_ignoring_ascii_case(command, u"outdent");
  const std::u16string alignment = alignment_of_command(command);
  if (!moves && !is_list_command(command) && alignment.empty()) return editor.execute(command, value);
  if (!editor.enabled(command)) return false;
  const HeldSelection held(editor.selection());
  const dom::UndoStep step(editor.document().journal(), command);
  make_line_between_blocks(editor);
  if (is_list_command(command)) return make_list(editor, command, value);
  const bool done = moves ? move_items(editor, inward) : align_lines(editor, alignment);
  return done || editor.execute(command, value);
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
  if (!acts_on_text(command) && !acts_on_lines(command)) return execute_in_text(editor, command, value);
  editor.document().journal().end_typing_run();
  const Gesture gesture(editor, command, dom::StepJoin::Never, Compare::Yes);
  std::vector<Ref<Element>> cells = selected_cells(editor);
  return cells.empty() ? execute_in_text(editor, command, value)
                       : execute_in_cells(editor, std::move(cells), command, value);
}

}  // namespace tvx::editing
