#pragma once

#include "tvx/dom/node.h"

/// Nodes that stand where their kind is not allowed, and how they come to where it is.
namespace tvx::editing {

class Editor;

/// Editing commands standard, "fix disallowed ancestors": breaks the elements around a node up to one that
/// may hold it.
void fix_disallowed_ancestors(const dom::Ref<dom::Node>& node, Editor& editor);
/// The same for a node with all that is in it: the elements around it are broken up to one that may hold
/// everything, and the node stays as it is. A link around blocks leaves its paragraph; it doesn't come apart
/// around the blocks.
void fix_disallowed_ancestors_of_whole(const dom::Ref<dom::Node>& node, Editor& editor);
/// Turns a `dd` or `dt` that has no list around it any more into a paragraph, parted at the blocks in it.
/// Gives the element, which stands nowhere if it held nothing but blocks.
dom::Ref<dom::Node> release_stray_term(const dom::Ref<dom::Node>& node, Editor& editor);

}  // namespace tvx::editing
