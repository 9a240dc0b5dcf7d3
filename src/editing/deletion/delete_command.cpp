#include "tvx/editing/deletion/delete_command.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/blocks/indentation.h"
#include "tvx/editing/blocks/lists.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_hidden_editable(const Node* node) { return node && is_editable(*node) && is_invisible(*node); }

bool may_be_sheet(const Node& node) { return node.is(Tag::Style) || node.is(Tag::Link); }
// Whatever a sheet says, within reason.
bool is_always_hidden(const Node& node) {
  return !node.is_element() || may_be_sheet(node) || node.is(Tag::Script) || node.is(Tag::Meta);
}

void remove_all(const NodeList& nodes) {
  for (const Ref<Node>& node : nodes) dom::remove(*node);
}

}  // namespace

// Each question after a removal would go through all that nobody sees anew, and count all styles.
NodeList hidden_run(Node* first, Node* (Node::*next)() const) {
  NodeList run;
  bool takes_sheet = false;
  for (Node* node = first; is_hidden_editable(node); node = (node->*next)()) {
    if (takes_sheet && !is_always_hidden(*node)) break;
    takes_sheet = takes_sheet || dom::next_in_order(*node, node) || may_be_sheet(*node);
    run.emplace_back(node);
    if (node->is(Tag::Br)) break;  // lines may be others without it
  }
  return run;
}

namespace {

/// Backspace on a caret. The steps are those of the standard's "delete" command; the numbers name them.
class BackwardDelete {
 public:
  BackwardDelete(Editor& editor, UnitEdge unit_start)
      : editor_(editor), unit_start_(unit_start), spot_(caret(editor)), start_(spot_) {}

  void run() {
    if (!find_target()) return;
    if (delete_before() || is_inline_node(spot_.node()) || outdent_first_item()) return;
    find_start();
    if (outdent_block() || stop_at_table() || !in_host(start_.node())) return;
    if (delete_line_before() || merge_items()) return;
    merge_blocks();
  }

 private:
  static Boundary caret(Editor& editor) {
    canonicalize_whitespace(editor.selection().range().start);
    return editor.selection().range().start;
  }
  bool in_host(const Node& node) const { return in_same_editing_host(node, spot_.node()); }
  void select(Boundary from, Boundary to) { editor_.selection().set(from, to); }

  bool find_target();
  bool delete_before();
  bool outdent_first_item();
  void find_start();
  bool outdent_block();
  bool stop_at_table();
  bool delete_line_before();
  bool merge_items();
  void merge_blocks();

  Editor& editor_;
  UnitEdge unit_start_;
  WalkPosition spot_;   // "node" and "offset"
  WalkPosition start_;  // "start node" and "start offset"
};

// Step 4: as far up as the line goes, then down to what stands before the caret. False: all is done.
bool BackwardDelete::find_target() {
  for (;;) {
    Node& node = spot_.node();
    Node* before = spot_.previous();
    if (const NodeList hidden =
            hidden_run(spot_.at_start() ? node.previous_sibling() : nullptr, &Node::previous_sibling);
        !hidden.empty()) {
      remove_all(hidden);
    } else if (const NodeList inner = hidden_run(before, &Node::previous_sibling); !inner.empty()) {
      remove_all(inner);
    } else if (!is_editing_host(node) && ((spot_.at_start() && is_inline_node(node)) || is_invisible(node))) {
      spot_.leave_backward();
    } else if (before && before->is(Tag::A) && is_editable(*before)) {
      remove_preserving_descendants(before);  // first the link goes, then its text
      return false;
    } else if (before && !is_block_node(*before) && !before->is(Tag::Br) && !is_object(*before) &&
               !is_island(*before)) {
      spot_.enter_end(*before);
    } else {
      return true;
    }
  }
}

// Step 5: a character, a line break, a line, an image.
bool BackwardDelete::delete_before() {
  const Node* before = spot_.previous();
  const bool in_text = spot_.is_text() && !spot_.at_start();
  // OURS: a field goes as an image does, and an image goes wherever it stands, also at the end of a link.
  const bool behind_leaf =
      before &&
      (is_object(*before) || (is_block_node(spot_.node()) && (before->is(Tag::Br) || before->is(Tag::Hr))));
  if (!in_text && !behind_leaf) return false;
  const Boundary end = spot_.boundary();
  const Offset from = in_text ? unit_start_(spot_.data->data(), end.offset) : end.offset - 1;
  select({end.node, from}, end);
  delete_selection(editor_);
  return true;
}

// Step 7.
bool BackwardDelete::outdent_first_item() {
  Ref<Node> node(spot_.node());
  if (!is_item(*node) || node->previous_sibling() || !spot_.at_start()) return false;
  for (const Ref<Node>& item : items_around(node->parent())) normalize_sublists(item);
  const RecordedValues values = record_values({node});
  split_parent({node});
  restore_values(values, editor_);
  node = release_stray_term(node, editor_);
  fix_disallowed_ancestors(node, editor_);
  return true;
}

// Steps 8 and 9: the position before the block that the caret begins.
void BackwardDelete::find_start() {
  start_ = spot_;
  for (;;) {
    if (start_.at_start()) {
      if (!start_.node().parent()) return;
      start_.leave_backward();
    } else if (const NodeList hidden = hidden_run(start_.previous(), &Node::previous_sibling);
               !hidden.empty()) {
      remove_all(hidden);
    } else {
      return;
    }
  }
}

// Step 10.
bool BackwardDelete::outdent_block() {
  if (!spot_.at_start()) return false;
  const Node* indented = &spot_.node();
  while (indented && in_host(*indented) && !(is_editable(*indented) && is_indentation_element(*indented))) {
    indented = indented->parent();
  }
  if (!indented || !in_host(*indented)) return false;
  const Boundary place{&spot_.node(), 0};
  const NodeList nodes = topmost_contained(block_extend({place, place}), [](const Node& node) {
    return is_editable(node) && !has_editable_descendant(node);
  });
  for (const Ref<Node>& node : nodes) outdent(node, editor_);
  return true;
}

// Steps 11 and 12: a table is selected by the first stroke and goes with the second.
bool BackwardDelete::stop_at_table() {
  if (start_.next() && start_.next()->is(Tag::Table)) return true;
  const Node* before = start_.previous();
  if (!before || !before->is(Tag::Table) || !in_host(start_.node())) return false;
  select(dom::before(*before), dom::after(*before));
  return true;
}

// Step 13: an empty line or a rule before the caret's block goes; the blocks stay two.
bool BackwardDelete::delete_line_before() {
  const Node* before = start_.previous();
  if (!spot_.at_start() || !before) return false;
  const Node* line_before = before->previous_sibling();
  const bool empty_line =
      before->is(Tag::Br) && (!line_before || line_before->is(Tag::Br) || !is_inline_node(*line_before));
  if (!before->is(Tag::Hr) && !empty_line) return false;
  const dom::LiveRange caret(editor_.document(), {spot_.boundary(), spot_.boundary()});
  select(dom::before(*before), dom::after(*before));
  delete_selection(editor_);
  editor_.selection().collapse(caret.start());
  return true;
}

// Steps 14 and 15: the item's content joins the item before, on a line of its own.
bool BackwardDelete::merge_items() {
  const Ref<Node> item(start_.next());
  if (!item || !is_item(*item)) return false;
  Ref<Node> previous(start_.previous());
  if (item->first_child() && is_inline_node(*item->first_child()) && previous) {
    const auto ends_inline = [&] {
      return previous->last_child() && is_inline_node(*previous->last_child());
    };
    if (ends_inline() && !previous->last_child()->is(Tag::Br)) append_line_break(*previous);
    if (ends_inline()) append_line_break(*previous);
  }
  if (!previous || !is_item(*previous)) return false;
  const dom::LiveRange caret(editor_.document(), editor_.selection().range());
  select({previous.get(), dom::length_of(*previous)}, {item.get(), 0});
  delete_selection(editor_);
  editor_.selection().set(caret.range());
  return true;
}

// Steps 16 to 19.
void BackwardDelete::merge_blocks() {
  while (Node* before = start_.previous()) {
    if (const NodeList hidden = hidden_run(before, &Node::previous_sibling); !hidden.empty()) {
      remove_all(hidden);
    } else {
      start_.enter_end(*before);
    }
  }
  select(start_.boundary(), spot_.boundary());
  delete_selection(editor_, {.backward = true});
}

}  // namespace

bool delete_backward_by(Editor& editor, UnitEdge unit_start) {
  if (editor.selection().collapsed()) {
    BackwardDelete(editor, unit_start).run();
  } else {
    delete_selection(editor);
  }
  return true;
}

}  // namespace tvx::editing
