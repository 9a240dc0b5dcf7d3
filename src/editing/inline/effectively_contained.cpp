#include "tvx/editing/inline/effectively_contained.h"

#include <algorithm>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/path_facts.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/tree/range_walk.h"

namespace tvx::editing {

using dom::Node;
using dom::Range;

namespace {

/// The nodes that the range covers without containing them: they hold one of its ends or both, and are
/// found by climbing from the ends as long as nothing of them is left out.
class CoveredHolders {
 public:
  explicit CoveredHolders(const Range& range) : range_(range) {
    if (range.collapsed()) return;
    const Node& common = *dom::common_ancestor(*range.start.node, *range.end.node);
    const Node* below_start = climb_start(common);
    const Node* below_end = climb_end(common);
    climb_common(common, below_start, below_end);
  }

  /// From the innermost to the outermost, the common ones last.
  const std::vector<Node*>& of_start() const { return of_start_; }
  const std::vector<Node*>& of_end() const { return of_end_; }
  bool has(const Node& node) const {
    return std::find(of_start_.begin(), of_start_.end(), &node) != of_start_.end() ||
           std::find(of_end_.begin(), of_end_.end(), &node) != of_end_.end();
  }

 private:
  static void add(std::vector<Node*>& list, const Node& node) { list.push_back(const_cast<Node*>(&node)); }

  // The child of the common ancestor that holds the start, if it is covered.
  const Node* climb_start(const Node& common) {
    const Node* node = range_.start.node;
    if (node == &common || !start_is_covered(*node)) return nullptr;
    add(of_start_, *node);
    if (node->is_text() && range_.start.offset > 0) return nullptr;
    for (; node->parent() != &common; node = node->parent()) {
      if (node->previous_sibling()) return nullptr;
      add(of_start_, *node->parent());
    }
    return node;
  }
  bool start_is_covered(const Node& node) const {
    if (node.is_text()) return dom::length_of(node) != range_.start.offset;
    return range_.start.offset == 0 && node.has_children();
  }

  const Node* climb_end(const Node& common) {
    const Node* node = range_.end.node;
    if (node == &common || !end_is_covered(*node)) return nullptr;
    add(of_end_, *node);
    if (node->is_text() && range_.end.offset != dom::length_of(*node)) return nullptr;
    for (; node->parent() != &common; node = node->parent()) {
      if (node->next_sibling()) return nullptr;
      add(of_end_, *node->parent());
    }
    return node;
  }
  bool end_is_covered(const Node& node) const {
    if (node.is_text()) return range_.end.offset != 0;
    return node.has_children() && range_.end.offset == dom::length_of(node);
  }

  void climb_common(const Node& common, const Node* below_start, const Node* below_end) {
    const bool starts = range_.start.node == &common ? range_.start.offset == 0
                                                     : below_start && !below_start->previous_sibling();
    const bool ends = range_.end.node == &common ? range_.end.offset == dom::length_of(common)
                                                 : below_end && !below_end->next_sibling();
    if (common.is_text()) {
      add(of_start_, common);
    } else if (starts && ends && common.has_children()) {
      add(of_start_, common);
    } else {
      return;
    }
    if (!starts || !ends) return;
    for (const Node* node = &common; node->parent(); node = node->parent()) {
      if (node->previous_sibling() || node->next_sibling()) return;
      add(of_start_, *node->parent());
    }
  }

  const Range& range_;
  std::vector<Node*> of_start_, of_end_;
};

}  // namespace

void walk_effectively_contained(const Range& range, const std::function<bool(Node&)>& visitor) {
  if (range.collapsed()) return;
  const CoveredHolders covered(range);
  for (auto node = covered.of_start().rbegin(); node != covered.of_start().rend(); ++node) {
    if (!visitor(**node)) return;
  }
  auto holders = holders_of_end(range);
  auto covered_holder = covered.of_end().rbegin();
  Node* const stop = first_after(range.end);
  for (Node* node = first_after(range.start); node && node != stop; node = dom::next_in_order(*node)) {
    if (!holders.empty() && holders.back() == node) {
      holders.pop_back();
      if (covered_holder == covered.of_end().rend() || *covered_holder != node) continue;
      ++covered_holder;
    }
    if (!visitor(*node)) return;
  }
}

NodeList effectively_contained_nodes(const Range& range, const NodeCriteria& criteria) {
  NodeList nodes;
  walk_effectively_contained(range, [&](Node& node) {
    if (criteria(node)) nodes.emplace_back(node);
    return true;
  });
  return nodes;
}

Node* first_formattable_in(const Range& range) {
  Node* found = nullptr;
  PathFacts facts;
  walk_effectively_contained(range, [&](Node& node) {
    if (facts.is_formattable(node)) found = &node;
    return found == nullptr;
  });
  return found;
}

bool is_effectively_contained(const Node& node, const Range& range) {
  if (range.collapsed()) return false;
  return dom::contains(range, node) || CoveredHolders(range).has(node);
}

}  // namespace tvx::editing
