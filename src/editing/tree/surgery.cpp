#include "tvx/editing/tree/surgery.h"

#include <algorithm>

#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::LiveRange;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// Where a move takes the boundaries of ranges. Indexes are counted only where a boundary asks.
class MovedBoundary {
 public:
  MovedBoundary(const Node& node, Node& new_parent, const Node* before)
      : node_(node), new_parent_(new_parent), before_(before) {}

  Boundary operator()(Boundary place) const {
    if (place.node == &new_parent_ && before_ && dom::stands_before(*before_, place.offset)) ++place.offset;
    if (place.node != node_.parent() || !place.node) return place;
    const bool behind = dom::stands_before(node_, place.offset);
    const Node* next = node_.next_sibling();
    if (behind && next && dom::stands_before(*next, place.offset)) {
      --place.offset;
    } else if (behind || is_right_before(place.offset)) {
      place = {&new_parent_, new_index() + (behind ? 1 : 0)};
    }
    return place;
  }

 private:
  bool is_right_before(Offset offset) const {
    const Node* previous = node_.previous_sibling();
    return previous ? dom::stands_before(*previous, offset) : offset == 0;
  }
  // Where the node will stand: within one parent, not counting itself at its old position.
  Offset new_index() const {
    const Offset index = before_ ? dom::index_of(*before_) : new_parent_.child_count();
    const bool leaves_gap = node_.parent() == &new_parent_ && dom::stands_before(node_, index);
    return leaves_gap ? index - 1 : index;
  }

  const Node& node_;
  Node& new_parent_;
  const Node* before_;
};

/// A boundary put aside while nodes move; its node is held, for nothing else may hold it.
struct HeldBoundary {
  Ref<Node> node;
  Offset offset;

  explicit HeldBoundary(Boundary place) : node(place.node), offset(place.offset) {}
  Boundary place() const { return {node.get(), offset}; }

  // The rules of move_preserving_ranges for one node of a run.
  void follow(const Node* old_parent, Offset old_index, Node& new_parent, Offset new_index) {
    if (node.get() == &new_parent && offset > new_index) ++offset;
    if (node.get() != old_parent) return;
    if (offset == old_index || offset == old_index + 1) {
      node = &new_parent;
      offset += new_index - old_index;
    } else if (offset > old_index + 1) {
      --offset;
    }
  }
};

struct HeldRange {
  LiveRange* range;
  HeldBoundary start, end;
};

/// Those of the kept ranges that are still there, for who hears of a move may let go of ranges of their own.
/// The document has them in the order in which they came.
template <class Kept, class Action>
void for_each_alive(const dom::Document& document, const std::vector<Kept>& kept, Action act) {
  const std::vector<LiveRange*>& alive = document.live_ranges();
  std::size_t from = 0;
  for (const Kept& each : kept) {
    const auto found = std::find(alive.begin() + std::ptrdiff_t(from), alive.end(), each.range);
    if (found == alive.end()) continue;
    from = std::size_t(found - alive.begin()) + 1;
    act(each);
  }
}

std::vector<HeldRange> put_ranges_aside(dom::Document& document) {
  std::vector<HeldRange> held;
  for (LiveRange* range : document.live_ranges()) {
    if (!range->start()) continue;
    held.push_back({range, HeldBoundary(range->start()), HeldBoundary(range->end())});
    range->set_unordered({}, {});
  }
  return held;
}

// One that stands somewhere was taken meanwhile.
void put_ranges_back(const dom::Document& document, const std::vector<HeldRange>& held) {
  for_each_alive(document, held, [](const HeldRange& range) {
    if (!range.range->start()) range.range->set_unordered(range.start.place(), range.end.place());
  });
}

}  // namespace

// Editing commands standard, "preserving ranges". The plain rules of the DOM would empty a range as soon as
// the nodes it stands in are lifted from their parent.
void move_preserving_ranges(Ref<Node> node, Node& new_parent, Node* before) {
  dom::Document& document = dom::document_of(new_parent);
  if (before == node.get()) return;
  const MovedBoundary moved(*node, new_parent, before);
  std::vector<HeldRange> held;
  for (LiveRange* range : document.live_ranges()) {
    if (!range->start()) continue;
    held.push_back({range, HeldBoundary(moved(range->start())), HeldBoundary(moved(range->end()))});
  }
  // Standing nowhere they aren't asked whether they stand in the node, which is a climb for each. A change
  // outside any step notes where the selection is.
  if (document.journal().is_open())
    for (const HeldRange& range : held) range.range->set_unordered({}, {});
  dom::insert(new_parent, node, before);
  for_each_alive(document, held, [](const HeldRange& range) {
    range.range->set_unordered(range.start.place(), range.end.place());
  });
}

// Ranges stand nowhere meanwhile, so that no single move has to count siblings for them.
void move_run_preserving_ranges(const NodeList& nodes, Node& new_parent, Node* before) {
  Node* const old_parent = nodes.empty() ? nullptr : nodes.front()->parent();
  if (!old_parent || old_parent == &new_parent || nodes.size() < 2) {
    for (const Ref<Node>& node : nodes) move_preserving_ranges(node, new_parent, before);
    return;
  }
  dom::Document& document = dom::document_of(new_parent);
  std::vector<HeldRange> held = put_ranges_aside(document);
  const auto counts = std::any_of(held.begin(), held.end(), [&](const HeldRange& range) {
    const auto in_parent = [&](const HeldBoundary& boundary) {
      return boundary.node == old_parent || boundary.node == &new_parent;
    };
    return in_parent(range.start) || in_parent(range.end);
  });
  const Offset old_index = counts ? dom::index_of(*nodes.front()) : 0;
  Offset new_index = !counts ? 0 : before ? dom::index_of(*before) : dom::length_of(new_parent);
  for (const Ref<Node>& node : nodes) {
    dom::insert(new_parent, node, before);
    for (HeldRange& range : held) {
      if (!counts) break;
      range.start.follow(old_parent, old_index, new_parent, new_index);
      range.end.follow(old_parent, old_index, new_parent, new_index);
    }
    ++new_index;
  }
  put_ranges_back(document, held);
}

void move_children_preserving_ranges(Node& from, Node& to) {
  move_run_preserving_ranges(children_of(from), to, nullptr);
}

NodeList children_of(const Node& node) {
  NodeList children;
  for (Node* child = node.first_child(); child; child = child->next_sibling()) children.emplace_back(child);
  return children;
}

void remove_preserving_descendants(Ref<Node> node) {
  if (node->has_children()) {
    split_parent(children_of(*node));
  } else {
    dom::remove(*node);
  }
}

namespace {

bool holds_boundary(dom::Document& document, const Element& element) {
  return std::ranges::any_of(document.live_ranges(), [&](const LiveRange* range) {
    return range->start().node == &element || range->end().node == &element;
  });
}

}  // namespace

Ref<Element> set_tag_name(Element& element, Name name) {
  Ref<Element> held(element);
  if (element.is_html() && element.name() == name) return held;
  if (!element.parent()) return held;
  Ref<Element> replacement = dom::document_of(element).create_element(name);
  // Boundaries around the element stay as they are, those in it go over with its children.
  dom::Document& document = dom::document_of(element);
  std::vector<HeldRange> ranges;
  if (element.has_children() || holds_boundary(document, element)) ranges = put_ranges_aside(document);
  dom::insert(*element.parent(), replacement, &element);
  for (const dom::Attribute& attribute : element.attributes()) {
    dom::set_attribute(*replacement, attribute.name, attribute.value, attribute.name_space);
  }
  // OURS: the items of a menu may be said to stand in one line; a paragraph stands in one of its own.
  if (is_item(element) && !is_item(*replacement)) dom::style::remove_inline_value(*replacement, u"display");
  move_children_preserving_ranges(element, *replacement);
  dom::remove(element);
  for (HeldRange& range : ranges) {
    for (HeldBoundary* boundary : {&range.start, &range.end}) {
      if (boundary->node.get() == &element) boundary->node = replacement;
    }
  }
  put_ranges_back(document, ranges);
  return replacement;
}

void append_line_break(Node& parent) {
  dom::insert(parent, dom::document_of(parent).create_element(Tag::Br));
}

bool has_visible_child(const Node& node) {
  for (const Node* child = node.first_child(); child; child = child->next_sibling()) {
    if (is_visible(*child)) return true;
  }
  return false;
}

namespace {

// The last thing in a line: back over what nobody sees, to a line break without effect or to something seen.
Node* last_in_line(Node* from, const Node* limit) {
  while (from->last_child()) from = from->last_child();
  while (from != limit && is_invisible(*from) && !is_extraneous_line_break(*from)) {
    Node* previous = dom::previous_in_order(*from);
    if (!previous) break;
    from = previous;
  }
  return from;
}

}  // namespace

void remove_extraneous_line_breaks_before(const Ref<Node>& node) {
  Node* reference = node->previous_sibling();
  if (!reference) return;
  reference = last_in_line(reference, node->parent());
  if (is_extraneous_line_break(*reference) && is_editable(*reference)) dom::remove(*reference);
}

// OURS: in what is not rendered no line ends. There the wrapper that is taken away with a needless break
// would be anything, the node itself or what holds it.
void remove_extraneous_line_breaks_at_end_of(const Ref<Node>& node) {
  if (!is_rendered(*node)) return;
  Node* reference = last_in_line(node.get(), node.get());
  if (!is_extraneous_line_break(*reference) || !is_editable(*reference)) return;
  while (Node* parent = reference->parent()) {
    if (!is_editable(*parent) || !is_invisible(*parent)) break;
    reference = parent;
  }
  dom::remove(*reference);
}

void remove_extraneous_line_breaks_from(const Ref<Node>& node) {
  remove_extraneous_line_breaks_before(node);
  remove_extraneous_line_breaks_at_end_of(node);
}

namespace {

void break_before(Node& node) {
  dom::insert(*node.parent(), dom::document_of(node).create_element(Tag::Br), &node);
}

void break_after(Node& node) {
  dom::insert(*node.parent(), dom::document_of(node).create_element(Tag::Br), node.next_sibling());
}

// Steps 6: the nodes are the tail of their parent, and simply follow it.
void split_tail(const NodeList& nodes, const Ref<Node>& parent, bool precedes) {
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
    move_preserving_ranges(*node, *parent->parent(), parent->next_sibling());
  }
  Node& last = *nodes.back();
  if (precedes && !precedes_line_break(last)) break_after(last);
  remove_extraneous_line_breaks_at_end_of(parent);
}

// Step 7: what comes before the nodes goes into a copy of the parent.
void split_off_head(Node& first, const Ref<Node>& parent) {
  Ref<Node> copy = dom::clone(*parent, dom::document_of(*parent), dom::Deep::No);
  if (auto* element = dom::as<Element>(parent)) dom::remove_attribute(*element, dom::names::id);
  dom::insert(*parent->parent(), copy, parent.get());
  NodeList head;
  for (Node* node = parent->first_child(); node != &first; node = node->next_sibling())
    head.emplace_back(node);
  move_run_preserving_ranges(head, *copy, nullptr);
}

}  // namespace

// Editing commands standard, "split the parent". The numbers are its steps.
void split_parent(const NodeList& nodes) {
  if (nodes.empty()) return;
  const Ref<Node> parent(nodes.front()->parent());
  if (!parent || !is_editable(*parent) || !parent->parent()) return;  // 2
  const Ref<Node> first = nodes.front(), last = nodes.back();
  const bool has_first = parent->first_child() == first.get(), has_last = parent->last_child() == last.get();
  if (has_first) remove_extraneous_line_breaks_before(parent);     // 3
  const bool follows = has_first && follows_line_break(*parent);   // 4
  const bool precedes = has_last && precedes_line_break(*parent);  // 5
  if (!has_first && has_last) return split_tail(nodes, parent, precedes);
  if (!has_first) split_off_head(*first, parent);
  move_run_preserving_ranges(nodes, *parent->parent(), parent.get());  // 8
  if (follows && !follows_line_break(*first)) break_before(*first);    // 9
  if (is_inline_node(*last) && !last->is(Tag::Br) && parent->first_child() &&
      parent->first_child()->is(Tag::Br) && !is_inline_node(*parent)) {  // 10
    dom::remove(*parent->first_child());
  }
  if (!parent->has_children()) {  // 11
    dom::remove(*parent);
    if (precedes && !precedes_line_break(*last)) break_after(*last);
  } else {
    remove_extraneous_line_breaks_before(parent);  // 12
  }
  if (!last->next_sibling() && last->parent()) remove_extraneous_line_breaks_at_end_of(last->parent());  // 13
}

void normalize_sublists(const Ref<Node>& item) {
  if (!item->is(Tag::Li) || !is_editable(*item) || !item->parent() || !is_editable(*item->parent())) return;
  const auto is_blank = [](const Node& node) {
    const auto* text = dom::as<dom::Text>(&node);
    return text && trimmed(text->data()).empty();
  };
  std::size_t lists = 0;
  for (Node* child = item->first_child(); child; child = child->next_sibling()) lists += is_list(*child);
  Ref<Node> new_item;
  while (lists > 0) {
    Ref<Node> child = item->last_child();
    if (is_list(*child) || (!new_item && is_blank(*child))) {
      lists -= is_list(*child);
      new_item = nullptr;
      move_preserving_ranges(child, *item->parent(), item->next_sibling());
      continue;
    }
    if (!new_item) {
      new_item = dom::document_of(*item).create_element(Tag::Li);
      dom::insert(*item->parent(), new_item, item->next_sibling());
    }
    move_preserving_ranges(child, *new_item, new_item->first_child());
  }
}

}  // namespace tvx::editing
