#include "tvx/dom/node.h"

#include "tvx/base/error.h"
#include "tvx/base/small_objects.h"
#include "tvx/dom/attribute_places.h"
#include "tvx/dom/document.h"

namespace tvx::dom {

Node::Node(NodeType type, DocumentAnchor& anchor) : id_(++anchor.last_id), type_(type), anchor_(&anchor) {
  ++anchor.users;
}

Node::~Node() {
  if (anchor_->known_place.parent == this) anchor_->known_place = {};
  if (--anchor_->users == 0) delete anchor_;
}

// Nodes die in a list of their own making, never by recursion: trees may be deeper than any stack.
void Node::destroy(Node* node) {
  std::vector<Node*> dying{node};
  const auto drop = [&dying](Node* held) {
    if (--held->references_ == 0) dying.push_back(held);
  };
  while (!dying.empty()) {
    Node* current = dying.back();
    dying.pop_back();
    if (Document* document = as<Document>(current)) document->anchor_->document = nullptr;
    for (Node* child = current->first_child_; child;) {
      Node* next = child->next_;
      child->parent_ = child->previous_ = child->next_ = nullptr;
      drop(child);
      child = next;
    }
    current->first_child_ = current->last_child_ = nullptr;
    current->child_count_ = 0;
    if (Element* element = as<Element>(current); element && element->content_) {
      Node* content = element->content_.get();
      content->retain();
      element->content_ = nullptr;
      drop(content);
    }
    delete_node(current);
  }
}

namespace {

// Of the two kinds that a document has by the thousand, which it makes in the store of small objects.
template <class Kind>
void give_back(Kind& node) {
  node.~Kind();
  SmallObjects::give_back(&node, sizeof(Kind));
}

}  // namespace

void Node::delete_node(Node* node) {
  switch (node->type_) {
    case NodeType::Element:
      AttributePlaces::forget(*static_cast<Element*>(node));
      give_back(*static_cast<Element*>(node));
      break;
    case NodeType::Text: give_back(*static_cast<Text*>(node)); break;
    case NodeType::Comment: delete static_cast<Comment*>(node); break;
    case NodeType::DocumentType: delete static_cast<DocumentType*>(node); break;
    case NodeType::DocumentFragment: delete static_cast<DocumentFragment*>(node); break;
    case NodeType::Document: delete static_cast<Document*>(node); break;
  }
}

const std::u16string* Element::attribute(Name name) const {
  const std::size_t place = AttributePlaces::find(*this, name);
  return place == AttributePlaces::nowhere ? nullptr : &attributes_[place].value;
}

std::u16string_view Element::attribute_or_empty(Name name) const {
  const std::u16string* value = attribute(name);
  return value ? std::u16string_view(*value) : std::u16string_view();
}

Document& document_of(const Node& node) {
  Document* document = node.document();
  if (!document) throw RuntimeError(errors::object_not_set, u"The document of this object is gone");
  return *document;
}

}  // namespace tvx::dom
