#include "tvx/dom/collections.h"

#include <map>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {
namespace {

/// What collections of one document share: its lists by kind and name, and how often an address came or went.
/// It holds no reference to the document, which owns it.
class CollectionLists final : public DocumentExtension, private MutationObserver {
 public:
  struct List {
    std::uint64_t version = ~std::uint64_t{0};
    std::vector<Element*> elements;
  };

  explicit CollectionLists(Document& document) : document_(document) { document.add_observer(*this); }
  ~CollectionLists() override { document_.remove_observer(*this); }

  static CollectionLists& of(Document& document) {
    auto& slot = document.extension(ExtensionSlot::Collections);
    if (!slot) slot = std::make_unique<CollectionLists>(document);
    return static_cast<CollectionLists&>(*slot);
  }

  List& list(CollectionKind kind, Name tag) { return lists_[{kind, tag.key()}]; }

  /// Changes with everything that a collection of that kind can depend on.
  std::uint64_t version(CollectionKind kind) const {
    const std::uint64_t structure = document_.structure_version();
    return kind == CollectionKind::Links ? structure + address_changes_ : structure;
  }

 private:
  void mutated(const Mutation& mutation) override {
    if (mutation.type != Mutation::Type::SetAttribute || mutation.attribute != names::href) return;
    if (mutation.old_value.has_value() != mutation.new_value.has_value()) ++address_changes_;
  }

  Document& document_;
  std::uint64_t address_changes_ = 0;
  std::map<std::pair<CollectionKind, const void*>, List> lists_;
};

bool is_of_kind(const Element& element, CollectionKind kind) {
  switch (kind) {
    case CollectionKind::All:
    case CollectionKind::Tag:
    case CollectionKind::Children: return true;
    case CollectionKind::Links:
      return (element.is(Tag::A) || element.is(Tag::Area)) && element.has_attribute(names::href);
    case CollectionKind::Images: return element.is(Tag::Img);
    case CollectionKind::Scripts: return element.is(Tag::Script);
    case CollectionKind::Forms: return element.is(Tag::Form);
  }
  return false;
}

bool has_name(const Element& element, Name tag) {
  if (tag.empty() || element.name() == tag) return true;
  return !element.is_html() && equals_ignoring_ascii_case(element.name().text(), tag.text());
}

std::vector<Element*> collect(const Node& root, CollectionKind kind, Name tag) {
  std::vector<Element*> elements;
  const auto offer = [&](Node* node) {
    Element* element = as<Element>(node);
    if (element && is_of_kind(*element, kind) && has_name(*element, tag)) elements.push_back(element);
  };
  if (kind == CollectionKind::Children) {
    for (Node* child = root.first_child(); child; child = child->next_sibling()) offer(child);
  } else if (const auto* document = as<Document>(&root)) {
    for (Element* element : document->all()) offer(element);
  } else {
    for (Node* node = root.first_child(); node; node = next_in_order(*node, &root)) offer(node);
  }
  return elements;
}

}  // namespace

Collection::Collection(Node& root, CollectionKind kind, std::u16string_view tag)
    : root_(root), kind_(kind), tag_(tag == u"*" ? Name() : Name(ascii_lower(tag))) {}

const std::vector<Element*>& Collection::elements() const {
  CollectionLists& lists = CollectionLists::of(document_of(*root_));
  const std::uint64_t version = lists.version(kind_);
  if (as<Document>(root_)) {
    CollectionLists::List& list = lists.list(kind_, tag_);
    if (list.version != version) {
      list.elements = collect(*root_, kind_, tag_);
      list.version = version;
    }
    return list.elements;
  }
  if (version_ != version) {
    elements_ = collect(*root_, kind_, tag_);
    version_ = version;
  }
  return elements_;
}

Element* Collection::item(std::size_t index) const {
  const std::vector<Element*>& list = elements();
  return index < list.size() ? list[index] : nullptr;
}

Element* Collection::named_item(std::u16string_view name) const {
  if (name.empty()) return nullptr;
  Element* named = nullptr;
  for (Element* element : elements()) {
    if (element->attribute_or_empty(names::id) == name) return element;
    if (!named && element->attribute_or_empty(names::name) == name) named = element;
  }
  return named;
}

Collection Collection::tags(std::u16string_view name) const { return Collection(*root_, kind_, name); }

std::shared_ptr<const Collection> collection_of(Document& document, CollectionKind kind,
                                                std::u16string_view tag) {
  return std::make_shared<const Collection>(document, kind, tag);
}

}  // namespace tvx::dom
