#include "tvx/editing/gestures/line_moves.h"

#include "tvx/dom/node.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/gap_caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Tag;

namespace {

bool is_cell(const Node& node) { return node.is(Tag::Td) || node.is(Tag::Th); }

Gap start_on(const Boundary& from, Direction direction) {
  if (!from.node->is_text()) return Gap::at(from);
  return direction == Direction::Forward ? Gap::after(*from.node) : Gap::before(*from.node);
}

Node* child_in(const Gap& gap, Direction direction) {
  return direction == Direction::Forward ? gap.next : gap.previous();
}

Gap past(Node& child, Direction direction) {
  return direction == Direction::Forward ? Gap::after(child) : Gap::before(child);
}

Gap into(Node& child, Direction direction) {
  return direction == Direction::Forward ? Gap::start_of(child) : Gap::end_of(child);
}

/// What a walk goes past as one: it holds no position between blocks, or only such as belong to other lines
/// of its table.
bool is_one(const Node& child) {
  return !child.is_element() || child.is(Tag::Table) || child.is(Tag::Hr) || is_table_part(child) ||
         is_object(child) || is_invisible(child) || !is_editable(child);
}

/// No line comes next: a table, a rule, what may not be edited, or the end of a cell or of all.
bool is_closed_on(Gap gap, Direction direction) {
  for (;;) {
    Node* child = child_in(gap, direction);
    if (!child) {
      if (is_editing_host(*gap.node) || is_cell(*gap.node) || !gap.node->parent()) return true;
      gap = past(*gap.node, direction);
    } else if (is_filling(*child) || is_invisible(*child)) {
      gap = past(*child, direction);
    } else if (is_one(*child)) {
      return child->is(Tag::Table) || child->is(Tag::Hr) || (is_block_node(*child) && !is_editable(*child));
    } else if (!is_block_node(*child) || is_text_block(*child)) {
      return false;
    } else {
      gap = into(*child, direction);
    }
  }
}

}  // namespace

std::optional<Boundary> gap_between_lines(const Boundary& from, const Boundary& to, Direction direction) {
  const bool forward = direction == Direction::Forward;
  const bool further = to != from;
  if (!editing_host_of(*from.node) || (further && (dom::compare(from, to) < 0) != forward))
    return std::nullopt;
  const Gap goal = further && !to.node->is_text() ? Gap::at(to) : Gap{};
  const bool starts_in_gap = is_gap_place(from);
  bool left = !starts_in_gap;  // of one gap any position will do
  for (Gap gap = start_on(from, direction); !(goal.node && gap == goal);) {
    if (left && is_gap_place(gap) && is_closed_on(gap, Direction::Forward) &&
        is_closed_on(gap, Direction::Backward))
      return gap.boundary();
    Node* child = child_in(gap, direction);
    if (!child) {
      if (is_editing_host(*gap.node) || !gap.node->parent()) return std::nullopt;
      left = true;
      gap = past(*gap.node, direction);
    } else if (further &&
               (child == to.node || (is_one(*child) && dom::is_inclusive_ancestor(*child, *to.node)))) {
      return std::nullopt;
    } else {
      left = left || !is_filling(*child);
      gap = is_one(*child) ? past(*child, direction) : into(*child, direction);
    }
  }
  return std::nullopt;
}

std::optional<Passed> past_island(const Boundary& place, Direction direction) {
  Node* island = nullptr;
  for (Node* node = place.node; node; node = node->parent())
    if (is_island(*node)) island = node;
  if (!island) return std::nullopt;
  if (is_block_node(*island)) return Passed{past(*island, direction).boundary()};
  const bool early = place.offset * 2 < dom::length_of(*place.node);
  return Passed{(early ? Gap::before(*island) : Gap::after(*island)).boundary(), true};
}

}  // namespace tvx::editing
