#include <unordered_set>

#include "tvx/editing/facts/predicates.h"

/// What can be edited. Editing commands standard, section "Common definitions".
namespace tvx::editing {

using dom::Document;
using dom::Element;
using dom::Node;
using dom::NodeType;
using dom::Tag;

namespace {

// The documents that are edited as a whole. Kept beside them: the tree knows nothing of editing.
std::unordered_set<const Document*>& whole_documents() {
  static std::unordered_set<const Document*> documents;
  return documents;
}

enum class Wish : std::uint8_t { None, On, PlainText, Off };

// HTML standard, section 6.8.1 "the contenteditable attribute".
Wish wish_of(const Element& element) {
  const std::u16string* value = element.attribute(dom::names::contenteditable);
  if (!value) return Wish::None;
  if (value->empty() || equals_ignoring_ascii_case(*value, u"true")) return Wish::On;
  if (equals_ignoring_ascii_case(*value, u"plaintext-only")) return Wish::PlainText;
  return equals_ignoring_ascii_case(*value, u"false") ? Wish::Off : Wish::None;
}

bool may_be_edited(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  if (!element) return node.parent()->is_element() && static_cast<Element*>(node.parent())->is_html();
  if (element->is_html()) return wish_of(*element) != Wish::Off;
  return element->name() == dom::Name(Tag::Svg) || element->name() == dom::Name(Tag::Math);
}

}  // namespace

void set_whole_document_editable(Document& document, bool editable) {
  if (editable) {
    whole_documents().insert(&document);
  } else {
    whole_documents().erase(&document);
  }
}

bool is_editing_host(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  if (!element || !element->is_html()) return false;
  const Wish wish = wish_of(*element);
  // Also within another host: an element that says so itself is never changed from outside.
  if (wish == Wish::On || wish == Wish::PlainText) return true;
  if (wish == Wish::Off || element->tag() != Tag::Body || whole_documents().empty()) return false;
  const Node* root = element->parent() ? element->parent()->parent() : nullptr;
  return root && root->type() == NodeType::Document && whole_documents().contains(element->document());
}

bool is_plain_text_host(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && wish_of(*element) == Wish::PlainText && is_editing_host(node);
}

Node* editing_host_within(const Node& node, Node* host_around) {
  if (is_editing_host(node)) return const_cast<Node*>(&node);
  return host_around && node.parent() && may_be_edited(node) ? host_around : nullptr;
}

Node* editing_host_of(const Node& node) {
  // From the node upwards as long as each could be edited; the first host found decides.
  for (const Node* current = &node; current; current = current->parent()) {
    if (is_editing_host(*current)) return const_cast<Node*>(current);
    if (!current->parent() || !may_be_edited(*current)) return nullptr;
  }
  return nullptr;
}

bool is_editable(const Node& node) {
  if (node.type() == NodeType::Document || node.type() == NodeType::DocumentFragment) return false;
  const Node* host = editing_host_of(node);
  return host && host != &node;
}

bool in_same_editing_host(const Node& a, const Node& b) {
  const Node* host = editing_host_of(a);
  return host && host == editing_host_of(b);
}

}  // namespace tvx::editing
