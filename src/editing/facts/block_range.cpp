#include "tvx/editing/facts/block_range.h"

#include "tvx/base/work_count.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Tag;

bool is_block_start(const Gap& gap) {
  const Node* child = gap.previous();
  if (!child) return !gap.node->parent();
  return (is_block_node(*child) || child->is(Tag::Br)) && is_visible(*child);
}

bool is_block_end(const Gap& gap) {
  if (!gap.next) return !gap.node->parent();
  return is_block_node(*gap.next) && is_visible(*gap.next);
}

namespace {

bool is_block_boundary(const Gap& gap) { return is_block_start(gap) || is_block_end(gap); }

// OURS: a cell is a page of its own. Neither the item that its table stands in nor, where it is the only
// cell, the table is a part of the line in it.
bool may_leave(const Node& node) { return node.parent() && !is_table_part(node); }

Node* item_in_cell(Node* node) {
  for (; node && !node->is(Tag::Td) && !node->is(Tag::Th); node = node->parent())
    if (node->is(Tag::Li)) return node;
  return nullptr;
}

enum class Items : std::uint8_t { Whole, Lines };

// Inside a text no position is a block's edge, so the walk begins at the edge of the text.
Gap walk_start(Boundary place, bool backward, Items items) {
  if (Node* item = items == Items::Whole ? item_in_cell(place.node) : nullptr; item && item->parent()) {
    return backward ? Gap::before(*item) : Gap::after(*item);
  }
  if (dom::as<dom::CharacterData>(place.node) && place.node->parent()) {
    return backward ? Gap::before(*place.node) : Gap::after(*place.node);
  }
  return Gap::at(place);
}

// OURS: an element of a line that holds blocks, as pages of old have them, isn't passed as one thing: the
// line ends where the first block in it begins.
bool holds_blocks(const Node& node) {
  return node.first_child() && is_inline_node(node) && is_block_piece(node);
}

Gap step_back(const Gap& gap) {
  if (gap.at_start()) return Gap::before(*gap.node);
  Node* before = gap.previous();
  return holds_blocks(*before) ? Gap::end_of(*before) : Gap{gap.node, before};
}

Gap step_on(const Gap& gap) {
  if (gap.at_end()) return Gap::after(*gap.node);
  return holds_blocks(*gap.next) ? Gap::start_of(*gap.next) : Gap::after(*gap.next);
}

Boundary extended_start(Boundary place, Items items) {
  Gap gap = walk_start(place, true, items);
  if (!is_block_start(gap)) {
    do {
      gap = step_back(gap);
    } while (!is_block_boundary(gap));
  }
  while (gap.at_start() && may_leave(*gap.node)) gap = Gap::before(*gap.node);
  return gap.boundary();
}

Boundary extended_end(Boundary place, Items items) {
  Gap gap = walk_start(place, false, items);
  if (!is_block_end(gap)) {
    do {
      gap = step_on(gap);
    } while (!is_block_boundary(gap));
  }
  while (gap.at_end() && may_leave(*gap.node)) gap = Gap::after(*gap.node);
  return gap.boundary();
}

}  // namespace

dom::Range block_extend(dom::Range range) {
  return {extended_start(range.start, Items::Whole), extended_end(range.end, Items::Whole)};
}

dom::Range line_extend(dom::Range range) {
  return {extended_start(range.start, Items::Lines), extended_end(range.end, Items::Lines)};
}

namespace {

// OURS: an element of a line may end with the break that ends the line; the standard takes it as one thing.
bool may_end_line(const Node& node) { return node.last_child() && is_look(node) && is_inline_node(node); }

}  // namespace

Node* seen_before_in_line(Node& node) {
  Gap gap = Gap::start_of(node);
  while (!is_block_boundary(gap)) {
    count_work();
    Node* child = gap.previous();
    const bool seen = child && is_visible(*child);
    if (seen && !may_end_line(*child)) return child;
    // In what nobody sees there is nothing to be seen.
    gap = seen ? Gap::end_of(*child) : Gap::before(child ? *child : *gap.node);
  }
  return nullptr;
}

Node* seen_after_in_line(Node& node) {
  Gap gap = Gap::end_of(node);
  while (!is_block_boundary(gap)) {
    count_work();
    if (gap.next && is_visible(*gap.next)) return gap.next;
    gap = Gap::after(gap.next ? *gap.next : *gap.node);
  }
  return nullptr;
}

bool follows_line_break(Node& node) { return !seen_before_in_line(node); }
bool precedes_line_break(Node& node) { return !seen_after_in_line(node); }

namespace {

bool is_empty(const Node& node) {
  const auto* data = dom::as<dom::CharacterData>(&node);
  return data ? data->length() == 0 : !node.has_children();
}

// The child before or after a boundary into which a caret can step without a visible move.
Node* enterable(Node* child) {
  return child && !is_empty(*child) && is_inline_node(*child) ? child : nullptr;
}

}  // namespace

// Nodes without content are never entered or left: `{}<br>` and `<br>{}` are not the same position.
Boundary next_equivalent_point(Boundary place) {
  Node& node = *place.node;
  if (is_empty(node)) return {};
  if (place.offset == dom::length_of(node)) {
    return node.parent() && is_inline_node(node) ? dom::after(node) : Boundary{};
  }
  Node* child = enterable(dom::child_at(node, place.offset));
  return child ? Boundary{child, 0} : Boundary{};
}

Boundary previous_equivalent_point(Boundary place) {
  Node& node = *place.node;
  if (is_empty(node)) return {};
  if (place.offset == 0) return node.parent() && is_inline_node(node) ? dom::before(node) : Boundary{};
  Node* child = enterable(dom::child_at(node, place.offset - 1));
  return child ? Boundary{child, dom::length_of(*child)} : Boundary{};
}

Boundary first_equivalent_point(Boundary place) {
  while (const Boundary previous = previous_equivalent_point(place)) place = previous;
  return place;
}

Boundary last_equivalent_point(Boundary place) {
  while (const Boundary next = next_equivalent_point(place)) place = next;
  return place;
}

}  // namespace tvx::editing
