#pragma once

#include <cassert>

#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

/// Splits the parents of nodes that are siblings, one after the other, as long as `goes_on` says. The measure
/// is their depth, which falls by one with each turn: where a parent can't be split, or the nodes went with
/// it as a line break that nothing needs any more, it ends.
template <class Condition>
void split_parents_while(const NodeList& nodes, Condition goes_on) {
  const dom::Ref<dom::Node> first = nodes.front();
  while (first->parent() && goes_on()) {
    const dom::Ref<dom::Node> above(first->parent()->parent());
    split_parent(nodes);
    if (above && first->parent() == above.get()) continue;
    assert(!first->parent() || !"a parent that could be split was not");
    return;
  }
}

}  // namespace tvx::editing
