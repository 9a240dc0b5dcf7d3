#include "tvx/dom/tree.h"

#include "tvx/base/work_count.h"
#include "tvx/dom/document.h"
#include "tvx/dom/range.h"

namespace tvx::dom {

Node* next_in_order(const Node& node, const Node* root) {
  return node.first_child() ? node.first_child() : next_skipping_children(node, root);
}

Node* next_skipping_children(const Node& node, const Node* root) {
  for (const Node* current = &node; current && current != root; current = current->parent()) {
    count_work();
    if (current->next_sibling()) return current->next_sibling();
  }
  return nullptr;
}

Node* previous_in_order(const Node& node, const Node* root) {
  if (&node == root) return nullptr;
  count_work();
  return node.previous_sibling() ? last_within(*node.previous_sibling()) : node.parent();
}

Node* last_within(const Node& node) {
  const Node* current = &node;
  while (current->last_child()) current = current->last_child();
  return const_cast<Node*>(current);
}

bool is_ancestor(const Node& ancestor, const Node& node) {
  return node.parent() && is_inclusive_ancestor(ancestor, *node.parent());
}

bool is_inclusive_ancestor(const Node& ancestor, const Node& node) {
  for (const Node* current = &node; current; current = current->parent()) {
    count_work();
    if (current == &ancestor) return true;
  }
  return false;
}

Node& root_of(const Node& node) {
  const Node* current = &node;
  for (; current->parent(); current = current->parent()) count_work();
  return const_cast<Node&>(*current);
}

bool is_connected(const Node& node) { return root_of(node).type() == NodeType::Document; }

std::size_t depth_of(const Node& node) {
  std::size_t depth = 0;
  for (const Node* current = node.parent(); current; current = current->parent()) {
    count_work();
    ++depth;
  }
  return depth;
}

Element* enclosing(const Node& node, Tag tag) {
  for (const Node* current = &node; current; current = current->parent()) {
    count_work();
    if (current->is(tag)) return const_cast<Element*>(static_cast<const Element*>(current));
  }
  return nullptr;
}

Element* first_child_element(const Node& node) {
  for (Node* child = node.first_child(); child; child = child->next_sibling()) {
    if (auto* element = as<Element>(child)) return element;
  }
  return nullptr;
}

Element* next_element_sibling(const Node& node) {
  for (Node* sibling = node.next_sibling(); sibling; sibling = sibling->next_sibling()) {
    if (auto* element = as<Element>(sibling)) return element;
  }
  return nullptr;
}

std::u16string text_content(const Node& node) {
  if (const auto* data = as<CharacterData>(&node)) return data->data();
  std::u16string text;
  for (const Node* current = node.first_child(); current; current = next_in_order(*current, &node)) {
    if (const auto* part = as<Text>(current)) text += part->data();
  }
  return text;
}

}  // namespace tvx::dom
