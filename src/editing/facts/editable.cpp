#include <memory>
#include <unordered_map>

#include "tvx/base/work_count.h"
#include "tvx/editing/facts/ancestor_memo.h"
#include "tvx/editing/facts/predicates.h"

/// What can be edited. Editing commands standard, section "Common definitions".
namespace tvx::editing {

using dom::Document;
using dom::Element;
using dom::Node;
using dom::NodeType;
using dom::Tag;

namespace {

/// Which host the children of deeply nested elements belong to.
class HostMemo final : public AncestorMemo<Node*> {
 public:
  using AncestorMemo::AncestorMemo;

 private:
  std::optional<Node*> answer_below(const Node& parent) override {
    Node* host = editing_host_of_children(parent);
    return host ? std::optional(host) : std::nullopt;
  }
  bool depends_on(const dom::Name& attribute) const override {
    return attribute == dom::names::contenteditable;
  }
};

// The documents that are edited as a whole. Kept beside them: the tree knows nothing of editing.
std::unordered_map<const Document*, std::unique_ptr<HostMemo>>& whole_documents() {
  static std::unordered_map<const Document*, std::unique_ptr<HostMemo>> documents;
  return documents;
}

// Mostly the same document is asked about again.
const Document* last_document = nullptr;
HostMemo* last_memo = nullptr;

HostMemo* memo_of(const Node& node) {
  const Document* document = node.document();
  if (document != last_document) {
    const auto found = whole_documents().find(document);
    last_document = document;
    last_memo = found == whole_documents().end() ? nullptr : found->second.get();
  }
  return last_memo;
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
  // Anew in each case: what was known holds no more.
  last_document = nullptr;
  last_memo = nullptr;
  whole_documents().erase(&document);
  if (editable) whole_documents().emplace(&document, std::make_unique<HostMemo>(document));
}

bool is_editing_host(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  if (!element || !element->is_html()) return false;
  const Wish wish = wish_of(*element);
  // Also within another host: an element that says so itself is never changed from outside.
  if (wish == Wish::On || wish == Wish::PlainText) return true;
  if (wish == Wish::Off || element->tag() != Tag::Body) return false;
  const Node* root = element->parent() ? element->parent()->parent() : nullptr;
  return root && root->type() == NodeType::Document && memo_of(node);
}

bool is_plain_text_host(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && wish_of(*element) == Wish::PlainText && is_editing_host(node);
}

Node* editing_host_within(const Node& node, Node* host_around) {
  count_work();
  if (is_editing_host(node)) return const_cast<Node*>(&node);
  return host_around && node.parent() && may_be_edited(node) ? host_around : nullptr;
}

namespace {

// Up to here climbing costs no more than looking up.
constexpr std::size_t short_climb = 8;

}  // namespace

// Upwards as long as each could be edited; the first host found decides.
Node* editing_host_of_children(const Node& parent) {
  HostMemo* memo = memo_of(parent);
  const Node* current = &parent;
  Node* host = nullptr;
  for (std::size_t climbed = 0;; current = current->parent(), ++climbed) {
    count_work();
    const std::optional<Node*> known = memo ? memo->find(*current) : std::nullopt;
    host = known ? *known : is_editing_host(*current) ? const_cast<Node*>(current) : nullptr;
    if (host) {
      if (memo && climbed >= short_climb) memo->note(parent, current, host);
      return host;
    }
    if (!current->parent() || !may_be_edited(*current)) return nullptr;
  }
}

Node* editing_host_of(const Node& node) {
  if (is_editing_host(node)) return const_cast<Node*>(&node);
  return node.parent() && may_be_edited(node) ? editing_host_of_children(*node.parent()) : nullptr;
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
