#include "tvx/dom/document.h"

#include <algorithm>
#include <cassert>

#include "tvx/base/small_objects.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/range.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

Ref<Document> Document::create() {
  auto* anchor = new DocumentAnchor;
  return Ref<Document>(new Document(*anchor));
}

Document::Document(DocumentAnchor& anchor)
    : Node(NodeType::Document, anchor), journal_(std::make_unique<Journal>(*this)) {
  anchor.document = this;
}

Document::~Document() {
  for (LiveRange* range : live_ranges_) range->document_ = nullptr;
}

Ref<Element> Document::create_element(Name name, Namespace name_space) {
  return Ref<Element>(new (SmallObjects::take(sizeof(Element))) Element(*anchor_, name, name_space));
}

Ref<Text> Document::create_text(std::u16string data) {
  return Ref<Text>(new (SmallObjects::take(sizeof(Text))) Text(*anchor_, std::move(data)));
}

Ref<Comment> Document::create_comment(std::u16string data) {
  return Ref<Comment>(new Comment(*anchor_, std::move(data)));
}

Ref<DocumentType> Document::create_document_type(std::u16string name, std::u16string public_id,
                                                 std::u16string system_id) {
  return Ref<DocumentType>(
      new DocumentType(*anchor_, std::move(name), std::move(public_id), std::move(system_id)));
}

Ref<DocumentFragment> Document::create_fragment() {
  return Ref<DocumentFragment>(new DocumentFragment(*anchor_));
}

Element* Document::document_element() const { return first_child_element(*this); }

Element* Document::head() const {
  const Element* root = document_element();
  if (!root || !root->is(Tag::Html)) return nullptr;
  for (Element* child = first_child_element(*root); child; child = next_element_sibling(*child)) {
    if (child->is(Tag::Head)) return child;
  }
  return nullptr;
}

Element* Document::body() const {
  const Element* root = document_element();
  if (!root || !root->is(Tag::Html)) return nullptr;
  for (Element* child = first_child_element(*root); child; child = next_element_sibling(*child)) {
    if (child->is(Tag::Body) || child->is(Tag::Frameset)) return child;
  }
  return nullptr;
}

DocumentType* Document::document_type() const {
  for (Node* child = first_child(); child; child = child->next_sibling()) {
    if (auto* type = as<DocumentType>(child)) return type;
  }
  return nullptr;
}

const std::vector<Element*>& Document::all() const {
  if (order_version_ == structure_version_) return order_;
  order_.clear();
  for (Node* node = first_child(); node; node = next_in_order(*node)) {
    if (auto* element = as<Element>(node)) {
      element->source_index_ = static_cast<std::uint32_t>(order_.size());
      order_.push_back(element);
    }
  }
  order_version_ = structure_version_;
  return order_;
}

std::size_t Document::source_index(const Element& element) const {
  all();
  return element.source_index_;
}

void Document::add_observer(MutationObserver& observer) { observers_.push_back(&observer); }

void Document::remove_observer(MutationObserver& observer) { std::erase(observers_, &observer); }

}  // namespace tvx::dom
