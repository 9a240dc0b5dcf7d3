#include "tvx/editing/facts/between_blocks.h"

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

/// The gap between the children of `holder` that a position stands in or at; a text or an element of a line
/// around the position counts as a child.
Gap gap_among_children(const Boundary& place, Element& holder) {
  Node* child = place.node;
  if (child == &holder) return Gap::at(place);
  while (child->parent() != &holder) child = child->parent();
  return Gap::before(*child);
}

}  // namespace

Node* passed_filling(Node* node, bool backward) {
  while (node && is_filling(*node)) node = backward ? node->previous_sibling() : node->next_sibling();
  return node;
}

Node* Between::new_block_before() const { return after || !before ? after : before->next_sibling(); }

Between between_blocks(const Boundary& caret) {
  Element* holder = block_around(caret);
  if (!holder || (caret.node->is_text() && !is_filling(*caret.node))) return {};
  const Gap gap = gap_among_children(caret, *holder);
  Node* before = passed_filling(gap.previous(), true);
  Node* after = passed_filling(gap.next, false);
  if (!before && !after) return is_editing_host(*holder) ? Between{holder} : Between{};
  if ((before && !is_block_node(*before)) || (after && !is_block_node(*after))) return {};
  // The line of an item comes before its lists.
  if (holder->is(Tag::Li) && !before && is_list(*after)) return {};
  return {holder, before, after};
}

}  // namespace tvx::editing
