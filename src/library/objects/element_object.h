#pragma once

#include "tvx/dom/node.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {

/// An element for callers by name. Its members are those that every element has (element_object.cpp), and
/// those of its kind (element_kinds.h).
class ElementObject final : public Object {
 public:
  ElementObject(dom::Element& element, DocumentHandle document)
      : element_(element), document_(std::move(document)) {}

  std::u16string_view kind() const override { return u"element"; }
  std::vector<std::pair<std::string, Value>> description() const override;
  Value invoke(std::u16string_view name, Values& arguments) override;
  bool is_operation(std::u16string_view name) const override;
  void set(std::u16string_view name, const Value& value) override;

  dom::Element& operator*() const { return *element_; }
  dom::Element* operator->() const { return element_.get(); }
  const DocumentHandle& document() const { return document_; }
  /// Where the document was loaded from; "" without one.
  std::u16string document_address() const;
  Value element(dom::Element* other) const { return element_object(other, document_); }
  Value collection(dom::CollectionKind kind, std::u16string_view tag = {}) const {
    return collection_object(dom::Collection(*element_, kind, tag), document_);
  }
  /// -1 outside the document's tree.
  std::int32_t source_index() const;

 private:
  dom::Ref<dom::Element> element_;
  DocumentHandle document_;
};

}  // namespace tvx::library
