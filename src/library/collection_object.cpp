#include "base/error.h"
#include "browser/html_document.h"
#include "library/document_object.h"
#include "library/members_of.h"

namespace tvx::library {

namespace {

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
    const std::int32_t index = arguments[0].to_integer32();
    if (index < 0) throw RuntimeError(errors::invalid_call, u"Invalid procedure call or argument");
    return element_object(collection_.item(static_cast<std::size_t>(index)), document_);
  }

 private:
  std::int32_t length() const { return static_cast<std::int32_t>(collection_.length()); }

  dom::Collection collection_;
  DocumentHandle document_;
};

}  // namespace

Value collection_object(dom::Collection collection, const DocumentHandle& document) {
  return ObjectHandle(std::make_shared<CollectionObject>(std::move(collection), document));
}

}  // namespace tvx::library
