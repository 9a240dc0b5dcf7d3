#include "base/error.h"
#include "browser/html_document.h"
#include "dom/inner_html.h"
#include "dom/inner_text.h"
#include "dom/mutation.h"
#include "dom/objects/element_content.h"
#include "dom/style/inline_style.h"
#include "dom/tree.h"
#include "library/document_object.h"
#include "library/members_of.h"

namespace tvx::library {

namespace {

using dom::CollectionKind;
using dom::Element;

class ElementObject final : public Object {
 public:
  ElementObject(Element& element, DocumentHandle document)
      : element_(element), document_(std::move(document)) {}

  std::u16string_view kind() const override { return u"element"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"tag", element_->display_name()},
            {"sourceIndex", source_index()},
            {"id", element_->attribute_or_empty(dom::Name(u"id"))}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;

  Element& operator*() const { return *element_; }
  Element* operator->() const { return element_.get(); }
  const DocumentHandle& document() const { return document_; }
  Value element(Element* other) const { return element_object(other, document_); }
  Value collection(CollectionKind kind) const {
    return collection_object(dom::Collection(*element_, kind), document_);
  }
  /// -1 outside the document's tree.
  std::int32_t source_index() const {
    if (!element_->document() || !dom::is_connected(*element_)) return -1;
    return static_cast<std::int32_t>(element_->document()->source_index(*element_));
  }

 private:
  dom::Ref<Element> element_;
  DocumentHandle document_;
};

/// "className" is how the object model calls the attribute `class`.
dom::Name attribute_name(std::u16string_view name) {
  return equals_ignoring_ascii_case(name, u"className") ? dom::Name(u"class") : dom::Name(ascii_lower(name));
}

Value get_attribute(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const std::u16string name = arguments[0].to_text();
  if (equals_ignoring_ascii_case(name, u"style")) return inline_style_object(*self);
  const std::u16string* value = self->attribute(attribute_name(name));
  return value ? Value(*value) : Value();
}

Value set_attribute(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 3);
  dom::set_attribute(*self, attribute_name(arguments[0].to_text()), arguments[1].to_text());
  return {};
}

Value remove_attribute(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const dom::Name name = attribute_name(arguments[0].to_text());
  const bool had = self->has_attribute(name);
  dom::remove_attribute(*self, name);
  return had;
}

Value contains(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  const dom::Ref<Element> other = element_of(arguments[0]);
  return other && dom::is_inclusive_ancestor(*self, *other);
}

constexpr MemberOf<ElementObject> rows[] = {
    {u"tagName", [](ElementObject& self) -> Value { return self->display_name(); }},
    {u"sourceIndex", [](ElementObject& self) -> Value { return self.source_index(); }},
    {u"innerHTML", [](ElementObject& self) -> Value { return dom::inner_html(*self); },
     [](ElementObject& self, const Value& value) { dom::assign_inner_html(*self, value.to_text()); }},
    {u"outerHTML", [](ElementObject& self) -> Value { return dom::outer_html(*self); },
     [](ElementObject& self, const Value& value) { dom::assign_outer_html(*self, value.to_text()); }},
    {u"innerText", [](ElementObject& self) -> Value { return dom::inner_text(*self); },
     [](ElementObject& self, const Value& value) { dom::assign_inner_text(*self, value.to_text()); }},
    {u"style", [](ElementObject& self) { return inline_style_object(*self); }},
    {u"parentElement", [](ElementObject& self) { return self.element(self->parent_element()); }},
    {u"children", [](ElementObject& self) { return self.collection(CollectionKind::Children); }},
    {u"all", [](ElementObject& self) { return self.collection(CollectionKind::All); }},
    {u"document", [](ElementObject& self) { return document_object(self.document()); }},
    {.name = u"getAttribute", .call = get_attribute},
    {.name = u"setAttribute", .call = set_attribute},
    {.name = u"removeAttribute", .call = remove_attribute},
    {.name = u"contains", .call = contains},
};

/// Properties that are an attribute's text and nothing else.
constexpr std::u16string_view reflected_attributes[] = {
    u"id",     u"className",   u"title",       u"name",        u"value",     u"type",  u"alt",    u"width",
    u"height", u"align",       u"vAlign",      u"bgColor",     u"border",    u"color", u"face",   u"size",
    u"target", u"borderColor", u"cellPadding", u"cellSpacing", u"lang",      u"dir",   u"hspace", u"vspace",
    u"method", u"content",     u"media",       u"rel",         u"background"};
/// Those whose text is an address: read as it is meant, written as given.
constexpr std::u16string_view address_attributes[] = {u"href", u"src", u"action"};

bool is_among(std::u16string_view name, std::span<const std::u16string_view> names) {
  for (const std::u16string_view candidate : names)
    if (equals_ignoring_ascii_case(candidate, name)) return true;
  return false;
}

Value ElementObject::invoke(std::u16string_view name, Values& arguments) {
  if (const auto* row = find_member<ElementObject>(rows, name)) return invoke_member(*row, *this, arguments);
  const bool address = is_among(name, address_attributes);
  if (!address && !is_among(name, reflected_attributes)) unknown_member(name);
  expect_arguments(arguments, 0, 0);
  const std::u16string_view written = element_->attribute_or_empty(attribute_name(name));
  if (address && document_ && !written.empty()) return document_->absolute_url(written);
  return written;
}

void ElementObject::set(std::u16string_view name, const Value& value) {
  if (const auto* row = find_member<ElementObject>(rows, name)) return set_member(*row, *this, value);
  if (!is_among(name, address_attributes) && !is_among(name, reflected_attributes)) unknown_member(name);
  dom::set_attribute(*element_, attribute_name(name), value.to_text());
}

}  // namespace

Value element_object(Element* element, const DocumentHandle& document) {
  if (!element) return {};
  return ObjectHandle(std::make_shared<ElementObject>(*element, document));
}

dom::Ref<Element> element_of(const Value& value) {
  const ObjectHandle object = value.to_object();
  if (!object) return {};
  const auto* element = dynamic_cast<const ElementObject*>(object.get());
  if (!element) type_mismatch();
  return **element;
}

}  // namespace tvx::library
