#include "tvx/library/objects/element_object.h"
#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/library/members/facade_members.h"
#include "tvx/library/objects/element_kinds.h"

namespace tvx::library {

namespace {

using dom::CollectionKind;
using dom::Element;

// The flags after the names choose among ways of comparing letters; here letters count for nothing.

Value get_attribute(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const std::u16string name = arguments[0].to_text();
  if (equals_ignoring_ascii_case(name, u"style")) return inline_style_object(*self);
  const std::optional<std::u16string> value = dom::get_attribute(*self, name);
  return value ? Value(*value) : Value();
}

Value set_attribute(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 3);
  const dom::Name name = dom::attribute_named(*self, arguments[0].to_text());
  if (arguments[1].is_null())
    dom::remove_attribute(*self, name);
  else
    dom::set_attribute(*self, name, arguments[1].to_text());
  return {};
}

Value remove_attribute(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  return dom::remove_attribute_named(*self, arguments[0].to_text());
}

Value elements_by_tag(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return self.collection(CollectionKind::Tag, arguments[0].to_text());
}

Value contains(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  const dom::Ref<Element> other = element_of(arguments[0]);
  return other && dom::is_inclusive_ancestor(*self, *other);
}

Value scroll_into_view(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 1);
  const bool at_top = arguments.empty() || arguments[0].to_boolean();
  if (auto* viewport = self.document()->viewport()) viewport->scroll_into_view(*self, at_top);
  return {};
}

/// Assigning to `style` itself is assigning its text.
void set_style(ElementObject& self, const Value& value) {
  dom::style::InlineStyle(*self).set_css_text(text_or_nothing(value));
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
    {u"outerText", [](ElementObject& self) -> Value { return dom::inner_text(*self); },
     [](ElementObject& self, const Value& value) { dom::assign_outer_text(*self, value.to_text()); }},
    {u"style", [](ElementObject& self) { return inline_style_object(*self); }, set_style},
    {u"currentStyle", [](ElementObject& self) { return current_style_object(*self); }},
    {u"parentElement", [](ElementObject& self) { return self.element(self->parent_element()); }},
    {u"children", [](ElementObject& self) { return self.collection(CollectionKind::Children); }},
    {u"all", [](ElementObject& self) { return self.collection(CollectionKind::All); }},
    {u"document", [](ElementObject& self) { return document_object(self.document()); }},
    {.name = u"getAttribute", .call = get_attribute},
    {.name = u"setAttribute", .call = set_attribute},
    {.name = u"removeAttribute", .call = remove_attribute},
    {.name = u"getElementsByTagName", .call = elements_by_tag},
    {.name = u"contains", .call = contains},
    {.name = u"scrollIntoView", .call = scroll_into_view},
};

/// What setting an attribute's property to nothing leaves.
enum class Emptied : std::uint8_t { Text, NoAttribute };

/// A property that is an attribute's text and nothing else, of elements of any kind.
struct Reflected {
  std::u16string_view name;
  Emptied emptied = Emptied::Text;
  bool address = false;  // reads as it is meant, is written as given
};

constexpr Reflected reflected[] = {
    {u"id"},
    {u"className"},
    {u"title"},
    {u"name"},
    {u"value"},
    {u"type"},
    {u"alt"},
    {u"lang"},
    {u"dir"},
    {u"method"},
    {u"content"},
    {u"httpEquiv"},
    {u"media"},
    {u"rel"},
    {u"start"},
    {u"target", Emptied::NoAttribute},
    {u"width", Emptied::NoAttribute},
    {u"height", Emptied::NoAttribute},
    {u"align", Emptied::NoAttribute},
    {u"vAlign", Emptied::NoAttribute},
    {u"bgColor", Emptied::NoAttribute},
    {u"border", Emptied::NoAttribute},
    {u"borderColor", Emptied::NoAttribute},
    {u"cellPadding", Emptied::NoAttribute},
    {u"cellSpacing", Emptied::NoAttribute},
    {u"color", Emptied::NoAttribute},
    {u"face", Emptied::NoAttribute},
    {u"size", Emptied::NoAttribute},
    {u"text", Emptied::NoAttribute},
    {u"link", Emptied::NoAttribute},
    {u"vLink", Emptied::NoAttribute},
    {u"aLink", Emptied::NoAttribute},
    {u"hspace", Emptied::NoAttribute},
    {u"vspace", Emptied::NoAttribute},
    {u"background", Emptied::NoAttribute},
    {.name = u"href", .address = true},
    {.name = u"src", .address = true},
    {.name = u"action", .address = true},
};

const Reflected* find_reflected(std::u16string_view name) {
  for (const Reflected& row : reflected)
    if (equals_ignoring_ascii_case(row.name, name)) return &row;
  return nullptr;
}

const MemberOf<ElementObject>* find_row(const Element& element, std::u16string_view name) {
  const auto* own = find_kind_member(element, name);
  return own ? own : find_member<ElementObject>(rows, name);
}

}  // namespace

std::vector<std::pair<std::string, Value>> ElementObject::description() const {
  return {{"tag", element_->display_name()},
          {"sourceIndex", source_index()},
          {"id", element_->attribute_or_empty(dom::names::id)}};
}

std::u16string ElementObject::document_address() const { return document_ ? document_->url() : u""; }

std::int32_t ElementObject::source_index() const {
  if (!element_->document() || !dom::is_connected(*element_)) return -1;
  return static_cast<std::int32_t>(element_->document()->source_index(*element_));
}

bool ElementObject::is_operation(std::u16string_view name) const {
  const auto* row = find_row(*element_, name);
  return row && row->call;
}

Value ElementObject::invoke(std::u16string_view name, Values& arguments) {
  if (const auto* row = find_row(*element_, name)) return invoke_member(*row, *this, arguments);
  const Reflected* row = find_reflected(name);
  if (!row) unknown_member(name);
  expect_arguments(arguments, 0, 0);
  const std::u16string_view written = element_->attribute_or_empty(dom::attribute_named(name));
  if (row->address && document_ && !written.empty()) return document_->absolute_url(written);
  return written;
}

void ElementObject::set(std::u16string_view name, const Value& value) {
  if (const auto* row = find_row(*element_, name)) return set_member(*row, *this, value);
  const Reflected* row = find_reflected(name);
  if (!row) unknown_member(name);
  const dom::Name attribute = dom::attribute_named(name);
  if (row->emptied == Emptied::NoAttribute)
    dom::set_or_remove(*element_, attribute, text_or_nothing(value));
  else
    dom::set_reflected_text(*element_, attribute, text_or_nothing(value));
}

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
