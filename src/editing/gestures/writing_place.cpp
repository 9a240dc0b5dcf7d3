#include "tvx/editing/gestures/writing_place.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/deletion/islands.h"
#include "tvx/editing/deletion/line_deletion.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/gap_caret.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tables/table_caret.h"
#include "tvx/editing/tables/table_grid.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// The gap between the children of `holder` that a position stands in or at; a text or an element of a line
/// around the position counts as a child.
Gap gap_among_children(const Boundary& place, Element& holder) {
  Node* child = place.node;
  if (child == &holder) return Gap::at(place);
  while (child->parent() != &holder) child = child->parent();
  return Gap::before(*child);
}

Node* passed_filling(Node* node, bool backward) {
  while (node && is_filling(*node)) node = backward ? node->previous_sibling() : node->next_sibling();
  return node;
}

/// A position where nothing of a line is: on each side a block or the edge of what holds them.
struct Between {
  Element* holder = nullptr;  // null: the position is in a line
  Node* before = nullptr;
  Node* after = nullptr;
};

Between between_blocks(const Boundary& caret) {
  Element* holder = block_around(caret);
  if (!holder || (caret.node->is_text() && !is_filling(*caret.node))) return {};
  const Gap gap = gap_among_children(caret, *holder);
  Node* before = passed_filling(gap.previous(), true);
  Node* after = passed_filling(gap.next, false);
  if (!before && !after) return is_editing_host(*holder) ? Between{holder} : Between{};
  if ((before && !is_block_node(*before)) || (after && !is_block_node(*after))) return {};
  // The line of an item comes before its lists.
  if (holder->is(Tag::Li) && !before && is_list(*after)) return {};
  return {holder, before, after};
}

bool may_enter(const Node* block) {
  return block && is_editable(*block) &&
         (is_text_block(*block) || is_list(*block) || block->is(Tag::Blockquote));
}

bool make_paragraph_at(Editor& editor, Element& holder, Node* before) {
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  if (!is_allowed_child_name(name, holder)) return false;
  const RecordedLook style = record_current_overrides(editor);
  const Ref<Node> paragraph(editor.document().create_element(name));
  dom::insert(holder, paragraph, before);
  append_line_break(*paragraph);
  editor.selection().collapse({paragraph.get(), 0});
  restore_look(style, editor);
  return true;
}

/// Among the items of a list there is no line: the nearest is in an item.
bool leave_list_itself(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  const Element* block = block_around(caret);
  if (!block || !is_list_of_any_kind(*block)) return false;
  const Boundary place = normalized_caret_place(caret.node->is_text() ? dom::before(*caret.node) : caret);
  if (!dom::is_ancestor(*block, *place.node)) return false;
  collapse_keeping_style(editor, place);
  return true;
}

}  // namespace

void collapse_keeping_style(Editor& editor, Boundary place) {
  const RecordedLook style = record_current_overrides(editor);
  editor.selection().collapse(place);
  restore_look(style, editor);
}

bool ends_in_lines_that_join(Editor& editor) {
  const dom::Range range = editor.selection().range();
  return range.start && !between_blocks(range.start).holder &&
         cell_around(range.start.node) == cell_around(range.end.node) && !is_gap_place(range.start) &&
         !is_gap_place(range.end);
}

void start_in_line(Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (editor.selection().type() != SelectionType::Text || range.collapsed()) return;
  const Between between = between_blocks(range.start);
  if (!between.holder || !may_enter(between.after) ||
      !dom::is_inclusive_ancestor(*between.after, *range.end.node))
    return;
  const Boundary place = normalized_caret_place({between.after, 0});
  if (dom::compare(place, range.end) <= 0) editor.selection().set(place, range.end);
}

void take_out_selection(Editor& editor, Wrappers wrappers) {
  start_in_line(editor);
  if (editor.selection().collapsed()) return;
  leave_line_end(editor);
  if (empty_selected_cells(editor)) return;
  remove_islands(editor);
  delete_selection(editor, {.block_merging = ends_in_lines_that_join(editor),
                            .strip_wrappers = wrappers == Wrappers::Strip});
}

bool stand_in_line(Editor& editor, BetweenBlocks wanted) {
  if (!editor.selection().collapsed()) return false;
  if (fill_gap(editor)) return true;
  leave_table_parts(editor);
  leave_list_itself(editor);
  const Between between = between_blocks(editor.selection().focus());
  if (!between.holder) {
    wrap_line_beside_blocks(editor);
    return false;
  }
  if (wanted == BetweenBlocks::GoToNextLine && may_enter(between.after)) {
    const Boundary place = normalized_caret_place({between.after, 0});
    if (dom::is_inclusive_ancestor(*between.after, *place.node)) {
      collapse_keeping_style(editor, place);
      return false;
    }
  }
  return make_paragraph_at(editor, *between.holder, between.after);
}

namespace {

bool has_block_beside_line(const Element& block) {
  for (const Node* child = block.first_child(); child; child = child->next_sibling())
    if (is_block_node(*child) && !(block.is(Tag::Li) && is_list(*child))) return true;
  return false;
}

/// The line of inline nodes at a position among the children of `holder`.
NodeList line_at(Element& holder, const Boundary& caret) {
  Node* child = caret.node == &holder ? dom::child_at(holder, caret.offset) : caret.node;
  while (child && child->parent() != &holder) child = child->parent();
  if (!child || is_block_piece(*child))
    child = caret.node == &holder && child ? child->previous_sibling() : child;
  if (!child && caret.node == &holder) child = holder.last_child();
  NodeList line;
  if (!child || is_block_piece(*child)) return line;
  Node* first = child;
  while (first->previous_sibling() && !is_block_piece(*first->previous_sibling()) &&
         !first->previous_sibling()->is(Tag::Br))
    first = first->previous_sibling();
  for (Node* node = first; node && !is_block_piece(*node); node = node->next_sibling()) {
    line.emplace_back(node);
    if (node->is(Tag::Br)) break;
  }
  while (!line.empty() && is_filling(*line.back())) line.pop_back();
  return line;
}

}  // namespace

void wrap_line_beside_blocks(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  Element* block = block_around(caret);
  static const auto holds_lines = [](const Element& element) {
    return element.is(Tag::Div) || element.is(Tag::Td) || element.is(Tag::Th) || element.is(Tag::Li) ||
           element.is(Tag::Blockquote);
  };
  if (!block || (caret.node->is_text() && is_editing_host(*block))) return;
  if (!is_editing_host(*block) && !(holds_lines(*block) && has_block_beside_line(*block))) return;
  const NodeList line = line_at(*block, caret);
  if (line.empty()) return;
  // Lines of the page that stand bare in the body stay so; one that was left empty between blocks doesn't.
  if (is_editing_host(*block)) {
    const Node* before = passed_filling(line.front()->previous_sibling(), true);
    if (line.size() > 1 || !line.front()->is(Tag::Br) || (before && !is_block_node(*before))) return;
  }
  const Ref<Element> paragraph =
      editor.document().create_element(dom::Name{std::u16string_view(editor.paragraph_separator())});
  const RecordedLook style = record_current_overrides(editor);
  dom::insert(*block, paragraph, line.front().get());
  move_run_preserving_ranges(line, *paragraph, nullptr);
  if (!dom::is_inclusive_ancestor(*paragraph, *editor.selection().focus().node))
    editor.selection().collapse({paragraph.get(), 0});
  restore_look(style, editor);
}

}  // namespace tvx::editing
