#include "tvx/editing/gestures/gesture_step.h"

#include <algorithm>

#include "tvx/base/interruption.h"
#include "tvx/base/strings.h"
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

bool is_unseen_space(const Node& node) {
  const auto* text = dom::as<dom::Text>(&node);
  return text && std::ranges::all_of(text->data(), is_ascii_space) && is_invisible(node);
}

void append_start(const Node& node, std::u16string& out) {
  const auto* element = dom::as<dom::Element>(&node);
  if (!element) return void(out += dom::serialise_node(node));
  out += u'<';
  out += element->display_name();
  for (const dom::Attribute& each : element->attributes())
    out += u' ' + each.name.text() + u"=\"" + each.value + u'"';
  out += u'>';
}

void append_seen(const Node& top, std::u16string& out) {
  for (const Node* node = &top; node;) {
    if (!is_unseen_space(*node)) append_start(*node, out);
    if (node->first_child()) {
      node = node->first_child();
      continue;
    }
    for (; node; node = node->parent()) {
      if (node->is_element()) out += u"</>";
      if (node == &top) return;
      if (node->next_sibling()) break;
    }
    if (node) node = node->next_sibling();
  }
}

}  // namespace

// A step that joins the one before it is taken from there.
Gesture::Gesture(Editor& editor, std::u16string_view label, dom::StepJoin join, Compare compare)
    : editor_(editor),
      steps_(editor.document().journal().depth()),
      within_another_(editor.document().journal().is_open()),
      held_(editor.selection()),
      step_(editor.document().journal(), label, join),
      leftovers_(editor),
      lines_(editor),
      compare_(compare) {
  // In a step of somebody else's, what would be rolled back is that whole step.
  if (compare != Compare::No && !within_another_ && editor.document().journal().depth() == steps_)
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
    compare_ == Compare::Seen ? append_seen(*node, text) : void(text += dom::serialise_node(*node));
  return text;
}

Gesture::~Gesture() {
  const Uninterrupted all;
  if (being_interrupted()) return;  // nothing has come of it
  leftovers_.tidy();
  lines_.lay_out();
  leave_blocks_edge(editor_);
  if (!compares_ || editor_.document().version() == version_) return;
  const auto stands = [&](const Ref<Node>& node) { return !node || node->parent() == host_.get(); };
  if (stands(before_) && stands(after_) && text() == text_) undo_nothing();
}

// What was selected as a whole instead stays so.
void Gesture::undo_nothing() {
  const dom::Range range = editor_.selection().range();
  const bool selects_one = range.start.node == range.end.node && !range.start.node->is_text() &&
                           range.end.offset == range.start.offset + 1;
  const Ref<Node> whole(selects_one ? dom::child_at(*range.start.node, range.start.offset) : nullptr);
  editor_.document().journal().roll_back();
  if (whole && whole->parent()) editor_.selection().set(dom::before(*whole), dom::after(*whole));
}

}  // namespace tvx::editing
