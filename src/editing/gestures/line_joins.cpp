#include "tvx/editing/gestures/line_joins.h"

#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/gestures/writing_place.h"
#include "tvx/editing/layout/source_filling.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

Node* seen_sibling(const Node& node, bool before) {
  Node* sibling = before ? node.previous_sibling() : node.next_sibling();
  while (sibling && is_filling(*sibling))
    sibling = before ? sibling->previous_sibling() : sibling->next_sibling();
  return sibling;
}

bool holds_one_line(const Node& node) {
  if (!is_editable(node)) return false;
  for (const Node* child = node.first_child(); child; child = child->next_sibling())
    if (is_block_piece(*child)) return false;
  return true;
}

bool is_joinable(const Node* node) {
  static const TagSet tags{Tag::P,  Tag::H1, Tag::H2,  Tag::H3,  Tag::H4,
                           Tag::H5, Tag::H6, Tag::Pre, Tag::Div, Tag::Address};
  return node && tags.has(*node) && holds_one_line(*node);
}

/// The line beside a block, over the edges of quotations and boxes: the last or first line in what is there.
Element* line_beside(Element& block, bool before) {
  Node* node = &block;
  Node* sibling = seen_sibling(*node, before);
  while (!sibling && node->parent() && !is_editing_host(*node->parent()) &&
         (node->parent()->is(Tag::Blockquote) || node->parent()->is(Tag::Div)) &&
         is_editable(*node->parent())) {
    node = node->parent();
    sibling = seen_sibling(*node, before);
  }
  while (sibling && (sibling->is(Tag::Blockquote) || sibling->is(Tag::Div)) && !holds_one_line(*sibling) &&
         is_editable(*sibling)) {
    Node* inner = before ? sibling->last_child() : sibling->first_child();
    while (inner && is_filling(*inner)) inner = before ? inner->previous_sibling() : inner->next_sibling();
    if (!inner) break;
    sibling = inner;
  }
  return is_joinable(sibling) ? static_cast<Element*>(sibling) : nullptr;
}

/// Breaks for the line ends of a preformatted text.
void break_at_line_ends(Element& pre) {
  std::vector<Ref<dom::Text>> texts;
  for (Node* node = pre.first_child(); node; node = dom::next_in_order(*node, &pre))
    if (auto* text = dom::as<dom::Text>(node)) texts.emplace_back(text);
  for (const Ref<dom::Text>& text : texts) {
    for (;;) {
      const std::size_t at = text->data().rfind(u'\n');
      if (at == std::u16string::npos) break;
      const Ref<dom::Text> rest = at + 1 < text->length() ? dom::split_text(*text, at + 1) : Ref<dom::Text>();
      dom::replace_data(*text, at, 1, u"");
      dom::insert(*text->parent(), text->document()->create_element(Tag::Br), text->next_sibling());
      if (text->length() == 0) {
        dom::remove(*text);
        break;
      }
    }
  }
}

/// Line ends for the breaks of a line that comes into preformatted text.
void end_lines_at_breaks(Element& line) {
  NodeList breaks;
  for (Node* node = line.first_child(); node; node = dom::next_in_order(*node, &line))
    if (node->is(Tag::Br)) breaks.emplace_back(node);
  for (const Ref<Node>& line_break : breaks) {
    if (line_break == line.last_child()) {
      dom::remove(*line_break);
      continue;
    }
    dom::insert(*line_break->parent(), line.document()->create_text(u"\n"), line_break.get());
    dom::remove(*line_break);
  }
}

void drop_end_break(Element& line) {
  Node* last = line.last_child();
  while (last && is_filling(*last)) last = last->previous_sibling();
  if (last && last->is(Tag::Br)) dom::remove(*last);
}

void join(Editor& editor, Element& first, Element& second) {
  const Ref<Element> held(first), gone(second);
  if (second.is(Tag::Pre) && !first.is(Tag::Pre)) break_at_line_ends(second);
  if (first.is(Tag::Pre) && !second.is(Tag::Pre)) end_lines_at_breaks(second);
  drop_end_break(first);
  trim_filling(first, Direction::Backward);
  trim_filling(second, Direction::Forward);
  const HeldPosition end = end_of_lines(first);
  const Boundary place = end ? end.place() : Boundary{&first, dom::length_of(first)};
  const SpacesBeside before = spaces_beside(place), behind = spaces_beside({&second, 0});
  dom::LiveRange caret(editor.document(), {place, place});
  insert_all({Ref<Node>(held), {}}, children_of(second));
  remove_with_empty_holders(*gone, *dom::common_ancestor(first, second));
  const Boundary joined = join_texts_at(caret.start());
  caret.set({joined, joined});
  settle_spaces(caret.start(), before);
  settle_spaces(caret.start(), behind);
  editor.selection().collapse(normalized_caret_place(caret.start()));
}

/// What stands beside a line of a block, over the break that ends it.
Content beside_line(const Boundary& caret, const Element& block, Direction direction) {
  const Content beside = content_beside(caret, direction);
  const bool passes = direction == Direction::Forward && beside.kind == ContentKind::LineBreak &&
                      beside.node->parent() == &block;
  if (!passes) return beside;
  return content_beside(dom::after(*beside.node), direction);
}

/// A bare line that a block is joined with becomes a paragraph: the white space around it in the source is no
/// part of it then.
void wrap_lines_that_join(Editor& editor, Direction direction) {
  const Boundary caret = editor.selection().focus();
  Element* block = block_around(caret);
  if (!block || !editing_host_of(*block)) return;
  const Content beside = beside_line(caret, *block, direction);
  if (beside.kind == ContentKind::EnterBlock && is_joinable(beside.node) && beside.node->parent() == block) {
    wrap_line_at(editor, *block, caret);
  } else if (beside.kind == ContentKind::LeaveBlock && beside.node == block && is_joinable(block)) {
    const bool backward = direction == Direction::Backward;
    Node* bare = seen_sibling(*block, backward);
    if (bare && is_inline_node(*bare) && !is_block_piece(*bare) && is_visible(*bare))
      wrap_line_at(editor, *block->parent_element(), backward ? dom::after(*bare) : dom::before(*bare));
  }
}

}  // namespace

bool join_lines(Editor& editor, Direction direction) {
  if (!editor.selection().collapsed()) return false;
  wrap_lines_that_join(editor, direction);
  const Boundary caret = editor.selection().focus();
  Element* block = block_around(caret);
  if (!is_joinable(block) || is_empty_line(*block)) return false;
  const bool backward = direction == Direction::Backward;
  const Content beside = beside_line(caret, *block, direction);
  if (beside.kind != ContentKind::LeaveBlock || beside.node != block) return false;
  Element* other = line_beside(*block, backward);
  if (!other || is_empty_line(*other) || !in_same_editing_host(*block, *other)) return false;
  if (backward)
    join(editor, *other, *block);
  else
    join(editor, *block, *other);
  return true;
}

bool leave_empty_line_beside_table(Editor& editor, Direction direction) {
  if (!editor.selection().collapsed()) return false;
  Element* block = block_around(editor.selection().focus());
  if (!block || !(block->is(Tag::P) || block->is(Tag::Div)) || !is_editable(*block) || !is_empty_line(*block))
    return false;
  const bool backward = direction == Direction::Backward;
  Node* table = seen_sibling(*block, backward);
  if (!table || !table->is(Tag::Table) || !is_editable(*table)) return false;
  const auto place = next_caret_place(editor.selection().focus(), direction, Granularity::Character);
  if (!place || !dom::is_inclusive_ancestor(*table, *place->node)) return false;
  dom::LiveRange kept(editor.document(), {*place, *place});
  dom::remove(*block);
  editor.selection().collapse(kept.start());
  return true;
}

}  // namespace tvx::editing
