#include "tvx/editing/deletion/delete_command.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Tag;

namespace {

/// Removes children after a position, which then stands before the next one.
void remove_next(WalkPosition& spot, const NodeList& nodes) {
  spot.gap.next = nodes.back()->next_sibling();
  for (const dom::Ref<Node>& node : nodes) dom::remove(*node);
}

/// The delete key on a caret. The steps are those of the standard's "forwardDelete" command.
class ForwardDelete {
 public:
  ForwardDelete(Editor& editor, UnitEdge unit_end)
      : editor_(editor), unit_end_(unit_end), spot_(caret(editor)), end_(spot_) {}

  void run() {
    find_target();
    if (delete_behind() || delete_object() || is_inline_node(spot_.node()) || delete_leaf()) return;
    find_end();
    if (stop_at_table()) return;
    // Nothing to join within the host. The standard deletes up to what stands after the host, where there is
    // nothing to delete either, and leaves the caret where it began to look.
    if (!in_same_editing_host(end_.node(), spot_.node()))
      return editor_.selection().collapse(spot_.boundary());
    if (!delete_line_behind()) merge_blocks();
  }

 private:
  static Boundary caret(Editor& editor) {
    canonicalize_whitespace(editor.selection().range().start);
    return editor.selection().range().start;
  }
  void delete_range(Boundary from, Boundary to) {
    editor_.selection().set(from, to);
    delete_selection(editor_);
  }

  void find_target();
  bool delete_behind();
  bool delete_object();
  bool delete_leaf();
  void find_end();
  bool stop_at_table();
  bool delete_line_behind();
  void merge_blocks();

  Editor& editor_;
  UnitEdge unit_end_;
  WalkPosition spot_;  // "node" and "offset"
  WalkPosition end_;   // "end node" and "end offset"
};

// Step 4.
void ForwardDelete::find_target() {
  for (;;) {
    Node& node = spot_.node();
    Node* next = spot_.next();
    if (const NodeList hidden =
            hidden_run(spot_.at_end() ? node.next_sibling() : nullptr, &Node::next_sibling);
        !hidden.empty()) {
      for (const dom::Ref<Node>& each : hidden) dom::remove(*each);
    } else if (const NodeList inner = hidden_run(next, &Node::next_sibling); !inner.empty()) {
      remove_next(spot_, inner);
    } else if (!is_editing_host(node) && ((spot_.at_end() && is_inline_node(node)) || is_invisible(node))) {
      spot_.leave_forward();
    } else if (next && !is_block_node(*next) && !next->is(Tag::Br) && !is_object(*next) &&
               !is_island(*next) && !is_collapsed_block_prop(*next)) {
      spot_.enter_start(*next);
    } else {
      return;
    }
  }
}

// Step 5.
bool ForwardDelete::delete_behind() {
  if (!spot_.is_text() || spot_.at_end()) return false;
  const Offset end = unit_end_(spot_.data->data(), spot_.offset);
  delete_range({spot_.data, spot_.offset}, {spot_.data, end});
  return true;
}

// OURS: an image or a field goes wherever it stands, also at the beginning of a link.
bool ForwardDelete::delete_object() {
  const Node* next = spot_.next();
  if (!next || !is_object(*next)) return false;
  delete_range(dom::before(*next), dom::after(*next));
  return true;
}

// Step 7.
bool ForwardDelete::delete_leaf() {
  const Node* next = spot_.next();
  if (!next || !(next->is(Tag::Br) || next->is(Tag::Hr)) || is_collapsed_block_prop(*next)) return false;
  delete_range(dom::before(*next), dom::after(*next));
  return true;
}

// Steps 8 to 10.
void ForwardDelete::find_end() {
  end_ = spot_;
  if (end_.next() && is_collapsed_block_prop(*end_.next())) end_.gap = Gap::after(*end_.next());
  for (;;) {
    if (end_.at_end()) {
      if (!end_.node().parent()) return;
      end_.leave_forward();
    } else if (const NodeList hidden = hidden_run(end_.next(), &Node::next_sibling); !hidden.empty()) {
      remove_next(end_, hidden);
    } else {
      return;
    }
  }
}

// Steps 11 and 12.
bool ForwardDelete::stop_at_table() {
  if (end_.previous() && end_.previous()->is(Tag::Table)) return true;
  const Node* next = end_.next();
  if (!next || !next->is(Tag::Table) || !in_same_editing_host(end_.node(), spot_.node())) return false;
  editor_.selection().set(dom::before(*next), dom::after(*next));
  return true;
}

// Step 13: a line break right after a block always counts.
bool ForwardDelete::delete_line_behind() {
  const Node* next = end_.next();
  if (!spot_.at_end() || !next || !(next->is(Tag::Hr) || next->is(Tag::Br))) return false;
  const Boundary caret = spot_.boundary();
  delete_range(dom::before(*next), dom::after(*next));
  editor_.selection().collapse(caret);
  return true;
}

// Steps 14 to 17.
void ForwardDelete::merge_blocks() {
  while (Node* next = end_.next()) {
    if (const NodeList hidden = hidden_run(next, &Node::next_sibling); !hidden.empty()) {
      remove_next(end_, hidden);
    } else {
      end_.enter_start(*next);
    }
  }
  delete_range(spot_.boundary(), end_.boundary());
}

}  // namespace

bool delete_forward_by(Editor& editor, UnitEdge unit_end) {
  if (editor.selection().collapsed()) {
    ForwardDelete(editor, unit_end).run();
  } else {
    delete_selection(editor);
  }
  return true;
}

}  // namespace tvx::editing
