#include "tvx/editing/gestures/quotations.h"

#include <algorithm>

#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// The innermost quotation around a node, not beyond a cell.
Element* quotation_around(Node* node) {
  for (; node && !is_editing_host(*node); node = node->parent()) {
    if (node->is(Tag::Td) || node->is(Tag::Th)) return nullptr;
    if (node->is(Tag::Blockquote) && is_editable(*node)) return static_cast<Element*>(node);
  }
  return nullptr;
}

/// The quotations that the selection touches, none of them in another.
NodeList selected_quotations(const dom::Range& range) {
  NodeList quotations;
  const auto note = [&](Element* quotation) {
    if (quotation && std::ranges::none_of(quotations, [&](const Ref<Node>& other) {
          return dom::is_inclusive_ancestor(*other, *quotation);
        }))
      quotations.emplace_back(quotation);
  };
  note(quotation_around(range.start.node));
  walk_contained(range, [&](Node& node) {
    if (!node.is(Tag::Blockquote) || !is_editable(node)) return Visit::Children;
    note(static_cast<Element*>(&node));
    return Visit::Skip;
  });
  // One that holds what was found before takes its place.
  if (Element* last = quotation_around(range.end.node)) {
    std::erase_if(quotations, [&](const Ref<Node>& other) { return dom::is_ancestor(*last, *other); });
    note(last);
  }
  return quotations;
}

/// The child of `holder` that a position stands in or before; the last one at the end.
Node* child_at_place(const Node& holder, const Boundary& place) {
  if (place.node == &holder) {
    Node* child = dom::child_at(holder, place.offset);
    return child ? child : holder.last_child();
  }
  Node* node = place.node;
  while (node && node->parent() != &holder) node = node->parent();
  return node;
}

bool is_piece_of_line(const Node* node) { return node && !is_block_piece(*node); }

/// Lines that stand in a quotation without a block of their own get one.
void wrap_lines(Editor& editor, const NodeList& nodes) {
  NodeList line;
  const auto wrap = [&] {
    if (std::ranges::all_of(line, [](const Ref<Node>& node) { return is_filling(*node); }))
      return line.clear();
    const Ref<Element> paragraph =
        editor.document().create_element(dom::Name{std::u16string_view(editor.paragraph_separator())});
    dom::insert(*line.front()->parent(), paragraph, line.front().get());
    move_run_preserving_ranges(line, *paragraph, nullptr);
    remove_extraneous_line_breaks_at_end_of(paragraph);
    line.clear();
  };
  for (const Ref<Node>& node : nodes) {
    if (!is_piece_of_line(node.get())) {
      wrap();
      continue;
    }
    line.push_back(node);
    if (node->is(Tag::Br)) wrap();
  }
  wrap();
}

NodeList run_of(Node* first, Node* last) {
  NodeList run;
  for (Node* node = first; node; node = node->next_sibling()) {
    run.emplace_back(node);
    if (node == last) break;
  }
  return run;
}

/// The children of a quotation that are selected, as whole lines.
NodeList selected_children(Element& quotation, const dom::Range& range) {
  Node* first = child_at_place(quotation, range.start);
  Node* last = child_at_place(quotation, range.end);
  if (!first) first = quotation.first_child();
  if (!last) last = quotation.last_child();
  while (is_piece_of_line(first) && is_piece_of_line(first->previous_sibling()) &&
         !first->previous_sibling()->is(Tag::Br))
    first = first->previous_sibling();
  while (is_piece_of_line(last) && !last->is(Tag::Br) && is_piece_of_line(last->next_sibling()))
    last = last->next_sibling();
  return run_of(first, last);
}

void take_out(Editor& editor, Element& quotation) {
  const Ref<Element> held(quotation);
  const dom::Range range = editor.selection().range();
  wrap_lines(editor, selected_children(quotation, range));
  const NodeList run = selected_children(quotation, editor.selection().range());
  if (run.empty()) return;
  const NodeList rest = run_of(run.back()->next_sibling(), nullptr);
  Node& holder = *quotation.parent();
  if (std::ranges::any_of(rest, [](const Ref<Node>& node) { return is_visible(*node); })) {
    const Ref<Node> copy = dom::clone(quotation, editor.document(), dom::Deep::No);
    dom::remove_attribute(static_cast<Element&>(*copy), dom::names::id);
    dom::insert(holder, copy, quotation.next_sibling());
    move_run_preserving_ranges(rest, *copy, nullptr);
  }
  move_run_preserving_ranges(run, holder, quotation.next_sibling());
  if (!has_visible_child(quotation)) remove_keeping_comments(quotation);
}

Node* seen_after(const Node& node) {
  Node* after = node.next_sibling();
  while (after && is_filling(*after)) after = after->next_sibling();
  return after;
}

}  // namespace

bool leave_quotations(Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (!range.start || editor.selection().type() != SelectionType::Text) return false;
  const NodeList quotations = selected_quotations(range);
  for (const Ref<Node>& quotation : quotations)
    if (is_block_node(*quotation->parent())) take_out(editor, static_cast<Element&>(*quotation));
  return !quotations.empty();
}

bool leave_quotation_at_end(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  Element* line = block_around(caret);
  if (!line || !(line->is(Tag::P) || line->is(Tag::Div)) || !is_empty_line(*line)) return false;
  Node* quotation = line->parent();
  if (!quotation || !quotation->is(Tag::Blockquote) || !is_editable(*quotation) || seen_after(*line))
    return false;
  const Ref<Node> held(line), left(quotation);
  if (!is_allowed_child(*line, *quotation->parent())) return false;
  move_preserving_ranges(held, *left->parent(), left->next_sibling());
  if (!has_visible_child(*left)) remove_keeping_comments(*left);
  editor.selection().collapse({held.get(), 0});
  return true;
}

bool leave_quotation_at_start(Editor& editor) {
  if (!editor.selection().collapsed()) return false;
  const Boundary caret = editor.selection().focus();
  const Element* block = block_around(caret);
  const Content before = content_beside(caret, Direction::Backward);
  if (!block || before.kind != ContentKind::LeaveBlock || before.node != block) return false;
  const Element* quotation = quotation_around(caret.node);
  if (!quotation) return false;
  for (const Node* node = caret.node; node != quotation; node = node->parent())
    if (is_list_of_any_kind(*node)) return false;
  return leave_quotations(editor);
}

}  // namespace tvx::editing
