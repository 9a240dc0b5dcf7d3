#include "tvx/dom/sibling_places.h"

namespace tvx::dom {
namespace {

/// In shorter lists counting is as fast as knowing, and what is known of a long one stays.
constexpr Offset worth_keeping = 16;

}  // namespace

Offset SiblingPlaces::keep(const Node& node, Offset index) {
  node.anchor_->known_place = {node.parent(), &node, std::uint32_t(index)};
  return index;
}

void SiblingPlaces::forget(KnownPlace& known, const Node& child) {
  if (&child != known.child) {
    if (child.next_sibling()) known = {};  // it may stand before the known one
  } else if (child.next_sibling()) {
    known.child = child.next_sibling();
  } else {
    known = {};
  }
}

Offset SiblingPlaces::index_of(const Node& node) {
  const KnownPlace& known = node.anchor_->known_place;
  const Node* const mark = node.parent() && known.parent == node.parent() ? known.child : nullptr;
  if (mark == &node) return known.index;
  Offset steps = 0;
  const Node *backward = node.previous_sibling(), *forward = node.next_sibling();
  for (; backward && forward; ++steps) {
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
  for (; at < index; ++at) child = child->next_sibling();
  for (; at > index; --at) child = child->previous_sibling();
  if (far) keep(*child, index);
  return child;
}

}  // namespace tvx::dom
