#include "tvx/editing/blocks/lists.h"

#include <algorithm>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/blocks/indentation.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;

bool is_html_element_of(const Node& node, Name name) {
  const auto* element = dom::as<Element>(&node);
  return element && element->is_html() && element->name() == name;
}

std::vector<Ref<Node>> items_around(Node* node) {
  std::vector<Ref<Node>> items;
  // OURS: not beyond a cell, which is a page of its own.
  for (; node && !node->is(Tag::Td) && !node->is(Tag::Th); node = node->parent()) {
    if (node->is(Tag::Li)) items.emplace_back(node);
  }
  return items;
}

void normalize_items_of(const dom::Range& range) {
  auto items = items_around(range.start.node);
  std::reverse(items.begin(), items.end());
  auto last = items_around(range.end.node);
  std::reverse(last.begin(), last.end());
  for (const Ref<Node>& item : last) {
    if (std::find(items.begin(), items.end(), item) == items.end()) items.push_back(item);
  }
  for (const Ref<Node>& item : items) normalize_sublists(item);
}

namespace {

bool has_item(const Node& node) {
  for (const Node* child = node.first_child(); child; child = child->next_sibling()) {
    if (child->is(Tag::Li)) return true;
  }
  return false;
}

// What list commands work on: lists, what stands in them, and what could stand in an item.
// OURS: items that stand in no list are items all the same, and what holds them is no line that could become
// one.
bool is_list_material(const Node& node) {
  if (!is_editable(node) || is_indentation_element(node)) return false;
  if (is_list(node) || node.is(Tag::Li) || (node.parent() && is_list(*node.parent()))) return true;
  return is_allowed_child(node, Name(Tag::Li)) && !has_item(node);
}

// OURS: white space between blocks, the layout of the source, is no line that could be in a list or not. The
// standard asks it as well, and then the lists of a page that was written by hand never go off again.
void drop_unseen(NodeList& nodes) {
  std::erase_if(nodes, [](const Ref<Node>& node) { return !node->is_element() && is_invisible(*node); });
}

bool holds(const Node& node, Tag tag) {
  for (const Node* below = &node; below; below = dom::next_in_order(*below, &node)) {
    if (below->is(tag)) return true;
  }
  return false;
}

// A list of that kind, what stands in one, or what stands in an item of one.
bool belongs_to(const Node& node, Tag tag) {
  const Node* parent = node.parent();
  if (node.is(tag) || (parent && parent->is(tag))) return true;
  return parent && parent->is(Tag::Li) && parent->parent() && parent->parent()->is(tag);
}

struct KindCount {
  bool all_belong = true, any_belongs = false, any_holds = false;
  void add(const Node& node, Tag tag) {
    const bool belongs = belongs_to(node, tag);
    all_belong &= belongs;
    any_belongs |= belongs;
    any_holds |= holds(node, tag);
  }
  bool any() const { return any_belongs || any_holds; }
};

}  // namespace

ListState list_state(Editor& editor) {
  const std::optional<dom::Range> range = editor.active_range();
  return range ? list_state(*range) : ListState::None;
}

ListState list_state(const dom::Range& range) {
  NodeList nodes = topmost_contained(block_extend(range), is_list_material);
  drop_unseen(nodes);
  if (nodes.empty()) return ListState::None;
  KindCount ordered, unordered;
  for (const Ref<Node>& node : nodes) {
    ordered.add(*node, Tag::Ol);
    unordered.add(*node, Tag::Ul);
  }
  if (ordered.all_belong && !unordered.any_holds) return ListState::Ordered;
  if (unordered.all_belong && !ordered.any_holds) return ListState::Unordered;
  if (ordered.any() && unordered.any()) return ListState::Mixed;
  if (ordered.any()) return ListState::MixedOrdered;
  return unordered.any() ? ListState::MixedUnordered : ListState::None;
}

namespace {

/// One run of "toggle lists". The numbers of the steps are the standard's.
class ListToggle {
 public:
  ListToggle(Editor& editor, Tag tag)
      : editor_(editor),
        name_(tag),
        other_(tag == Tag::Ol ? Tag::Ul : Tag::Ol),
        range_(editor.document(), {}) {}
  void run();

 private:
  bool is_wanted(const Node* node) const { return node && is_html_element_of(*node, name_); }
  bool is_wanted_editable(const Node* node) const { return is_wanted(node) && is_editable(*node); }
  Ref<Node> new_list() const { return editor_.document().create_element(name_); }
  NodeCriteria wanted() const {
    return [this](const Node& node) { return is_wanted(&node); };
  }

  void convert_lists();
  void disable();
  void enable();
  void take_item(NodeList& run);
  void place_items(const NodeList& items);
  Ref<Node> list_for(const NodeList& items) const;

  Editor& editor_;
  Name name_, other_;
  dom::LiveRange range_;
  NodeList nodes_;
  std::size_t at_ = 0;
};

// Step 6: lists of the other kind become lists of this kind, one with a neighbour of this kind if there is
// one.
void ListToggle::convert_lists() {
  NodeList lists;
  walk_contained(range_.range(), [&](Node& node) {
    if (is_html_element_of(node, other_) && is_editable(node)) lists.emplace_back(node);
    return Visit::Children;
  });
  for (const Ref<Node>& list : lists) {
    const bool joins =
        is_wanted_editable(list->previous_sibling()) || is_wanted_editable(list->next_sibling());
    if (!joins || !list->has_children()) {
      set_tag_name(static_cast<Element&>(*list), name_);
      continue;
    }
    const NodeList children = children_of(*list);
    const RecordedValues values = record_values(children);
    split_parent(children);
    wrap(children, wanted());
    restore_values(values, editor_);
  }
}

// Step 10.
void ListToggle::disable() {
  while (at_ < nodes_.size()) {
    if (is_wanted(nodes_[at_].get())) {
      outdent(nodes_[at_++], editor_);
      continue;
    }
    const NodeList run = take_siblings(nodes_, at_, [this](const Node& node) { return !is_wanted(&node); });
    const RecordedValues values = record_values(run);
    split_parent(run);
    for (const Ref<Node>& node : run) fix_disallowed_ancestors(node, editor_);
    restore_values(values, editor_);
  }
}

// Step 11.2: the next line as an item. Paragraphs turn into items, other things are put into one.
void ListToggle::take_item(NodeList& run) {
  const Ref<Node> first = nodes_[at_];
  if (first->is(Tag::P) || first->is(Tag::Div)) {
    ++at_;
    run.emplace_back(set_tag_name(static_cast<Element&>(*first), Name(Tag::Li)));
  } else if (first->is(Tag::Li) || is_list(*first)) {
    ++at_;
    run.push_back(first);
  } else {
    NodeList line{nodes_[at_++]};
    while (at_ < nodes_.size() && nodes_[at_].get() == line.back()->next_sibling() &&
           is_inline_node(*nodes_[at_]) && is_inline_node(*line.back()) && !line.back()->is(Tag::Br)) {
      line.push_back(nodes_[at_++]);
    }
    Ref<Node> item = wrap(line, {}, [this] { return Ref<Node>(editor_.document().create_element(Tag::Li)); });
    if (item) run.push_back(std::move(item));
  }
}

// Step 11.5, "new parent instructions": a quote right after a list becomes a deeper level of that list.
Ref<Node> ListToggle::list_for(const NodeList& items) const {
  const Node* parent = items.front()->parent();
  Node* list = parent ? parent->previous_sibling() : nullptr;
  if (!list || !is_editable(*parent) || !is_simple_indentation_element(*parent) ||
      !is_wanted_editable(list)) {
    return new_list();
  }
  if (list->last_child()) normalize_sublists(list->last_child());
  if (!is_wanted_editable(list->last_child())) dom::insert(*list, new_list());
  return list->last_child();
}

// Steps 11.3 to 11.6.
void ListToggle::place_items(const NodeList& items) {
  const Node* parent = items.front()->parent();
  const bool only_lists =
      std::all_of(items.begin(), items.end(), [](const auto& node) { return is_list(*node); });
  if (is_wanted(parent) || only_lists) return;
  if (parent && is_html_element_of(*parent, other_)) {
    const RecordedValues values = record_values(items);
    split_parent(items);
    wrap(items, wanted(), [this] { return new_list(); });
    restore_values(values, editor_);
    return;
  }
  const Ref<Node> list = wrap(items, wanted(), [&] { return list_for(items); });
  if (list) fix_disallowed_ancestors(list, editor_);
}

void ListToggle::enable() {
  while (at_ < nodes_.size()) {
    NodeList run;
    do {
      take_item(run);
    } while (at_ < nodes_.size() && (run.empty() || nodes_[at_].get() == run.back()->next_sibling()));
    if (!run.empty()) place_items(run);
  }
}

void ListToggle::run() {
  const bool disables =
      list_state(editor_) == (name_.tag() == Tag::Ol ? ListState::Ordered : ListState::Unordered);
  normalize_items_of(editor_.selection().range());
  range_.set(block_extend(editor_.selection().range()));
  if (!disables) convert_lists();
  nodes_ = topmost_contained(range_.range(), is_list_material);
  if (disables) {
    drop_unseen(nodes_);
    return disable();
  }
  // Lists between the lines stay as they are (step 9).
  std::erase_if(nodes_, [](const Ref<Node>& node) {
    return is_list(*node) && !(node->parent() && is_list(*node->parent()));
  });
  enable();
}

}  // namespace

void toggle_lists(Editor& editor, Tag tag) { ListToggle(editor, tag).run(); }

}  // namespace tvx::editing
