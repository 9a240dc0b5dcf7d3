#include <algorithm>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::LiveRange;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

// OURS: a paragraph that isn't displayed is none of the line beside it, and can't stand in a paragraph. An
// item goes with other items only, as it can't stand in one.
bool comes_along(const Node& neighbour, const Node& node) {
  if (!is_invisible(neighbour)) return false;
  return neighbour.is(Tag::Li) ? node.is(Tag::Li) : !is_non_list_single_line_container(neighbour);
}

// Steps 3 to 5: the line break that ends the nodes' line goes with them, and what nobody sees beside them.
void take_neighbours(NodeList& nodes) {
  Node* behind = nodes.back()->next_sibling();
  if (is_inline_node(*nodes.back()) && !nodes.back()->is(Tag::Br) && behind && behind->is(Tag::Br)) {
    nodes.emplace_back(behind);
  }
  NodeList before;
  for (Node* node = nodes.front()->previous_sibling(); node && comes_along(*node, *nodes.front());
       node = node->previous_sibling()) {
    before.emplace_back(node);
  }
  nodes.insert(nodes.begin(), before.rbegin(), before.rend());
  while (Node* node = nodes.back()->next_sibling()) {
    if (!comes_along(*node, *nodes.back())) break;
    nodes.emplace_back(node);
  }
}

// Step 10: boundaries right before the nodes go inside the wrapper with them.
void place_new_parent(Node& new_parent, Node& first) {
  Node& outer = *first.parent();
  dom::insert(outer, &new_parent, &first);
  std::optional<Offset> index;
  const auto moved = [&](Boundary place) {
    if (place.node != &outer) return place;
    if (!index) index = dom::index_of(new_parent);
    return place.offset == *index ? Boundary{place.node, place.offset + 1} : place;
  };
  for (LiveRange* range : dom::document_of(outer).live_ranges()) {
    if (range->start()) range->set_unordered(moved(range->start()), moved(range->end()));
  }
}

const Node* last_visible(const Node& parent) {
  const Node* child = parent.last_child();
  while (child && !is_visible(*child)) child = child->previous_sibling();
  return child;
}

const Node* first_visible(const Node& parent) {
  const Node* child = parent.first_child();
  while (child && !is_visible(*child)) child = child->next_sibling();
  return child;
}

bool is_inline(const Node* node) { return node && is_inline_node(*node); }

// Step 12: two lines that meet in one block need a line break between them.
void append_to(Node& new_parent, const NodeList& nodes) {
  const auto first =
      std::find_if(nodes.begin(), nodes.end(), [](const auto& node) { return is_visible(*node); });
  if (!is_inline_node(new_parent) && is_inline(last_visible(new_parent)) && first != nodes.end() &&
      is_inline_node(**first) && !new_parent.last_child()->is(Tag::Br)) {
    append_line_break(new_parent);
  }
  move_run_preserving_ranges(nodes, new_parent, nullptr);
}

// Step 13.
void prepend_to(Node& new_parent, const NodeList& nodes) {
  const auto last =
      std::find_if(nodes.rbegin(), nodes.rend(), [](const auto& node) { return is_visible(*node); });
  if (!is_inline_node(new_parent) && is_inline(first_visible(new_parent)) && last != nodes.rend() &&
      is_inline_node(**last) && !nodes.back()->is(Tag::Br)) {
    dom::insert(new_parent, dom::document_of(new_parent).create_element(Tag::Br), new_parent.first_child());
  }
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
    move_preserving_ranges(*node, new_parent, new_parent.first_child());
  }
}

// Step 15: both neighbours fitted, so the second joins the first.
void merge_with_next(Node& new_parent, const NodeCriteria& criteria) {
  const Ref<Node> next(new_parent.next_sibling());
  if (!next || !criteria || !is_editable(*next) || !criteria(*next)) return;
  if (!is_inline_node(new_parent) && is_inline(new_parent.last_child()) && is_inline(next->first_child()) &&
      !new_parent.last_child()->is(Tag::Br)) {
    append_line_break(new_parent);
  }
  move_children_preserving_ranges(*next, new_parent);
  dom::remove(*next);
}

Ref<Node> choose_parent(const NodeList& nodes, const NodeCriteria& criteria,
                        const std::function<Ref<Node>()>& make_parent) {
  const auto fits = [&](Node* node) { return node && criteria && is_editable(*node) && criteria(*node); };
  if (Node* before = nodes.front()->previous_sibling(); fits(before)) return before;
  if (Node* behind = nodes.back()->next_sibling(); fits(behind)) return behind;
  return make_parent ? make_parent() : Ref<Node>();
}

}  // namespace

// Editing commands standard, section "Wrapping a list of nodes".
Ref<Node> wrap(NodeList nodes, const NodeCriteria& criteria, const std::function<Ref<Node>()>& make_parent) {
  // A line break counts as seen here: wrapped, it may begin to matter. So does an item, which needs its list.
  const bool worth = std::any_of(nodes.begin(), nodes.end(), [](const auto& node) {
    return node->is(Tag::Br) || node->is(Tag::Li) || is_visible(*node);
  });
  if (!worth || !nodes.front()->parent()) return {};
  take_neighbours(nodes);
  const Ref<Node> new_parent = choose_parent(nodes, criteria, make_parent);
  if (!new_parent) return {};
  if (!new_parent->parent()) place_new_parent(*new_parent, *nodes.front());
  const Ref<Node> original_parent(nodes.front()->parent());
  if (dom::compare_order(*new_parent, *nodes.front()) < 0) {
    append_to(*new_parent, nodes);
  } else {
    prepend_to(*new_parent, nodes);
  }
  if (!original_parent->has_children() && is_editable(*original_parent)) dom::remove(*original_parent);
  merge_with_next(*new_parent, criteria);
  remove_extraneous_line_breaks_from(new_parent);
  return new_parent;
}

}  // namespace tvx::editing
