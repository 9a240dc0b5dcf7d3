#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/tree.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {

namespace {

std::size_t index_of(const Value& argument) {
  const std::int32_t index = argument.to_integer32();
  if (index < 0) throw RuntimeError(errors::invalid_call, u"Invalid procedure call or argument");
  return static_cast<std::size_t>(index);
}

class CollectionObject final : public Object {
 public:
  CollectionObject(dom::Collection collection, DocumentHandle document)
      : collection_(std::move(collection)), document_(std::move(document)) {}

  std::u16string_view kind() const override { return u"collection"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"length", length()}}; }

  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"length")) return expect_arguments(arguments, 0, 0), length();
    if (equals_ignoring_ascii_case(name, u"item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"tags")) unknown_member(name);
    expect_arguments(arguments, 1, 1);
    return collection_object(collection_.tags(arguments[0].to_text()), document_);
  }

  /// By place from 0, or by id or name. Nothing where there is no such item.
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    if (arguments[0].is_text())
      return element_object(collection_.named_item(arguments[0].to_text()), document_);
    return element_object(collection_.item(index_of(arguments[0])), document_);
  }

 private:
  std::int32_t length() const { return static_cast<std::int32_t>(collection_.length()); }

  dom::Collection collection_;
  DocumentHandle document_;
};

/// A list that some object of the document gives. Its elements are asked for once in each state of the tree.
class ElementListObject final : public Object {
 public:
  using List = std::function<std::vector<dom::Element*>()>;
  ElementListObject(dom::Node& owner, List list, DocumentHandle document)
      : owner_(owner), list_(std::move(list)), document_(std::move(document)) {}

  std::u16string_view kind() const override { return u"collection"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"length", length()}}; }

  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"length")) return expect_arguments(arguments, 0, 0), length();
    if (equals_ignoring_ascii_case(name, u"item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"tags")) unknown_member(name);
    expect_arguments(arguments, 1, 1);
    return element_list_object(
        *owner_,
        [list = list_, tag = arguments[0].to_text()] {
          std::vector<dom::Element*> found = list();
          std::erase_if(found, [&](const dom::Element* element) {
            return !equals_ignoring_ascii_case(element->name().text(), tag);
          });
          return found;
        },
        document_);
  }

  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    if (arguments[0].is_text()) return element_object(named(arguments[0].to_text()), document_);
    const std::size_t index = index_of(arguments[0]);
    return element_object(index < elements().size() ? elements()[index] : nullptr, document_);
  }

 private:
  const std::vector<dom::Element*>& elements() const {
    const std::uint64_t version = dom::document_of(*owner_).structure_version();
    if (version_ != version) elements_ = list_();
    version_ = version;
    return elements_;
  }
  std::int32_t length() const { return static_cast<std::int32_t>(elements().size()); }
  dom::Element* named(std::u16string_view name) const {
    for (const dom::Name attribute : {dom::names::id, dom::names::name})
      for (dom::Element* element : elements())
        if (!name.empty() && element->attribute_or_empty(attribute) == name) return element;
    return nullptr;
  }

  dom::Ref<dom::Node> owner_;
  List list_;
  DocumentHandle document_;
  mutable std::uint64_t version_ = 0;  // no state of a tree has this number
  mutable std::vector<dom::Element*> elements_;
};

}  // namespace

Value element_list_object(dom::Node& owner, std::function<std::vector<dom::Element*>()> list,
                          const DocumentHandle& document) {
  return ObjectHandle(std::make_shared<ElementListObject>(owner, std::move(list), document));
}

Value collection_object(dom::Collection collection, const DocumentHandle& document) {
  return ObjectHandle(std::make_shared<CollectionObject>(std::move(collection), document));
}

}  // namespace tvx::library
