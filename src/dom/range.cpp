#include "tvx/dom/range.h"

#include <algorithm>
#include <cassert>

#include "tvx/base/work_count.h"
#include "tvx/dom/sibling_places.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

Offset length_of(const Node& node) {
  if (const auto* data = as<CharacterData>(&node)) return data->length();
  return node.child_count();
}

Offset index_of(const Node& node) { return SiblingPlaces::index_of(node); }

bool stands_before(const Node& child, Offset offset) {
  if (offset == 0) return false;
  if (offset >= child.parent()->child_count() || !child.previous_sibling()) return true;
  return child.next_sibling() && index_of(child) < offset;
}

Node* child_at(const Node& parent, Offset index) { return SiblingPlaces::child_at(parent, index); }

Boundary before(const Node& node) { return {node.parent(), index_of(node)}; }
Boundary after(const Node& node) { return {node.parent(), index_of(node) + 1}; }

namespace {

// Which of two siblings comes first. Looks from the first one both ways at once, so that the cost is
// the distance between them and not the number of siblings.
bool comes_before(const Node& a, const Node& b) {
  const Node* forward = a.next_sibling();
  const Node* backward = a.previous_sibling();
  while (forward || backward) {
    count_work();
    if (forward == &b) return true;
    if (backward == &b) return false;
    if (forward) forward = forward->next_sibling();
    if (backward) backward = backward->previous_sibling();
  }
  assert(false && "no siblings");
  return true;
}

struct Lifted {
  const Node *a, *b;  // children of the common ancestor, or that ancestor itself
  const Node* ancestor;
};

// Lifts two nodes to the children of their nearest common ancestor.
Lifted lift(const Node& a, const Node& b) {
  std::size_t depth_a = depth_of(a), depth_b = depth_of(b);
  const Node *x = &a, *y = &b;
  const Node *below_x = nullptr, *below_y = nullptr;
  for (; depth_a > depth_b; --depth_a) below_x = x, x = x->parent();
  for (; depth_b > depth_a; --depth_b) below_y = y, y = y->parent();
  while (x != y) {
    count_work();
    below_x = x, x = x->parent();
    below_y = y, y = y->parent();
  }
  return {below_x ? below_x : x, below_y ? below_y : x, x};
}

}  // namespace

Node* common_ancestor(const Node& a, const Node& b) { return const_cast<Node*>(lift(a, b).ancestor); }

std::strong_ordering compare_order(const Node& a, const Node& b) {
  if (&a == &b) return std::strong_ordering::equal;
  if (a.parent() && a.parent() == b.parent())
    return comes_before(a, b) ? std::strong_ordering::less : std::strong_ordering::greater;
  const Lifted lifted = lift(a, b);
  if (lifted.a == lifted.ancestor) return std::strong_ordering::less;
  if (lifted.b == lifted.ancestor) return std::strong_ordering::greater;
  return comes_before(*lifted.a, *lifted.b) ? std::strong_ordering::less : std::strong_ordering::greater;
}

std::strong_ordering compare(const Boundary& a, const Boundary& b) {
  if (a.node == b.node) return a.offset <=> b.offset;
  const Lifted lifted = lift(*a.node, *b.node);
  if (lifted.a == lifted.ancestor) {  // a's node holds b's
    return index_of(*lifted.b) < a.offset ? std::strong_ordering::greater : std::strong_ordering::less;
  }
  if (lifted.b == lifted.ancestor) {
    return index_of(*lifted.a) < b.offset ? std::strong_ordering::less : std::strong_ordering::greater;
  }
  return comes_before(*lifted.a, *lifted.b) ? std::strong_ordering::less : std::strong_ordering::greater;
}

bool contains(const Range& range, const Node& node) {
  return compare({const_cast<Node*>(&node), 0}, range.start) > 0 &&
         compare({const_cast<Node*>(&node), length_of(node)}, range.end) < 0;
}

LiveRange::LiveRange(Document& document, Range range) : document_(&document) {
  document.live_ranges_.push_back(this);
  set_unordered(range.start, range.end);
}

LiveRange::~LiveRange() {
  if (document_) std::erase(document_->live_ranges_, this);
}

void LiveRange::set_unordered(Boundary start, Boundary end) {
  start_node_ = start.node;
  start_offset_ = start.offset;
  end_node_ = end.node;
  end_offset_ = end.offset;
}

void LiveRange::set(Range range) { set_unordered(range.start, range.end); }

void LiveRange::set_start(Boundary boundary) {
  const bool behind =
      !end_node_ || &root_of(*boundary.node) != &root_of(*end_node_) || compare(boundary, end()) > 0;
  set_unordered(boundary, behind ? boundary : end());
}

void LiveRange::set_end(Boundary boundary) {
  const bool ahead =
      !start_node_ || &root_of(*boundary.node) != &root_of(*start_node_) || compare(boundary, start()) < 0;
  set_unordered(ahead ? boundary : start(), boundary);
}

}  // namespace tvx::dom
