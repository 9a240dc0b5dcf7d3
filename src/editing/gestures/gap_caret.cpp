#include "tvx/editing/gestures/gap_caret.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// A block that no caret stands at the edge of.
bool is_closed(const Node& node) {
  if (node.is(Tag::Table) || node.is(Tag::Hr)) return true;
  return node.is_element() && is_block_node(node) && !is_editable(node);
}

bool may_hold_paragraph(const Editor* editor, const Node& node) {
  if (!node.is_element() || !(is_editable(node) || is_editing_host(node))) return false;
  const std::u16string_view name = editor ? std::u16string_view(editor->paragraph_separator()) : u"p";
  return is_allowed_child_name(dom::Name(name), node);
}

/// What stands beside a gap, whatever nobody sees left out.
Node* seen_beside(const Gap& gap, bool before) {
  Node* node = before ? gap.previous() : gap.next;
  while (node && (is_filling(*node) || is_invisible(*node)))
    node = before ? node->previous_sibling() : node->next_sibling();
  return node;
}

}  // namespace

bool is_gap_place(const Gap& gap) {
  if (gap.node->is_text() || !may_hold_paragraph(nullptr, *gap.node)) return false;
  const Node* before = seen_beside(gap, true);
  const Node* after = seen_beside(gap, false);
  if (before && !is_closed(*before)) return false;
  if (after && !is_closed(*after)) return false;
  return before || after;
}

bool is_gap_place(const Boundary& place) {
  return place && place.node->is_element() && is_gap_place(Gap::at(place));
}

std::optional<Boundary> gap_on_the_way(const Boundary& from, Direction direction) {
  if (!editing_host_of(*from.node)) return std::nullopt;
  const bool forward = direction == Direction::Forward;
  const std::optional<Boundary> goal = next_caret_place(from, direction, Granularity::Character);
  Gap gap =
      from.node->is_text() ? (forward ? Gap::after(*from.node) : Gap::before(*from.node)) : Gap::at(from);
  if (from.node->is_text() && goal && goal->node == from.node) return std::nullopt;
  const bool starts_in_gap = is_gap_place(from);
  bool at_start = !from.node->is_text();
  // Within one gap white space may stand on both sides of the caret.
  const Node* passed = nullptr;
  // Between the same two siblings that are seen one position is as good as the other.
  std::optional<bool> fits;
  for (;;) {
    if (!at_start && (!starts_in_gap || passed) && !fits) fits = is_gap_place(gap);
    if (!at_start && (!starts_in_gap || passed) && *fits) {
      const Boundary place = gap.boundary();
      if (!goal || (forward ? dom::compare(place, *goal) < 0 : dom::compare(place, *goal) > 0)) return place;
      return std::nullopt;
    }
    at_start = false;
    Node* child = forward ? gap.next : gap.previous();
    if (!child) {
      if (is_editing_host(*gap.node) || !gap.node->parent()) return std::nullopt;
      passed = gap.node;
      fits.reset();
      gap = forward ? Gap::after(*gap.node) : Gap::before(*gap.node);
    } else if (is_invisible(*child) || child->is_text() || !child->is_element() || child->is(Tag::Br) ||
               child->is(Tag::Hr) || is_object(*child) || !is_editable(*child)) {
      if (!is_filling(*child)) passed = child;
      if (!is_filling(*child) && !is_invisible(*child)) fits.reset();
      gap = forward ? Gap::after(*child) : Gap::before(*child);
    } else {
      passed = child;
      fits.reset();
      gap = forward ? Gap::start_of(*child) : Gap::end_of(*child);
    }
    if (goal) {
      const Boundary here = gap.boundary();
      if (forward ? dom::compare(here, *goal) > 0 : dom::compare(here, *goal) < 0) return std::nullopt;
    }
  }
}

bool move_to_gap(Editor& editor, Direction direction, Extend extend) {
  Selection& selection = editor.selection();
  if (selection.type() != SelectionType::Text || (!selection.collapsed() && extend == Extend::No))
    return false;
  const auto place = gap_on_the_way(selection.focus(), direction);
  if (!place) return false;
  editor.document().journal().end_typing_run();
  selection.set(extend == Extend::Yes ? selection.anchor() : *place, *place);
  return true;
}

void leave_selected_block(Editor& editor, Direction direction) {
  Selection& selection = editor.selection();
  const Boundary caret = selection.focus();
  if (!selection.collapsed() || caret.node->is_text() || is_gap_place(caret)) return;
  Boundary place = normalized_caret_place(caret);
  if (direction == Direction::Backward && block_around(place) != block_around(caret))
    place = next_caret_place(caret, direction, Granularity::Character).value_or(place);
  if (place != caret) selection.collapse(place);
}

void leave_blocks_edge(Editor& editor) {
  Selection& selection = editor.selection();
  if (selection.type() != SelectionType::Text || !selection.collapsed()) return;
  const Boundary caret = selection.focus();
  if (caret.node->is_text() || is_gap_place(caret)) return;
  const Between between = between_blocks(caret);
  if (!between.before && !between.after) return;
  const Boundary place = normalized_caret_place(caret);
  if (place == caret) return;
  const RecordedLook style = record_current_overrides(editor);
  selection.collapse(place);
  restore_look(style, editor);
}

bool fill_gap(Editor& editor) {
  Selection& selection = editor.selection();
  if (!selection.collapsed() || !is_gap_place(selection.focus())) return false;
  const Boundary caret = selection.focus();
  if (!may_hold_paragraph(&editor, *caret.node)) return false;
  const RecordedLook style = record_current_overrides(editor);
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  const Ref<Node> paragraph(editor.document().create_element(name));
  dom::insert(*caret.node, paragraph, dom::child_at(*caret.node, caret.offset));
  append_line_break(*paragraph);
  selection.collapse({paragraph.get(), 0});
  restore_look(style, editor);
  return true;
}

bool leave_gap_backward(Editor& editor) {
  Selection& selection = editor.selection();
  if (!selection.collapsed() || !is_gap_place(selection.focus())) return false;
  Node* before = seen_beside(Gap::at(selection.focus()), true);
  if (!before) return true;
  if (!before->is(Tag::Table)) {
    const dom::UndoStep step(editor.document().journal(), u"Backspace");
    const Ref<Node> held(before), holder(before->parent());
    dom::remove(*before);
    if (!has_visible_child(*holder)) fill_gap(editor);
    if (!is_gap_place(selection.focus())) selection.collapse(normalized_caret_place(selection.focus()));
    return true;
  }
  move_caret(editor, Direction::Backward, Granularity::Character, Extend::No);
  return true;
}

bool leave_link(Editor& editor, Direction direction) {
  Selection& selection = editor.selection();
  const Boundary caret = selection.focus();
  const bool forward = direction == Direction::Forward;
  // Beside a picture the caret stands in the link itself.
  if (!caret.node->is_text() && !is_inline_node(*caret.node)) return false;
  if (caret.offset != (forward ? dom::length_of(*caret.node) : 0)) return false;
  Node* node = caret.node;
  for (; node->parent() && !(forward ? node->next_sibling() : node->previous_sibling());
       node = node->parent()) {
    if (!is_inline_node(*node) || !is_editable(*node)) return false;
    if (node->is(Tag::A)) break;
  }
  if (!node->is(Tag::A) || !node->parent() || !is_editable(*node->parent())) return false;
  editor.document().journal().end_typing_run();
  selection.collapse(forward ? dom::after(*node) : dom::before(*node));
  return true;
}

}  // namespace tvx::editing
