#include "tvx/editing/clipboard/block_paste.h"

#include <algorithm>
#include <utility>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_table_or_part(const Node& node) {
  return node.is(Tag::Table) || node.is(Tag::Caption) || is_table_part(node);
}

/// The child of `holder` that holds a position; null if the position is between its children.
Node* child_towards(const Node& holder, Node* node) {
  while (node && node->parent() != &holder) {
    if (node == &holder) return nullptr;
    node = node->parent();
  }
  return node;
}

Element* as_block(Node* node) { return node && is_block_piece(*node) ? dom::as<Element>(node) : nullptr; }

/// The first child that counts, if it is a block.
Element* first_block(const Node& node) {
  Node* child = node.first_child();
  while (child && is_filling(*child)) child = child->next_sibling();
  return as_block(child);
}
Element* last_block(const Node& node) {
  Node* child = node.last_child();
  while (child && is_filling(*child)) child = child->previous_sibling();
  return as_block(child);
}

/// An element whose text stands in it directly.
bool holds_line(const Node& node) { return is_text_block(node) && !first_block(node) && !last_block(node); }

void move_all(Node& from, const HeldGap& gap) { insert_all(gap, children_of(from)); }

bool is_list_of(Tag item, const Node& node) {
  return item == Tag::Li ? is_list_of_any_kind(node) : node.is(Tag::Dl);
}
bool is_item_like(Tag item, const Node& node) {
  return item == Tag::Li ? node.is(Tag::Li) : node.is(Tag::Dt) || node.is(Tag::Dd);
}

/// Items as they are, those of lists, and a new one for each paragraph and each line.
NodeList items_of(const NodeList& pieces, Tag tag, dom::Document& document) {
  NodeList items, rest(pieces.rbegin(), pieces.rend());
  Ref<Element> line;  // the item of the line that the next piece may go on
  while (!rest.empty()) {
    const Ref<Node> piece = std::move(rest.back());
    rest.pop_back();
    const bool is_of_line = !is_block_piece(*piece);
    if (line && is_of_line) {
      dom::insert(*line, piece);
      continue;
    }
    line = {};
    if (is_list_of(tag, *piece)) {
      const NodeList children = children_of(*piece);
      rest.insert(rest.end(), children.rbegin(), children.rend());
    } else if (is_item_like(tag, *piece) || is_filling(*piece)) {
      items.push_back(piece);
    } else {
      const Ref<Element> item = document.create_element(tag);
      if (holds_line(*piece))
        move_all(*piece, {item, {}});
      else
        dom::insert(*item, piece);
      items.emplace_back(item);
      if (is_of_line) line = item;
    }
  }
  return items;
}

}  // namespace

BlockPaste::BlockPaste(Editor& editor, dom::Range gap, Options options)
    : editor_(editor), gap_(editor.document(), gap), options_(options) {}

// The container of both positions, and on each side what new blocks may merge with.
void BlockPaste::find_sides() {
  Ref<Element> left_block(block_around(gap_.start())), right_block(block_around(gap_.end()));
  if (left_block == right_block && left_block) {
    if (is_text_block(*left_block) && is_editable(*left_block)) {
      right_ = split_block(*left_block, gap_.end());
      left_ = left_block;
      split_ = true;
      container_ = left_->parent();
      gap_.set_end({right_.get(), 0});
      // The positions of the right side are where its first line begins.
    } else {
      container_ = left_block;
      before_ = split_up_to(*container_, gap_.end()).before;
    }
  } else {
    container_ = dom::common_ancestor(*gap_.start().node, *gap_.end().node);
    left_ = dom::as<Element>(child_towards(*container_, gap_.start().node));
    right_ = dom::as<Element>(child_towards(*container_, gap_.end().node));
    Node* start = child_towards(*container_, gap_.start().node);
    before_ = start ? start->next_sibling() : dom::child_at(*container_, gap_.start().offset);
    if (left_ && !is_block_piece(*left_)) left_ = {};
    if (right_ && !is_block_piece(*right_)) right_ = {};
  }
  if (left_) {
    before_ = left_->next_sibling();
    left_line_ = split_ ? left_ : Ref<Element>(block_around(gap_.start()));
    left_empty_ = is_empty_line(*left_line_);
  }
  if (right_) {
    right_line_ = split_ ? right_ : Ref<Element>(block_around(gap_.end()));
    right_empty_ = is_empty_line(*right_line_);
  }
}

// In a description list what comes is more of the part that it comes into; alone it is described by the term
// before it, or is a term.
Tag BlockPaste::tag_of_items() const {
  if (!container_->is(Tag::Dl)) return Tag::Li;
  if (left_) return left_->is(Tag::Dt) ? Tag::Dt : Tag::Dd;
  const Node* before = before_ ? before_->previous_sibling() : container_->last_child();
  while (before && is_filling(*before)) before = before->previous_sibling();
  return before ? Tag::Dd : Tag::Dt;
}

// Items among items, cells among cells; whatever else comes into a list becomes an item.
void BlockPaste::fit_to_container(NodeList& pieces) {
  if (options_.tables && is_table_or_part(*container_)) {
    while (pieces.size() == 1 && is_table_or_part(*pieces[0]) && !is_allowed_child(*pieces[0], *container_))
      pieces = children_of(*pieces[0]);
  } else if (holds_items(*container_)) {
    pieces = items_of(pieces, tag_of_items(), editor_.document());
  }
}

// What stands in the content before its first block belongs to the line before the caret.
bool BlockPaste::lay_leading_line(NodeList& pieces) {
  NodeList line;
  while (!pieces.empty() && !is_block_piece(*pieces.front())) {
    line.push_back(pieces.front());
    pieces.erase(pieces.begin());
  }
  if (line.empty()) return false;
  insert_all(left_ ? gap_at(gap_.start()) : HeldGap{container_, before_}, line);
  if (std::ranges::all_of(line, [](const Ref<Node>& node) { return is_filling(*node); })) return false;
  left_empty_ = false;
  return true;
}

bool BlockPaste::lay_trailing_line(NodeList& pieces) {
  NodeList line;
  while (!pieces.empty() && !is_block_piece(*pieces.back())) {
    line.insert(line.begin(), pieces.back());
    pieces.pop_back();
  }
  if (line.empty()) return false;
  insert_all(right_ ? gap_at(gap_.end()) : HeldGap{container_, before_}, line);
  if (!right_) before_ = line.front();
  if (std::ranges::all_of(line, [](const Ref<Node>& node) { return is_filling(*node); })) return false;
  right_empty_ = false;
  caret_ = end_of_lines(*line.back());
  // What held the line open that this comes into.
  if (right_) remove_extraneous_line_breaks_at_end_of(Ref<Node>(line.back()->parent()));
  return true;
}

bool BlockPaste::same_kind(const Element& a, const Element& b) const {
  if (a.name() != b.name() || a.name_space() != b.name_space()) return false;
  if (is_table_or_part(a)) return options_.tables;
  return holds_items(a) || a.is(Tag::Li) || same_attributes(a, b);
}

bool BlockPaste::merge_left(Element& side, Element& piece) {
  const Ref<Element> held(piece);
  Element* inner = as_block(child_towards(side, gap_.start().node));
  Element* first = first_block(piece);
  const bool kin = same_kind(side, piece), lines = holds_line(side) && holds_line(piece);
  if (lines) {
    if (left_empty_) {
      dom::insert(*side.parent(), held, side.next_sibling());
      remove_with_empty_holders(side, *side.parent());
      left_line_ = {};
    } else {
      append_line(side, gap_.start(), piece);
    }
  } else if (!kin) {
    return false;
  } else {
    while (Node* filling = piece.first_child()) {  // the source's layout before the first block
      if (!first || filling == first || !is_filling(*filling)) break;
      dom::remove(*filling);
    }
    const bool side_is_line = is_text_block(side) || side.is(Tag::Td) || side.is(Tag::Th);
    const Ref<Node> first_held(first);
    if (inner && first) {
      merge_left(*inner, *first);
    } else if (first && side_is_line && is_text_block(*first) && !left_empty_) {
      append_line(side, gap_.start(), *first);
      dom::remove(*first);
    }
    if (inner || first)
      move_all(piece, {Ref<Node>(side), {}});
    else
      append_line(side, gap_.start(), piece);
    if (&side == left_line_.get()) left_line_ = {};
  }
  if (!lines || !left_empty_) dom::remove(*held);
  return true;
}

bool BlockPaste::merge_right(Element& side, Element& piece) {
  const Ref<Element> held(piece);
  Element* inner = as_block(child_towards(side, gap_.end().node));
  Element* last = last_block(piece);
  const bool kin = same_kind(side, piece), lines = holds_line(side) && holds_line(piece);
  if (lines) {
    if (right_empty_ || split_) {
      if (!right_empty_) move_all(side, {held, {}});
      dom::insert(*side.parent(), held, &side);
      dom::remove(side);
      right_line_ = {};
    } else {
      prepend_line(side, gap_.end(), piece);
      dom::remove(*held);
    }
    return true;
  }
  if (!kin) return false;
  while (Node* filling = piece.last_child()) {
    if (!last || filling == last || !is_filling(*filling)) break;
    dom::remove(*filling);
  }
  if (inner && last) {
    const Ref<Node> last_held(last);
    merge_right(*inner, *last);
  }
  if (inner || last)
    move_all(piece, {Ref<Node>(side), side.first_child()});
  else
    prepend_line(side, gap_.end(), piece);
  if (&side == right_line_.get()) right_line_ = {};
  dom::remove(*held);
  return true;
}

// The line before the new blocks stands in the container itself, beside blocks.
void BlockPaste::join_line_before(Element& piece) {
  const Node* previous = piece.previous_sibling();
  while (previous && is_filling(*previous)) previous = previous->previous_sibling();
  if (!previous || is_block_piece(*previous) || previous->is(Tag::Br) || !holds_line(piece) ||
      piece.is(Tag::Li))
    return;
  const Ref<Node> held(piece);
  move_all(piece, {piece.parent(), piece});
  dom::remove(*held);
}

void BlockPaste::join_line_behind(Element& piece) {
  if (!holds_line(piece) || piece.is(Tag::Li)) return;
  NodeList line;
  for (Node* node = piece.next_sibling(); node && !is_block_piece(*node); node = node->next_sibling()) {
    line.emplace_back(node);
    if (node->is(Tag::Br)) break;
  }
  bool seen = false;
  for (const Ref<Node>& node : line) seen = seen || !is_filling(*node);
  if (!seen) return;
  if (line.back()->is(Tag::Br)) {
    dom::remove(*line.back());
    line.pop_back();
  }
  insert_all({Ref<Node>(piece), {}}, line);
}

// A side where nothing is left, and which nothing was merged into, makes room.
void BlockPaste::drop_empty_sides() {
  if (left_line_ && left_empty_ && left_line_->parent() && is_text_block(*left_line_))
    remove_with_empty_holders(*left_line_, *container_);
  if (!right_line_ || !right_empty_ || !right_line_->parent() || !is_text_block(*right_line_)) return;
  // After a table at the end there would be no line to write on.
  const Node* last = right_->previous_sibling();
  const bool only_line =
      !right_->next_sibling() && (!last || !(holds_line(*last) || is_list_of_any_kind(*last)));
  if (!only_line) {
    remove_with_empty_holders(*right_line_, *container_);
  } else if (!has_visible_child(*right_line_)) {
    append_line_break(*right_line_);
  }
}

// The line after is the next one, and the caret begins it.
void BlockPaste::keep_right_line() {
  if (!right_line_) return;
  if (!has_visible_child(*right_line_)) append_line_break(*right_line_);
  right_empty_ = false;
  caret_ = {HeldPosition::At::Inside, right_line_};
}

Boundary BlockPaste::run(const Ref<dom::DocumentFragment>& content) {
  find_sides();
  NodeList pieces = children_of(*content);
  fit_to_container(pieces);
  bool has_trailing_line = false, has_leading_line = false;
  if (!holds_items(*container_) && !is_table_or_part(*container_)) {
    has_trailing_line = !options_.ends_line && lay_trailing_line(pieces);
    has_leading_line = lay_leading_line(pieces);
  }
  insert_all({container_, before_}, pieces);
  while (!pieces.empty() && is_filling(*pieces.back())) pieces.pop_back();
  if (!pieces.empty()) {
    const Ref<Node> first = pieces.front(), last = pieces.back();
    if (!caret_) caret_ = end_of_lines(*last, options_.tables && right_);
    Element* first_element = as_block(first.get());
    if (first_element && !has_leading_line) {
      if (left_)
        merge_left(*left_, *first_element);
      else if (first != last)
        join_line_before(*first_element);
    }
    Element* last_element = as_block(last.get());
    const bool joins = last_element && !has_trailing_line && !options_.ends_line;
    if (joins && last_element->parent() == container_.get()) {
      if (right_)
        merge_right(*right_, *last_element);
      else
        join_line_behind(*last_element);
    }
  }
  if (options_.ends_line) keep_right_line();
  drop_empty_sides();
  const Boundary caret = caret_.place();
  return caret ? caret : gap_.start();
}

}  // namespace tvx::editing
