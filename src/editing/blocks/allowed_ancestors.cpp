#include "tvx/editing/blocks/allowed_ancestors.h"

#include <optional>
#include <vector>

#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// How many levels above its parent the nearest ancestor stands that may hold a node; none if none may.
std::optional<std::size_t> levels_to_allowed_parent(const Node& node) {
  std::size_t levels = 0;
  for (const Node* ancestor = node.parent(); ancestor && in_same_editing_host(*ancestor, node);
       ancestor = ancestor->parent()) {
    if (is_allowed_child(node, *ancestor)) return levels;
    ++levels;
  }
  return std::nullopt;
}

/// Breaks the parent of a node, which then stands one level higher. False where it doesn't: the parent can't
/// be edited, or the node went with it as a line break that nothing needs any more.
bool lift(const Ref<Node>& node) {
  const Ref<Node> grandparent(node->parent()->parent());
  split_parent({node});
  return grandparent && node->parent() == grandparent.get();
}

/// Breaks the elements around a node until it stands `levels` higher. That number falls with each turn.
void lift(const Ref<Node>& node, std::size_t levels, Editor& editor) {
  const RecordedValues values = record_values({node});
  while (levels > 0 && lift(node)) --levels;
  restore_values(values, editor);
}

/// Makes a paragraph of an item or cell that stands nowhere it may, and parts it at the blocks in it.
Ref<Node> become_paragraph(const Ref<Node>& node, Editor& editor) {
  const Ref<Node> paragraph =
      set_tag_name(static_cast<Element&>(*node), Name(std::u16string_view(editor.paragraph_separator())));
  fix_disallowed_ancestors(paragraph, editor);
  for (const Ref<Node>& child : children_of(*paragraph)) {
    if (!is_prohibited_paragraph_child(*child)) continue;
    const RecordedValues values = record_values({child});
    split_parent({child});
    restore_values(values, editor);
  }
  return paragraph;
}

// Items and cells that have wandered out of their place become paragraphs.
void fix_stray(const Ref<Node>& node, Editor& editor) {
  if (node->is(Tag::Dd) || node->is(Tag::Dt)) {
    wrap(
        {node},
        [](const Node& sibling) {
          return sibling.is(Tag::Dl) && static_cast<const Element&>(sibling).attributes().empty();
        },
        [&] { return Ref<Node>(editor.document().create_element(Tag::Dl)); });
    return;
  }
  const Node* host = editing_host_of(*node);
  if (!host || !is_allowed_child_name(Name(Tag::P), *host) || !is_prohibited_paragraph_child(*node)) return;
  become_paragraph(node, editor);
}

}  // namespace

// Editing commands standard, "fix disallowed ancestors". Calls itself only with a node that is allowed.
void fix_disallowed_ancestors(const Ref<Node>& node, Editor& editor) {
  if (!node->parent() || !is_editable(*node)) return;
  const std::optional<std::size_t> levels = levels_to_allowed_parent(*node);
  if (!levels) return fix_stray(node, editor);
  if (*levels > 0) lift(node, *levels, editor);
}

namespace {

/// One element of each kind that an ancestor may forbid, of those in `node` and itself.
std::vector<const Node*> forbidden_kinds(const Node& node) {
  const Node *link = nullptr, *block = nullptr, *heading = nullptr;
  for (const Node* at = &node; at; at = dom::next_in_order(*at, &node)) {
    if (!link && at->is(Tag::A)) link = at;
    if (!block && is_prohibited_paragraph_child(*at)) block = at;
    if (!heading && is_heading(*at)) heading = at;
  }
  std::vector<const Node*> kinds;
  for (const Node* kind : {link, block, heading}) {
    if (kind) kinds.push_back(kind);
  }
  return kinds;
}

/// By how many levels a node must rise until no ancestor forbids anything that it holds. None where that
/// would lead out of its editing host.
std::optional<std::size_t> levels_to_freedom(const Node& node) {
  const std::vector<const Node*> kinds = forbidden_kinds(node);
  std::size_t levels = 0, level = 0;
  bool in_host = true;
  for (const Node* ancestor = node.parent(); ancestor && !kinds.empty(); ancestor = ancestor->parent()) {
    ++level;
    in_host = in_host && is_editable(*ancestor) && in_same_editing_host(*ancestor, node);
    for (const Node* kind : kinds) {
      if (may_stand_below(*kind, *ancestor)) continue;
      if (!in_host) return std::nullopt;
      levels = level;
    }
  }
  return levels;
}

}  // namespace

void fix_disallowed_ancestors_of_whole(const Ref<Node>& node, Editor& editor) {
  if (!node->parent() || !is_editable(*node)) return;
  const std::optional<std::size_t> levels = levels_to_freedom(*node);
  if (levels && *levels > 0) lift(node, *levels, editor);
  fix_disallowed_ancestors(node, editor);
}

Ref<Node> release_stray_term(const Ref<Node>& node, Editor& editor) {
  if ((!node->is(Tag::Dd) && !node->is(Tag::Dt)) || levels_to_allowed_parent(*node)) return node;
  return become_paragraph(node, editor);
}

}  // namespace tvx::editing
