#pragma once

#include "tvx/dom/node.h"

/// Walks that need no stack, whatever the depth.
namespace tvx::dom {

/// The next node in tree order within `root` (null: no limit); children first.
Node* next_in_order(const Node& node, const Node* root = nullptr);
/// The next node in tree order that is not below `node`.
Node* next_skipping_children(const Node& node, const Node* root = nullptr);
Node* previous_in_order(const Node& node, const Node* root = nullptr);
/// The last node in tree order within `node`; the node itself if it has no children.
Node* last_within(const Node& node);

bool is_ancestor(const Node& ancestor, const Node& node);
bool is_inclusive_ancestor(const Node& ancestor, const Node& node);
Node& root_of(const Node& node);
/// Whether the node stands in its document's tree.
bool is_connected(const Node& node);
std::size_t depth_of(const Node& node);
/// The nearest element of that name from `node` upwards, `node` included; null if none.
Element* enclosing(const Node& node, Tag tag);
Element* first_child_element(const Node& node);
Element* next_element_sibling(const Node& node);
/// All text below, DOM standard "descendant text content".
std::u16string text_content(const Node& node);

}  // namespace tvx::dom
