#include "tvx/editing/gestures/leftovers.h"

#include <utility>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Element;
using dom::Mutation;
using dom::Node;
using dom::Ref;
using dom::Tag;

Leftovers::Leftovers(Editor& editor) : editor_(editor) { editor.document().add_observer(*this); }
Leftovers::~Leftovers() { editor_.document().remove_observer(*this); }

void Leftovers::mutated(const Mutation& mutation) {
  if (mutation.type == Mutation::Type::Insert) {
    auto* element = dom::as<Element>(mutation.node.get());
    if (!element) return;
    if (!element->has_children()) lost_.emplace_back(element);
    if (!element->is(Tag::Li) && mutation.parent && is_list(*mutation.parent)) strays_.emplace_back(element);
    return;
  }
  Node* holder = mutation.type == Mutation::Type::Remove        ? mutation.parent.get()
                 : mutation.type == Mutation::Type::ReplaceData ? mutation.node->parent()
                                                                : nullptr;
  if (mutation.type == Mutation::Type::Remove && is_prohibited_paragraph_child(*mutation.node) &&
      mutation.before && mutation.before->is_text())
    after_gone_.push_back(mutation.before);
  auto* element = dom::as<Element>(holder);
  if (!element) return;
  const bool took_all = mutation.type == Mutation::Type::Remove
                            ? !element->has_children() || holds_items(*element)
                            : dom::length_of(*mutation.node) == 0;
  if (took_all) lost_.emplace_back(element);
}

namespace {

// The host stands near the root; climbing there from each of hundreds of levels would not be.
bool can_go(const Node& node) {
  const Node* host = editing_host_of(node);
  return node.parent() && host && host != &node && dom::is_connected(*host);
}

/// Only texts without content, which nobody sees in the source either.
bool is_void_of_content(const Node& node) {
  for (const Node* child = node.first_child(); child; child = child->next_sibling())
    if (!child->is_text() || dom::length_of(*child) > 0) return false;
  return true;
}

/// An element of a line, and those around it that held nothing else.
void drop_empty_element(const Ref<Element>& element) {
  Ref<Node> gone(element);
  while (can_go(*gone) && is_look(*gone) && is_void_of_content(*gone)) {
    const Ref<Node> holder(gone->parent());
    dom::remove(*gone);
    gone = holder;
  }
}

/// What a command has taken along among the items: a break that ended the line before, white space in an
/// element.
void put_into_item(Editor& editor, Element& stray) {
  if (is_list(stray)) return put_list_into_item(stray);
  const Ref<Node> held(stray), list(stray.parent());
  if (stray.is(Tag::Br)) {
    dom::remove(stray);
  } else if (Node* before = stray.previous_sibling(); before && before->is(Tag::Li)) {
    move_preserving_ranges(held, *before, nullptr);
  } else if (Node* after = stray.next_sibling(); after && after->is(Tag::Li) && !is_visible(stray)) {
    move_preserving_ranges(held, *after, after->first_child());
  } else {
    const Ref<Node> item(editor.document().create_element(Tag::Li));
    dom::insert(*list, item, &stray);
    move_preserving_ranges(held, *item, nullptr);
  }
}

bool is_line_of_source(const Node* node) {
  const auto* text = dom::as<dom::Text>(node);
  return text && text->data().find(u'\n') != text->data().npos && is_filling(*text);
}

/// White space before and after a block that has gone is that of one line too many.
void drop_line_of_source(const Node& after) {
  if (!is_line_of_source(&after) || !can_go(after) || !is_editable(after)) return;
  auto* before = dom::as<dom::Text>(after.previous_sibling());
  if (!before || !collapses(static_cast<const dom::Text&>(after))) return;
  if (is_line_of_source(before)) return void(dom::remove(*before));
  // The block may have stood after words.
  const std::size_t end = before->data().find_last_not_of(u" \t\n\f\r") + 1;
  if (before->data().find(u'\n', end) != before->data().npos)
    dom::replace_data(*before, end, before->length() - end, u"");
}

}  // namespace

void Leftovers::tidy() {
  const auto lost = std::exchange(lost_, {});
  const auto strays = std::exchange(strays_, {});
  const auto after_gone = std::exchange(after_gone_, {});
  if (lost.empty() && strays.empty() && after_gone.empty()) return;
  const std::uint64_t version = editor_.document().structure_version();
  const RecordedLook style = record_current_overrides(editor_);
  for (const Ref<Element>& stray : strays)
    if (can_go(*stray) && is_list(*stray->parent()) && is_editable(*stray->parent()))
      put_into_item(editor_, *stray);
  for (const Ref<Element>& element : lost) {
    if (!can_go(*element)) continue;
    if (holds_items(*element))
      remove_if_without_items(*element);
    else
      drop_empty_element(element);
  }
  for (const Ref<Node>& after : after_gone) drop_line_of_source(*after);
  // What was removed beside the caret has counted its position anew.
  if (editor_.document().structure_version() != version && editor_.selection().collapsed())
    restore_look(style, editor_);
}

}  // namespace tvx::editing
