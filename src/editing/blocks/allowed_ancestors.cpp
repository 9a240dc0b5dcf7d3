#include "tvx/editing/blocks/allowed_ancestors.h"

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

bool allowed_in_some_ancestor(const Node& node) {
  for (const Node* ancestor = node.parent(); ancestor && in_same_editing_host(*ancestor, node);
       ancestor = ancestor->parent()) {
    if (is_allowed_child(node, *ancestor)) return true;
  }
  return false;
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
  const Ref<Node> paragraph =
      set_tag_name(static_cast<Element&>(*node), Name(std::u16string_view(editor.paragraph_separator())));
  fix_disallowed_ancestors(paragraph, editor);
  for (const Ref<Node>& child : children_of(*paragraph)) {
    if (!is_prohibited_paragraph_child(*child)) continue;
    const RecordedValues values = record_values({child});
    split_parent({child});
    restore_values(values, editor);
  }
}

}  // namespace

// Editing commands standard, "fix disallowed ancestors". Calls itself only with a node that is allowed.
void fix_disallowed_ancestors(const Ref<Node>& node, Editor& editor) {
  if (!is_editable(*node)) return;
  if (!allowed_in_some_ancestor(*node)) return fix_stray(node, editor);
  if (is_allowed_child(*node, *node->parent())) return;
  const RecordedValues values = record_values({node});
  while (!is_allowed_child(*node, *node->parent())) split_parent({node});
  restore_values(values, editor);
}

Ref<Node> release_stray_term(const Ref<Node>& node, Editor& editor) {
  if ((!node->is(Tag::Dd) && !node->is(Tag::Dt)) || allowed_in_some_ancestor(*node)) return node;
  return set_tag_name(static_cast<Element&>(*node), Name(std::u16string_view(editor.paragraph_separator())));
}

}  // namespace tvx::editing
