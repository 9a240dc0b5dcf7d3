#include "tvx/headless/shadow_tree.h"

#include <algorithm>

#include "tvx/browser/view/mirror_rules.h"

namespace tvx::headless {

using browser::PatchOperation;
using Type = PatchOperation::Type;

std::vector<dom::NodeId> ShadowTree::apply(const browser::Patch& patch) {
  if (patch.reset) {
    nodes_.clear();
    page_ = Node{};
  }
  std::vector<dom::NodeId> failed;
  for (const PatchOperation& operation : patch.operations) {
    if (!apply(operation)) failed.push_back(operation.node);
  }
  return failed;
}

const ShadowTree::Node* ShadowTree::find(dom::NodeId id) const {
  const auto found = nodes_.find(id);
  return found == nodes_.end() ? nullptr : found->second.get();
}

ShadowTree::Node* ShadowTree::known(dom::NodeId id) { return const_cast<Node*>(find(id)); }

bool ShadowTree::apply(const PatchOperation& operation) {
  if (operation.type == Type::Element || operation.type == Type::Text || operation.type == Type::Comment) {
    return make(operation);
  }
  Node* node = known(operation.node);
  if (!node) return false;
  switch (operation.type) {
    case Type::Detach: detach(*node); return true;
    case Type::Place: return !node->parent && put(*node, operation.parent, operation.before);
    case Type::Forget:
      detach(*node);
      forget(*node);
      return true;
    case Type::Data:
      if (std::size_t(operation.offset) + operation.length > node->text.size()) return false;
      node->text.replace(operation.offset, operation.length, operation.text);
      return true;
    default: return set_attribute(*node, operation);
  }
}

bool ShadowTree::make(const PatchOperation& operation) {
  if (known(operation.node)) return false;
  auto made = std::make_unique<Node>();
  made->id = operation.node;
  made->type = operation.type;
  made->name = operation.name;
  made->name_space = operation.name_space;
  made->attributes = operation.attributes;
  made->text = operation.text;
  Node& node = *made;
  nodes_.emplace(operation.node, std::move(made));
  return put(node, operation.parent, operation.before);
}

bool ShadowTree::put(Node& node, dom::NodeId parent_id, dom::NodeId before) {
  Node* parent = parent_id == dom::NodeId{} ? &page_ : known(parent_id);
  if (!parent) return false;
  auto& children = parent->children;
  auto place = children.end();
  if (before != dom::NodeId{}) {
    // From the end: most insertions are there.
    const auto from_end =
        std::find_if(children.rbegin(), children.rend(), [&](Node* child) { return child->id == before; });
    if (from_end == children.rend()) return false;
    place = from_end.base() - 1;
  }
  children.insert(place, &node);
  node.parent = parent;
  return true;
}

bool ShadowTree::set_attribute(Node& node, const PatchOperation& operation) {
  auto& attributes = node.attributes;
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const auto& attribute) { return attribute.name == operation.name; });
  if (operation.type == Type::NoAttribute) {
    if (found != attributes.end()) attributes.erase(found);
  } else if (found != attributes.end()) {
    found->value = operation.text;
  } else {
    attributes.push_back({operation.name, operation.text, operation.attribute_namespace});
  }
  return true;
}

void ShadowTree::detach(Node& node) {
  if (!node.parent) return;
  std::erase(node.parent->children, &node);
  node.parent = nullptr;
}

void ShadowTree::forget(Node& root) {
  std::vector<Node*> open{&root};
  while (!open.empty()) {
    Node* node = open.back();
    open.pop_back();
    open.insert(open.end(), node->children.begin(), node->children.end());
    nodes_.erase(node->id);
  }
}

std::u16string ShadowTree::print() const {
  std::u16string out;
  std::vector<std::pair<const Node*, std::size_t>> open;
  const auto push_children = [&open](const Node& node, std::size_t depth) {
    for (auto child = node.children.rbegin(); child != node.children.rend(); ++child) {
      open.emplace_back(*child, depth);
    }
  };
  push_children(page_, 0);
  while (!open.empty()) {
    const auto [node, depth] = open.back();
    open.pop_back();
    if (node->type == Type::Element) {
      browser::print_element_line(out, depth, node->name, node->name_space, node->attributes);
    } else {
      browser::print_text_line(out, depth, node->type == Type::Comment, node->text);
    }
    push_children(*node, depth + 1);
  }
  return out;
}

}  // namespace tvx::headless
