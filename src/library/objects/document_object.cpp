#include "tvx/library/objects/document_object.h"

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/tree.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {

namespace {

using dom::CollectionKind;

class DocumentObject final : public Object {
 public:
  explicit DocumentObject(DocumentHandle document) : document_(std::move(document)) {}

  std::u16string_view kind() const override { return u"document"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"readyState", document_->readyState()}, {"url", document_->url()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  bool is_operation(std::u16string_view name) const override;
  void set(std::u16string_view name, const Value& value) override;

  const DocumentHandle& document() const { return document_; }
  browser::HTMLDocument& operator*() const { return *document_; }
  Value element(dom::Element* element) const { return element_object(element, document_); }
  Value collection(CollectionKind kind, std::u16string_view tag = {}) const {
    return collection_object(dom::Collection(document_->tree(), kind, tag), document_);
  }

 private:
  DocumentHandle document_;
};

struct ToValue {
  Value operator()(bool flag) const { return std::int32_t{flag ? -1 : 0}; }
  Value operator()(std::int32_t number) const { return number; }
  Value operator()(const std::u16string& text) const { return text; }
  Value operator()(std::monostate) const { return {}; }
};

/// execCommand(command, showUI, value): the two after the name may be missing.
Value exec_command(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 3);
  const bool show_ui = arguments.size() > 1 && !arguments[1].is_null() && arguments[1].to_boolean();
  const std::u16string value =
      arguments.size() > 2 && !arguments[2].is_null() ? arguments[2].to_text() : std::u16string();
  return (*self).execCommand(arguments[0].to_text(), show_ui, value);
}

Value query_value(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return std::visit(ToValue{}, (*self).queryCommandValue(arguments[0].to_text()));
}

template <auto Question>
Value query(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return ((*self).editor().*Question)(arguments[0].to_text());
}

Value element_by_id(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  const std::u16string id = arguments[0].to_text();
  for (dom::Element* element : (*self).tree().all())
    if (const std::u16string* own = element->attribute(dom::Name(u"id")); own && *own == id)
      return self.element(element);
  return {};
}

Value element_from_point(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  return self.element((*self).element_from_point(arguments[0].to_integer32(), arguments[1].to_integer32()));
}

Value elements_by_tag(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return self.collection(CollectionKind::Tag, arguments[0].to_text());
}

Value create_from_url(DocumentObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const std::u16string options =
      arguments.size() > 1 && !arguments[1].is_null() ? arguments[1].to_text() : std::u16string();
  return document_object((*self).createDocumentFromUrl(arguments[0].to_text(), options));
}

Value compatibility(DocumentObject& self) {
  return (*self).tree().compatibility_mode() == dom::CompatibilityMode::Quirks ? u"BackCompat"
                                                                               : u"CSS1Compat";
}

constexpr MemberOf<DocumentObject> rows[] = {
    {u"readyState", [](DocumentObject& self) -> Value { return (*self).readyState(); }},
    {u"designMode", [](DocumentObject& self) -> Value { return (*self).designMode(); },
     [](DocumentObject& self, const Value& value) { (*self).set_designMode(value.to_text()); }},
    {u"title", [](DocumentObject& self) -> Value { return (*self).title(); },
     [](DocumentObject& self, const Value& value) { (*self).set_title(value.to_text()); }},
    {u"url", [](DocumentObject& self) -> Value { return (*self).url(); }},
    {u"compatMode", compatibility},
    {u"body", [](DocumentObject& self) { return self.element((*self).body()); }},
    {u"documentElement",
     [](DocumentObject& self) { return self.element((*self).tree().document_element()); }},
    {u"head", [](DocumentObject& self) { return self.element((*self).tree().head()); }},
    {u"all", [](DocumentObject& self) { return self.collection(CollectionKind::All); }},
    {u"links", [](DocumentObject& self) { return self.collection(CollectionKind::Links); }},
    {u"images", [](DocumentObject& self) { return self.collection(CollectionKind::Images); }},
    {u"scripts", [](DocumentObject& self) { return self.collection(CollectionKind::Scripts); }},
    {u"forms", [](DocumentObject& self) { return self.collection(CollectionKind::Forms); }},
    {u"styleSheets", [](DocumentObject& self) { return style_sheets_object(self.document()); }},
    {u"selection", [](DocumentObject& self) { return selection_object(self.document()); }},
    {u"parentWindow", [](DocumentObject& self) { return window_object(self.document()); }},
    {.name = u"getElementById", .call = element_by_id},
    {.name = u"getElementsByTagName", .call = elements_by_tag},
    {.name = u"elementFromPoint", .call = element_from_point},
    {.name = u"createDocumentFromUrl", .call = create_from_url},
    {.name = u"execCommand", .call = exec_command},
    {.name = u"queryCommandValue", .call = query_value},
    {.name = u"queryCommandEnabled",
     .call = [](DocumentObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 1, 1);
       return (*self).queryCommandEnabled(arguments[0].to_text());
     }},
    {.name = u"queryCommandSupported", .call = query<&editing::Editor::supported>},
    {.name = u"queryCommandState", .call = query<&editing::Editor::state>},
    {.name = u"queryCommandIndeterm", .call = query<&editing::Editor::indeterminate>},
};

bool DocumentObject::is_operation(std::u16string_view name) const {
  return is_operation_named<DocumentObject>(rows, name);
}

Value DocumentObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<DocumentObject>(rows, name, *this, arguments);
}

void DocumentObject::set(std::u16string_view name, const Value& value) {
  set_named<DocumentObject>(rows, name, *this, value);
}

}  // namespace

Value document_object(const DocumentHandle& document) {
  if (!document) return {};
  return ObjectHandle(std::make_shared<DocumentObject>(document));
}

}  // namespace tvx::library
