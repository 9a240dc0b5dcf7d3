#include "tvx/dom/sibling_places.h"

#include "tvx/base/work_count.h"

namespace tvx::dom {
namespace {

/// In shorter lists counting is as fast as knowing, and what is known of a long one stays.
constexpr Offset worth_keeping = 16;

}  // namespace

Offset SiblingPlaces::keep(const Node& node, Offset index) {
  node.anchor_->known_place = {node.parent(), &node, std::uint32_t(index)};
  return index;
}

// Where the child stands whose position is known. Only nearby: commands work their way along a list, and what
// is far from a change may stand on either side of it.
SiblingPlaces::Side SiblingPlaces::side_of_known(const Node& child) {
  const Node* const mark = child.anchor_->known_place.child;
  if (mark == &child) return Side::Same;
  const Node *backward = child.previous_sibling(), *forward = child.next_sibling();
  for (Offset steps = 0; steps < worth_keeping && (backward || forward); ++steps) {
    if (backward == mark) return Side::Before;
    if (forward == mark) return Side::After;
    if (backward) backward = backward->previous_sibling();
    if (forward) forward = forward->next_sibling();
  }
  return Side::Far;
}

void SiblingPlaces::make_room(const Node& child) {
  KnownPlace& known = child.anchor_->known_place;
  switch (side_of_known(child)) {
    case Side::After: ++known.index; break;
    case Side::Before: break;
    default: known = {};
  }
}

void SiblingPlaces::close_gap(const Node& child) {
  KnownPlace& known = child.anchor_->known_place;
  const Node* const next = child.next_sibling();
  switch (side_of_known(child)) {
    case Side::After: --known.index; break;
    case Side::Before: break;
    case Side::Same:
      if (next)
        known.child = next;
      else
        known = {};
      break;
    case Side::Far:
      if (next) known = {};  // it may stand before the known one
  }
}

Offset SiblingPlaces::index_of(const Node& node) {
  const KnownPlace& known = node.anchor_->known_place;
  const Node* const mark = node.parent() && known.parent == node.parent() ? known.child : nullptr;
  if (mark == &node) return known.index;
  Offset steps = 0;
  const Node *backward = node.previous_sibling(), *forward = node.next_sibling();
  for (; backward && forward; ++steps) {
    count_work();
    if (backward == mark) return keep(node, known.index + steps + 1);
    if (forward == mark) return keep(node, known.index - steps - 1);
    backward = backward->previous_sibling();
    forward = forward->next_sibling();
  }
  const Offset index = backward ? node.parent()->child_count() - 1 - steps : steps;
  return steps < worth_keeping ? index : keep(node, index);
}

Node* SiblingPlaces::child_at(const Node& parent, Offset index) {
  const Offset count = parent.child_count();
  if (index >= count) return nullptr;
  Node* child = parent.first_child();
  Offset at = 0;
  if (count - 1 - index < index) {
    child = parent.last_child();
    at = count - 1;
  }
  const KnownPlace& known = parent.anchor_->known_place;
  const auto distance = [index](Offset from) { return from < index ? index - from : from - index; };
  if (known.parent == &parent && distance(known.index) < distance(at)) {
    child = const_cast<Node*>(known.child);
    at = known.index;
  }
  const bool far = distance(at) >= worth_keeping || known.parent == &parent;
  count_work(distance(at));
  for (; at < index; ++at) child = child->next_sibling();
  for (; at > index; --at) child = child->previous_sibling();
  if (far) keep(*child, index);
  return child;
}

}  // namespace tvx::dom
