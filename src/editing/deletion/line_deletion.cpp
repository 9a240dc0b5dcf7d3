#include "tvx/editing/deletion/line_deletion.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool begins_line(const Boundary& place) {
  const ContentKind before = content_beside(place, Direction::Backward).kind;
  return before != ContentKind::Text && before != ContentKind::Object && before != ContentKind::LineBreak;
}

/// Whether nothing that is seen stands in the block before the position.
bool begins(const Boundary& place, const Element& block) {
  const Content before = content_beside(place, Direction::Backward);
  return before.kind == ContentKind::LeaveBlock && before.node == &block;
}

Node* visible_before(const Node& node) {
  Node* before = node.previous_sibling();
  while (before && !is_visible(*before)) before = before->previous_sibling();
  return before;
}

Node* visible_behind(const Node& node) {
  Node* behind = node.next_sibling();
  while (behind && !is_visible(*behind)) behind = behind->next_sibling();
  return behind;
}

bool is_empty_text_block(const Node* node) {
  return node && is_text_block(*node) && is_editable(*node) && is_empty_line(*node);
}

/// The outermost block that begins with this one and doesn't hold the line after it.
Node* outermost_beginning_with(Node* block, const Node& behind) {
  const Node* common = dom::common_ancestor(*block, behind);
  while (block->parent() != common && !visible_before(*block)) block = block->parent();
  return block;
}

/// What is seen of a selection that begins with a line and ends where a later one begins.
std::optional<dom::Range> whole_lines(const Selection& selection) {
  const dom::Range range = selection.range();
  if (selection.type() != SelectionType::Text || range.collapsed()) return std::nullopt;
  const dom::Range seen = shrunk_to_characters(range);
  if (seen.collapsed() || !begins_line(seen.start) || !takes_line_end(range, seen)) return std::nullopt;
  return seen;
}

}  // namespace

void leave_line_end(Editor& editor) {
  if (const auto lines = whole_lines(editor.selection())) editor.selection().set(*lines);
}

namespace {

/// Where whole lines begin: at their block, or, where that goes on before or after them, at the first itself.
Boundary start_of_lines(const Boundary& line, Element& block, Node& behind) {
  if (dom::is_ancestor(block, behind) || !begins(line, block)) return line;
  return dom::before(*outermost_beginning_with(&block, behind));
}

/// Where they end. White space before the line that stays is that of its line in the source.
Boundary end_of_lines_before(const Boundary& line, Element& block, bool is_bare) {
  if (is_bare) return line.node->is_text() ? Boundary{line.node, 0} : line;
  const Node* indentation = block.previous_sibling();
  const bool keeps = indentation && indentation->is_text() && is_filling(*indentation);
  return keeps ? dom::before(*indentation) : Boundary{&block, 0};
}

}  // namespace

bool delete_selected_lines(Editor& editor) {
  Selection& selection = editor.selection();
  const auto lines = whole_lines(selection);
  if (!lines) return false;
  const auto next = next_caret_place(lines->end, Direction::Forward, Granularity::Character);
  Element* first = block_around(lines->start);
  const Ref<Element> behind(block_around(*next));
  if (!first || !behind || first == behind || !in_same_editing_host(*first, *behind)) return false;
  // A line may stand in what holds the other's block. That of an item is one with the lists in it.
  const bool starts_bare = dom::is_ancestor(*first, *behind), ends_bare = dom::is_ancestor(*behind, *first);
  if ((starts_bare && is_text_block(*first)) || (ends_bare && is_text_block(*behind))) return false;
  const dom::LiveRange stays(editor.document(), {*next, *next});
  selection.set(start_of_lines(lines->start, *first, *behind),
                end_of_lines_before(*next, *behind, ends_bare));
  delete_selection(editor, {.block_merging = false});
  if (behind->parent()) selection.collapse(normalized_caret_place(stays.start()));
  return true;
}

bool delete_empty_line_backward(Editor& editor) {
  const Boundary caret = editor.selection().range().start;
  const Ref<Element> block(block_around(caret));
  if (!editor.selection().collapsed() || !block || !begins(caret, *block)) return false;
  Node* before = visible_before(*block);
  if (is_empty_text_block(before) && is_text_block(*block)) {
    dom::remove(*before);
    return true;
  }
  const bool ends_in_line =
      before && is_editable(*before) && (block->is(Tag::Li) ? before->is(Tag::Li) : is_text_block(*before));
  if (!is_empty_text_block(block.get()) || !ends_in_line) return false;
  dom::remove(*block);
  editor.selection().collapse(end_of_lines(*before).place());
  return true;
}

bool delete_empty_line_forward(Editor& editor) {
  const Boundary caret = editor.selection().range().start;
  const Ref<Element> block(block_around(caret));
  if (!editor.selection().collapsed() || !is_empty_text_block(block.get())) return false;
  const Node* behind = visible_behind(*block);
  const auto next =
      next_caret_place({block.get(), dom::length_of(*block)}, Direction::Forward, Granularity::Character);
  if (!behind || behind->is(Tag::Table) || !next || !dom::is_inclusive_ancestor(*behind, *next->node))
    return false;
  const dom::LiveRange place(editor.document(), {*next, *next});
  dom::remove(*block);
  editor.selection().collapse(place.start());
  return true;
}

}  // namespace tvx::editing
