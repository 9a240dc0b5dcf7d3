#include "tvx/editing/gestures/gesture_step.h"

#include "tvx/base/interruption.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/gap_caret.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;

namespace {

/// The child of `host` that a position stands in or before; the last one at the end.
Node* child_around(const Boundary& place, const Node& host) {
  if (place.node == &host) {
    Node* child = dom::child_at(host, place.offset);
    return child ? child : host.last_child();
  }
  Node* node = place.node;
  while (node && node->parent() != &host) node = node->parent();
  return node;
}

}  // namespace

// A step that joins the one before it is taken from there.
Gesture::Gesture(Editor& editor, std::u16string_view label, dom::StepJoin join, Compare compare)
    : editor_(editor),
      steps_(editor.document().journal().depth()),
      within_another_(editor.document().journal().is_open()),
      held_(editor.selection()),
      step_(editor.document().journal(), label, join),
      leftovers_(editor) {
  // In a step of somebody else's, what would be rolled back is that whole step.
  if (compare == Compare::Yes && !within_another_ && editor.document().journal().depth() == steps_)
    note_blocks();
}

void Gesture::note_blocks() {
  const dom::Range range = editor_.selection().range();
  Node* host = range.start ? editing_host_of(*range.start.node) : nullptr;
  Node* first = host ? child_around(range.start, *host) : nullptr;
  Node* last = host ? child_around(range.end, *host) : nullptr;
  compares_ = first && last;
  if (!compares_) return;
  const auto beyond = [](Node* node, Node* (Node::*next)() const) {
    Node* beside = (node->*next)();
    return beside ? (beside->*next)() : nullptr;
  };
  host_ = host;
  before_ = beyond(first, &Node::previous_sibling);
  after_ = beyond(last, &Node::next_sibling);
  version_ = editor_.document().version();
  text_ = text();
}

std::u16string Gesture::text() const {
  std::u16string text;
  for (const Node* node = before_ ? before_->next_sibling() : host_->first_child();
       node && node != after_.get(); node = node->next_sibling())
    text += dom::serialise_node(*node);
  return text;
}

Gesture::~Gesture() {
  const Uninterrupted all;
  if (being_interrupted()) return;  // nothing has come of it
  leftovers_.tidy();
  leave_blocks_edge(editor_);
  if (!compares_ || editor_.document().version() == version_) return;
  const auto stands = [&](const Ref<Node>& node) { return !node || node->parent() == host_.get(); };
  if (stands(before_) && stands(after_) && text() == text_) editor_.document().journal().roll_back();
}

}  // namespace tvx::editing
