#include "tvx/editing/deletion/deletion.h"

#include <algorithm>

#include "tvx/base/work_count.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/rising.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// One deletion. The steps are those of the standard's "delete the selection"; the numbers name them.
class Deletion {
 public:
  Deletion(Editor& editor, DeleteOptions options) : editor_(editor), options_(options) {}
  void run();

 private:
  bool narrow();
  void find_blocks();
  bool delete_within_text();
  void remove_contents();
  void remove_node(const Ref<Node>& node, bool unseen);
  Node* holder_of(Node& parent) const;
  bool still_shows(Node& block, const Node& lost, bool lost_unseen);
  bool merging_applies() const;
  void drop_emptied_lists();
  bool merge_inner_block();
  void remove_empty_inner_block(const Node& reference);
  void merge_into_inner_block();
  bool step_to_first_line();
  NodeList first_lines_that_fit() const;
  void lift_list_of_item();
  void merge_following_block();
  void join_lists();
  void finish_merge();

  dom::Range range() const { return editor_.selection().range(); }
  void collapse() {
    const dom::Range present = range();
    editor_.selection().collapse(options_.backward ? present.end : present.start);
  }

  Editor& editor_;
  DeleteOptions options_;
  Boundary start_, end_;
  Ref<Node> start_block_, end_block_;
  // Those that the end block is in and the start block isn't, with their items; the innermost first.
  NodeList lists_of_end_;
  Ref<Node> asked_parent_, holder_;  // the last parent that lost a node, and the block that it stands in
  Ref<Node> asked_block_,
      shown_;  // the block that was last asked whether it shows anything, and what it shows
  bool block_shows_ = false;
  RecordedLook look_;
  RecordedValues values_;
};

bool same_host(const Node* a, const Node* b) { return a && b && in_same_editing_host(*a, *b); }

// Steps 1 to 10: as little as possible is deleted, so the ends move towards each other.
bool Deletion::narrow() {
  canonicalize_whitespace(range().start);
  canonicalize_whitespace(range().end);
  start_ = last_equivalent_point(range().start);
  end_ = first_equivalent_point(range().end);
  if (dom::compare(end_, start_) <= 0) {
    collapse();
    return false;
  }
  if (start_.node->is_text() && start_.offset == 0) start_ = dom::before(*start_.node);
  if (end_.node->is_text() && end_.offset == dom::length_of(*end_.node)) end_ = dom::after(*end_.node);
  editor_.selection().set(start_, end_);
  return true;
}

Node* block_around(Node* node) {
  while (same_host(node->parent(), node) && is_inline_node(*node)) node = node->parent();
  const bool fits = (is_block_node(*node) || is_editing_host(*node)) &&
                    is_allowed_child_name(dom::Name(Tag::Span), *node) && !node->is(Tag::Td) &&
                    !node->is(Tag::Th);
  return fits ? node : nullptr;
}

// Steps 12 to 17.
void Deletion::find_blocks() {
  start_block_ = block_around(start_.node);
  end_block_ = block_around(end_.node);
  if (!merging_applies()) return;
  for (Node* node = end_block_.get(); node && !dom::is_inclusive_ancestor(*node, *start_block_);
       node = node->parent())
    if (holds_items(*node) || is_item(*node)) lists_of_end_.emplace_back(node);
}

// OURS: in lists and items the white space of the source keeps nothing there.
bool is_left_empty(const Node& block) {
  const bool may_hold_filling = holds_items(block) || is_item(block);
  for (const Node* child = block.first_child(); child; child = child->next_sibling())
    if (!may_hold_filling || !child->is_text() || !is_filling(*child)) return false;
  return true;
}

void Deletion::drop_emptied_lists() {
  for (const Ref<Node>& node : lists_of_end_)
    if (node->parent() && is_editable(*node) && is_left_empty(*node)) dom::remove(*node);
}

// Step 21.
bool Deletion::delete_within_text() {
  auto* text = dom::as<dom::Text>(start_.node);
  if (start_.node != end_.node || !text || !is_editable(*text)) return false;
  dom::replace_data(*text, start_.offset, end_.offset - start_.offset, u"");
  canonicalize_whitespace(start_, false);
  collapse();
  restore_look(look_, editor_);
  return true;
}

// What nobody sees, whatever stands around it: taking it away shows and hides nothing.
bool is_unseen(const Node& node) {
  if (const auto* element = dom::as<dom::Element>(&node)) return display_of(*element) == Display::None;
  return !node.is_text() || is_whitespace_node(node);
}

// Steps 22 to 28.
void Deletion::remove_contents() {
  const NodeList nodes = topmost_contained(
      {start_, end_}, [](const Node& node) { return is_editable(node) && !is_table_part(node); });
  auto* first = dom::as<dom::Text>(start_.node);
  if (first && is_editable(*first)) dom::replace_data(*first, start_.offset, Offset(-1), u"");
  // Asked of all before the first one goes: with each style element that goes, all styles are counted anew.
  std::vector<bool> unseen;
  for (const Ref<Node>& node : nodes) unseen.push_back(is_unseen(*node));
  for (std::size_t i = 0; i < nodes.size(); ++i) remove_node(nodes[i], unseen[i]);
  auto* last = dom::as<dom::Text>(end_.node);
  if (last && is_editable(*last)) dom::replace_data(*last, 0, end_.offset, u"");
  canonicalize_whitespace(range().start, false);
  canonicalize_whitespace(range().end, false);
}

// What is seen of a block: the last leaf, for nodes go from the start.
Node* last_seen_of(Node& block) {
  for (Node* node = dom::last_within(block); node != &block; node = dom::previous_in_order(*node, &block)) {
    if (!node->has_children() && is_visible(*node)) return node;
  }
  // Elements may show by being there, whatever they hold.
  for (Node* child = block.last_child(); child; child = child->previous_sibling())
    if (is_visible(*child)) return child;
  return nullptr;
}

// Whether a block that has just lost a node still shows anything. It is not looked through again until what
// was seen of it goes.
bool Deletion::still_shows(Node& block, const Node& lost, bool lost_unseen) {
  if (asked_block_.get() == &block) {
    if (lost_unseen) return block_shows_;
    const bool stands = shown_ && shown_->parent() && shown_ != &lost &&
                        !(lost.has_children() && dom::is_inclusive_ancestor(lost, *shown_));
    if (stands && is_visible(*shown_)) return true;
  }
  asked_block_ = block;
  shown_ = last_seen_of(block);
  return block_shows_ = bool(shown_);
}

// The block around what was a child of the parent. Nodes go in the document's order, so the way up from the
// next one mostly meets the last parent.
Node* Deletion::holder_of(Node& parent) const {
  Node* holder = &parent;
  while (holder && is_inline_node(*holder)) {
    holder = holder->parent();
    if (holder && holder == asked_parent_) return holder_.get();
  }
  return holder;
}

// Step 25: a block that is left without content keeps a line for the caret, wrappers go.
void Deletion::remove_node(const Ref<Node>& node, bool unseen) {
  Ref<Node> parent(node->parent());
  dom::remove(*node);
  // What nobody saw changes no block; only a style element would make this ask all styles again.
  if (!unseen || asked_parent_ != parent) {
    holder_ = holder_of(*parent);
    asked_parent_ = parent;
  }
  Node* block = holder_.get();
  if (block && !still_shows(*block, *node, unseen) && (is_editable(*parent) || is_editing_host(*parent))) {
    append_line_break(*parent);
    block_shows_ = true;
  }
  if (!options_.strip_wrappers && dom::is_inclusive_ancestor(*parent, *start_.node)) return;
  while (!parent->has_children() && parent->is_element() && is_inline_node(*parent) && is_editable(*parent)) {
    Ref<Node> grandparent(parent->parent());
    dom::remove(*parent);
    parent = grandparent;
  }
}

// Step 30.
bool Deletion::merging_applies() const {
  return options_.block_merging && start_block_ && end_block_ && start_block_ != end_block_ &&
         in_same_editing_host(*start_block_, *end_block_);
}

// Step 32: the end block stands inside the start block; its first line moves out.
bool Deletion::merge_inner_block() {
  const Node* reference = end_block_.get();
  while (reference->parent() != start_block_.get()) reference = reference->parent();
  editor_.selection().collapse(dom::before(*reference));
  if (!end_block_->has_children()) {
    remove_empty_inner_block(*reference);
    return false;
  }
  if (!is_inline_node(*end_block_->first_child())) return false;
  NodeList children{end_block_->first_child()};
  for (Node* next = children.back()->next_sibling();
       next && !children.back()->is(Tag::Br) && is_inline_node(*next); next = next->next_sibling()) {
    children.emplace_back(next);
  }
  values_ = record_values(children);
  split_parents_while(children, [&] {
    const Node* parent = children.front()->parent();
    return parent != start_block_.get() && is_editable(*parent);
  });
  Node* before = children.front()->previous_sibling();
  if (before && before->is(Tag::Br) && is_editable(*before)) dom::remove(*before);
  return true;
}

void Deletion::remove_empty_inner_block(const Node&) {
  while (is_editable(*end_block_) && !end_block_->previous_sibling() && !end_block_->next_sibling() &&
         end_block_->parent() != start_block_.get()) {
    Ref<Node> parent(end_block_->parent());
    dom::remove(*end_block_);
    end_block_ = parent;
  }
  if (!is_editable(*end_block_)) return;
  const Node *before = end_block_->previous_sibling(), *behind = end_block_->next_sibling();
  if (!is_inline_node(*end_block_) && before && is_inline_node(*before) && behind &&
      is_inline_node(*behind)) {
    dom::insert(*end_block_->parent(), editor_.document().create_element(Tag::Br),
                end_block_->next_sibling());
  }
  dom::remove(*end_block_);
}

// Step 33: the start block stands inside the end block; the line after it moves in.
void Deletion::merge_into_inner_block() {
  editor_.selection().collapse({start_block_.get(), dom::length_of(*start_block_)});
  const Node* reference = start_block_.get();
  while (reference->parent() != end_block_.get()) reference = reference->parent();
  Node* next = reference->next_sibling();
  Node* last = start_block_->last_child();
  if (next && is_inline_node(*next) && last && last->is(Tag::Br)) dom::remove(*last);
  NodeList nodes;
  for (; next && !is_block_node(*next); next = next->next_sibling()) {
    nodes.emplace_back(next);
    if (next->is(Tag::Br)) break;
  }
  values_ = record_values(nodes);
  for (const Ref<Node>& node : nodes) move_preserving_ranges(node, *start_block_, nullptr);
}

// OURS: a block that starts with another has its first line in there. False where that is no line to follow
// this one: a table's, a rule, what can't be edited.
bool Deletion::step_to_first_line() {
  const auto fits = [this](const Node& node) { return is_allowed_child(node, *start_block_); };
  for (Node* first = end_block_->first_child(); first && is_block_node(*first) && !fits(*first);
       first = end_block_->first_child()) {
    if (!is_editable(*first) || !first->has_children() || first->is(Tag::Table) || is_table_part(*first))
      return false;
    end_block_ = first;
  }
  return true;
}

/// What of the end block may stand in the start block: all of it, or its first line.
NodeList Deletion::first_lines_that_fit() const {
  NodeList nodes = children_of(*end_block_);
  const auto rest = std::ranges::find_if(nodes, [this](const Ref<Node>& node) {
    return is_block_node(*node) && !is_allowed_child(*node, *start_block_);
  });
  nodes.erase(rest, nodes.end());
  return nodes;
}

/// An item whose own line has gone and that begins with a list now: its items take its position.
void Deletion::lift_list_of_item() {
  const Ref<Node> list(end_block_->first_child());
  if (!end_block_->is(Tag::Li) || !list || !is_list(*list)) return;
  for (const Ref<Node>& item : children_of(*list))
    move_preserving_ranges(item, *end_block_->parent(), end_block_.get());
  dom::remove(*list);
}

// Step 34. OURS: blocks that may not stand in the start block stay where they are.
void Deletion::merge_following_block() {
  editor_.selection().collapse({start_block_.get(), dom::length_of(*start_block_)});
  if (!step_to_first_line()) return;
  const Node* first = end_block_->first_child();
  Node* last = start_block_->last_child();
  if (first && is_inline_node(*first) && last && last->is(Tag::Br)) dom::remove(*last);
  const NodeList lines = first_lines_that_fit();
  values_ = record_values(lines);
  move_run_preserving_ranges(lines, *start_block_, nullptr);
  lift_list_of_item();
  while (is_left_empty(*end_block_)) {
    Ref<Node> parent(end_block_->parent());
    dom::remove(*end_block_);
    if (!parent) break;
    end_block_ = parent;
  }
}

// Steps 35 to 37: what stood between two lists may be gone.
void Deletion::join_lists() {
  for (Ref<Node> ancestor = start_block_; ancestor;) {
    const Ref<Node> next(ancestor->next_sibling());
    const bool joins = next && ((ancestor->is(Tag::Ol) && next->is(Tag::Ol)) ||
                                (ancestor->is(Tag::Ul) && next->is(Tag::Ul)));
    if (joins && same_host(ancestor.get(), start_block_.get()) && same_host(ancestor.get(), next.get())) {
      move_children_preserving_ranges(*next, *ancestor);
      dom::remove(*next);
    } else {
      ancestor = ancestor->parent();
    }
  }
}

// Steps 38 to 41.
void Deletion::finish_merge() {
  join_lists();
  restore_values(values_, editor_);
  if (!start_block_->has_children()) append_line_break(*start_block_);
  remove_extraneous_line_breaks_at_end_of(start_block_);
  // OURS: what was at a line's edge a moment ago is in a line now, where a blank is seen as it is.
  canonicalize_whitespace(range().start, false);
  restore_look(look_, editor_);
}

void Deletion::run() {
  if (!narrow()) return;
  find_blocks();
  look_ = record_current_look(editor_);
  if (delete_within_text()) return;
  const Ref<Node> start_held(start_.node), end_held(end_.node);
  remove_contents();
  if (!merging_applies()) {
    collapse();
    return restore_look(look_, editor_);
  }
  // A line that was kept for the caret is in the way now; the end block goes, and an empty start block
  // gets one again at the end.
  Node* only = start_block_->first_child();
  if (only && only == start_block_->last_child() && is_collapsed_block_prop(*only)) dom::remove(*only);
  if (dom::is_ancestor(*start_block_, *end_block_)) {
    const bool has_merged = merge_inner_block();
    drop_emptied_lists();
    if (!has_merged) return restore_look(look_, editor_);
  } else if (dom::is_ancestor(*end_block_, *start_block_)) {
    merge_into_inner_block();
  } else {
    merge_following_block();
  }
  finish_merge();
}

}  // namespace

Boundary remove_control(dom::Element& element) {
  const Ref<Node> parent(element.parent());
  const Boundary place = dom::before(element);
  dom::remove(element);
  if (is_block_node(*parent) && is_allowed_child_name(dom::Name(Tag::Br), *parent) &&
      !has_visible_child(*parent))
    append_line_break(*parent);
  canonicalize_whitespace(place, false);  // the blanks on both sides have met
  return normalized_caret_place(place);
}

void delete_selection(Editor& editor, DeleteOptions options) {
  // OURS: what is selected as a whole goes as a whole; the standard would walk into a table's cells.
  if (dom::Element* control = editor.selection().control(); control && is_editable(*control)) {
    editor.selection().collapse(remove_control(*control));
  } else if (editor.active_range()) {
    Deletion(editor, options).run();
    leave_comments(editor);
  }
}

}  // namespace tvx::editing
