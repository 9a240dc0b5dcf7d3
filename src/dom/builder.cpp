#include "tvx/dom/builder.h"

#include <cassert>

#include "tvx/dom/attribute_places.h"
#include "tvx/dom/sibling_places.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

void Builder::insert(Node& parent, Ref<Node> child, Node* before) {
  assert(!child->parent_ && (!before || before->parent_ == &parent));
  Node* node = child.get();
  node->retain();  // the parent's hold
  node->parent_ = &parent;
  node->next_ = before;
  node->previous_ = before ? before->previous_ : parent.last_child_;
  (node->previous_ ? node->previous_->next_ : parent.first_child_) = node;
  (before ? before->previous_ : parent.last_child_) = node;
  ++parent.child_count_;
  SiblingPlaces::inserted(parent, *node, before);
}

void Builder::remove(Node& child) {
  Node& parent = *child.parent_;
  SiblingPlaces::removing(child);
  (child.previous_ ? child.previous_->next_ : parent.first_child_) = child.next_;
  (child.next_ ? child.next_->previous_ : parent.last_child_) = child.previous_;
  --parent.child_count_;
  child.parent_ = child.previous_ = child.next_ = nullptr;
  child.release();
}

void Builder::move_children(Node& from, Node& to) {
  while (Node* child = from.first_child()) {
    Ref<Node> held(child);
    remove(*child);
    insert(to, std::move(held));
  }
}

void Builder::append_data(CharacterData& node, std::u16string_view text) { node.data_.append(text); }

void Builder::add_attribute(Element& element, Attribute attribute) {
  element.attributes_.push_back(std::move(attribute));
  AttributePlaces::appended(element);
}

void Builder::reserve_attributes(Element& element, std::size_t count) { element.attributes_.reserve(count); }

void Builder::set_template_content(Element& element, Ref<Node> content) {
  element.content_ = std::move(content);
}

namespace {

Ref<Node> clone_shallow(const Node& node, Document& document) {
  switch (node.type()) {
    case NodeType::Element: {
      const auto& element = static_cast<const Element&>(node);
      Ref<Element> copy = document.create_element(element.name(), element.name_space());
      Builder::reserve_attributes(*copy, element.attributes().size());
      for (const Attribute& attribute : element.attributes()) Builder::add_attribute(*copy, attribute);
      return copy;
    }
    case NodeType::Text: return document.create_text(static_cast<const Text&>(node).data());
    case NodeType::Comment: return document.create_comment(static_cast<const Comment&>(node).data());
    case NodeType::DocumentType: {
      const auto& type = static_cast<const DocumentType&>(node);
      return document.create_document_type(type.name(), type.public_id(), type.system_id());
    }
    case NodeType::Document:
    case NodeType::DocumentFragment: return document.create_fragment();
  }
  return nullptr;
}

}  // namespace

Ref<Node> clone(const Node& node, Document& document, Deep deep) {
  Ref<Node> root = clone_shallow(node, document);
  if (deep == Deep::No) return root;
  // Pairs still to be filled: an original and its copy without children.
  std::vector<std::pair<const Node*, Node*>> open{{&node, root.get()}};
  while (!open.empty()) {
    const auto [original, copy] = open.back();
    open.pop_back();
    if (const auto* element = as<Element>(original); element && element->template_content()) {
      Ref<Node> content = document.create_fragment();
      open.emplace_back(element->template_content(), content.get());
      Builder::set_template_content(static_cast<Element&>(*copy), std::move(content));
    }
    for (const Node* child = original->first_child(); child; child = child->next_sibling()) {
      if (child->type() == NodeType::DocumentType)
        continue;  // a document's copy is a fragment, which has none
      Ref<Node> twin = clone_shallow(*child, document);
      if (child->has_children() || child->is(Tag::Template)) open.emplace_back(child, twin.get());
      Builder::insert(*copy, std::move(twin));
    }
  }
  return root;
}

}  // namespace tvx::dom
