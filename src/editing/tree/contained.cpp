#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/range_walk.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;

Node* first_after(const Boundary& position) {
  if (Node* child = dom::child_at(*position.node, position.offset)) return child;
  return dom::next_skipping_children(*position.node);
}

std::vector<const Node*> holders_of_end(const dom::Range& range) {
  std::vector<const Node*> holders;
  for (const Node* node = range.end.node; node && !dom::is_inclusive_ancestor(*node, *range.start.node);
       node = node->parent()) {
    holders.push_back(node);
  }
  return holders;
}

// A node that begins in the range is contained unless it holds the range's end. Those nodes come in tree
// order from the outermost on, so that one step along their list tells each from the rest.
void walk_contained(const dom::Range& range, const std::function<Visit(Node&)>& visitor) {
  Node* const stop = first_after(range.end);
  auto holders = holders_of_end(range);
  for (Node* node = first_after(range.start); node && node != stop;) {
    const bool holds_end = !holders.empty() && holders.back() == node;
    if (holds_end) holders.pop_back();
    const Visit visit = holds_end ? Visit::Children : visitor(*node);
    if (visit == Visit::Stop) return;
    node = visit == Visit::Skip ? dom::next_skipping_children(*node) : dom::next_in_order(*node);
  }
}

NodeList topmost_contained(const dom::Range& range, const NodeCriteria& criteria) {
  NodeList nodes;
  walk_contained(range, [&](Node& node) {
    if (!criteria(node)) return Visit::Children;
    nodes.emplace_back(node);
    return Visit::Skip;
  });
  return nodes;
}

NodeList visible_leaves(const dom::Range& range) {
  NodeList leaves;
  walk_contained(range, [&](Node& node) {
    if (!node.has_children() && is_editable(node) && is_visible(node)) leaves.emplace_back(node);
    return Visit::Children;
  });
  return leaves;
}

Ref<Node> first_visible_leaf(const dom::Range& range) {
  Ref<Node> leaf;
  walk_contained(range, [&](Node& node) {
    if (!node.has_children() && is_editable(node) && is_visible(node)) leaf = node;
    return leaf ? Visit::Stop : Visit::Children;
  });
  return leaf;
}

NodeList take_siblings(const NodeList& nodes, std::size_t& at, const NodeCriteria& criteria) {
  NodeList run{nodes[at++]};
  while (at < nodes.size() && nodes[at].get() == run.back()->next_sibling() &&
         (!criteria || criteria(*nodes[at]))) {
    run.push_back(nodes[at++]);
  }
  return run;
}

}  // namespace tvx::editing
