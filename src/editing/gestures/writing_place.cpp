#include "tvx/editing/gestures/writing_place.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/deletion/islands.h"
#include "tvx/editing/deletion/line_deletion.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/gap_caret.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/layout/source_filling.h"
#include "tvx/editing/tables/table_caret.h"
#include "tvx/editing/tables/table_grid.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/hard_spaces.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

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
  const Boundary among = caret.node->is_text() ? dom::before(*caret.node) : caret;
  Boundary place = normalized_caret_place(among);
  if (!dom::is_ancestor(*block, *place.node))
    place = next_caret_place(among, Direction::Backward, Granularity::Character).value_or(place);
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
  return range.start && starts_in_line(editor) &&
         cell_around(range.start.node) == cell_around(range.end.node) && !is_gap_place(range.start) &&
         !is_gap_place(range.end);
}

namespace {

bool has_block_beside_line(const Element& block) {
  for (const Node* child = block.first_child(); child; child = child->next_sibling())
    if (is_block_node(*child) && !(block.is(Tag::Li) && is_list(*child))) return true;
  return false;
}

Ref<Element> wrap(Editor& editor, Element& block, const NodeList& line) {
  const Ref<Element> paragraph =
      editor.document().create_element(dom::Name{std::u16string_view(editor.paragraph_separator())});
  const RecordedLook style = record_current_overrides(editor);
  dom::insert(block, paragraph, line.front().get());
  move_run_preserving_ranges(line, *paragraph, nullptr);
  give_back_filling(editor, *paragraph);
  restore_look(style, editor);
  return paragraph;
}

void stay_in(Editor& editor, Element& paragraph) {
  const Boundary caret = editor.selection().focus();
  if (dom::is_inclusive_ancestor(paragraph, *caret.node)) return;
  const bool comes_after = dom::compare(caret, dom::before(paragraph)) > 0 && !is_empty_line(paragraph);
  collapse_keeping_style(editor, {&paragraph, comes_after ? dom::length_of(paragraph) : 0});
}

bool ends_with_break(const Node& node) { return dom::last_within(node)->is(Tag::Br); }

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
         !ends_with_break(*first->previous_sibling()))
    first = first->previous_sibling();
  for (Node* node = first; node && !is_block_piece(*node); node = node->next_sibling()) {
    line.emplace_back(node);
    if (ends_with_break(*node)) break;
  }
  while (!line.empty() && is_filling(*line.back())) line.pop_back();
  while (!line.empty() && is_filling(*line.front())) line.erase(line.begin());
  return line;
}

}  // namespace

namespace {

/// The line at a position in a paragraph of its own, if it is one that should have one.
Ref<Element> wrapped_line(Editor& editor, const Boundary& caret) {
  Element* block = block_around(caret);
  static const auto holds_lines = [](const Element& element) {
    return element.is(Tag::Div) || element.is(Tag::Td) || element.is(Tag::Th) || element.is(Tag::Li) ||
           element.is(Tag::Blockquote);
  };
  if (!block || (caret.node->is_text() && !is_filling(*caret.node) && is_editing_host(*block))) return {};
  if (!is_editing_host(*block) && !(holds_lines(*block) && has_block_beside_line(*block))) return {};
  const NodeList line = line_at(*block, caret);
  if (line.empty()) return {};
  // Lines of the page that stand bare in the body stay so; one that was left empty between blocks doesn't.
  if (is_editing_host(*block)) {
    const Node* before = passed_filling(line.front()->previous_sibling(), true);
    if (line.size() > 1 || !line.front()->is(Tag::Br) || (before && !is_block_node(*before))) return {};
  }
  return wrap(editor, *block, line);
}

}  // namespace

void wrap_line_at(Editor& editor, Element& holder, const Boundary& place) {
  const NodeList line = line_at(holder, place);
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  if (line.empty() || !is_allowed_child_name(name, holder)) return;
  const bool holds_caret = block_around(editor.selection().focus()) == &holder;
  const Ref<Element> paragraph = wrap(editor, holder, line);
  if (holds_caret) stay_in(editor, *paragraph);
}

void wrap_line_beside_blocks(Editor& editor) {
  if (const Ref<Element> paragraph = wrapped_line(editor, editor.selection().focus()))
    stay_in(editor, *paragraph);
}

namespace {

/// Nothing is seen between the position and the edge of its line.
bool is_line_edge(const Boundary& place, Direction direction) {
  const Content beside = content_beside(place, direction);
  if (beside.kind != ContentKind::Text) return beside.kind != ContentKind::Object;
  return direction == Direction::Backward && beside.text().data()[beside.to - 1] == u'\n' &&
         !collapses(beside.text());
}

}  // namespace

bool starts_in_line(Editor& editor) { return !between_blocks(editor.selection().range().start).holder; }

void hold_emptied_line(Editor& editor, Wrappers wrappers) {
  if (!editor.selection().collapsed()) return;
  const Boundary caret = editor.selection().focus();
  const Element* block = block_around(caret);
  if (!block || !editing_host_of(*caret.node) || !is_allowed_child_name(dom::Name(Tag::Br), *block)) return;
  if (content_beside(caret, Direction::Forward).kind == ContentKind::LineBreak) return;
  if (!is_line_edge(caret, Direction::Backward) || !is_line_edge(caret, Direction::Forward)) return;
  const Ref<Node> line_break(editor.document().create_element(Tag::Br));
  insert_all(gap_at(wrappers == Wrappers::Keep ? caret : without_empty_looks(caret)), {line_break});
  collapse_keeping_style(editor, dom::before(*line_break));
}

void start_in_line(Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (editor.selection().type() != SelectionType::Text || range.collapsed()) return;
  const Node* first =
      range.start.node->is_text() ? nullptr : dom::child_at(*range.start.node, range.start.offset);
  if (first && first->is(Tag::Br) && is_editing_host(*range.start.node)) {
    if (const Ref<Element> paragraph = wrapped_line(editor, range.start))
      editor.selection().set({paragraph.get(), 0}, editor.selection().range().end);
    return;
  }
  const Between between = between_blocks(range.start);
  if (!between.holder || !may_enter(between.after)) return;
  const bool ends_in_another = is_text_block(*between.after) && !between_blocks(range.end).holder &&
                               cell_around(between.after) == cell_around(range.end.node);
  if (!ends_in_another && !dom::is_inclusive_ancestor(*between.after, *range.end.node)) return;
  const Boundary place = normalized_caret_place({between.after, 0});
  if (dom::compare(place, range.end) <= 0) editor.selection().set(place, range.end);
}

void take_out_selection(Editor& editor, Wrappers wrappers) {
  start_in_line(editor);
  if (editor.selection().collapsed() || empty_selected_cells(editor)) return;
  remove_islands(editor);
  leave_line_end(editor);
  HardSpaceKeeper hard_spaces(editor.selection().range());
  delete_selection(editor, {.block_merging = ends_in_lines_that_join(editor),
                            .strip_wrappers = wrappers == Wrappers::Strip});
  hard_spaces.put_back();
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
  return make_paragraph_at(editor, *between.holder, between.new_block_before());
}

namespace {

/// The next break on one side of a position in its line; null where the line ends otherwise.
Node* break_beside(const Boundary& place, Direction direction, const Element& holder) {
  ContentWalk walk(place, direction, &holder);
  for (;;) {
    const Content met = walk.next();
    if (met.kind == ContentKind::LineBreak) return met.node;
    if (met.kind != ContentKind::Text && met.kind != ContentKind::Object) return nullptr;
  }
}

/// Parts the elements of a line after a break in them; the caret stays beside what it stands beside.
void part_after(Editor& editor, Element& holder, Node& line_break) {
  if (line_break.parent() == &holder) return;
  const Boundary caret = editor.selection().focus();
  const Ref<Node> text(caret.node->is_text() ? caret.node : nullptr);
  const Ref<Node> next(text ? nullptr : dom::child_at(*caret.node, caret.offset));
  const Ref<Node> before(next || text ? nullptr : caret.node->last_child());
  const RecordedLook style = record_current_overrides(editor);
  split_up_to(holder, dom::after(line_break));
  if (text) editor.selection().collapse({text.get(), caret.offset});
  if (next) editor.selection().collapse(dom::before(*next));
  if (before) editor.selection().collapse(dom::after(*before));
  restore_look(style, editor);
}

/// Enter parts such a block, with the elements of its lines. A caption of a figure, say, it doesn't.
bool is_parted_at_lines(const Element& block) {
  if (!is_text_block(block)) return false;
  for (const Node* node = &block; node && !is_editing_host(*node); node = node->parent())
    if (is_single_line_container(*node)) return true;
  return false;
}

}  // namespace

void wrap_line_parted_in_style(Editor& editor) {
  Element* block = block_around(editor.selection().focus());
  if (!block || is_parted_at_lines(*block)) return;
  Node* before = break_beside(editor.selection().focus(), Direction::Backward, *block);
  Node* after = break_beside(editor.selection().focus(), Direction::Forward, *block);
  const auto is_in_style = [&](const Node* line_break) {
    return line_break && line_break->parent() != block;
  };
  if (!is_in_style(before) && !is_in_style(after)) return;
  const Ref<Node> held_after(after);
  if (before) part_after(editor, *block, *before);
  if (after) part_after(editor, *block, *held_after);
  wrap_line_at(editor, *block, editor.selection().focus());
}

}  // namespace tvx::editing
