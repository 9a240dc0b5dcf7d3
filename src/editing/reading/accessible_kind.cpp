#include "tvx/editing/reading/accessible_kind.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Element;
using dom::Tag;
using Kind = AccessibleKind;

namespace {

Kind kind_of_input(const Element& input) {
  static const std::pair<std::u16string_view, Kind> types[]{
      {u"checkbox", Kind::CheckBox}, {u"radio", Kind::RadioButton}, {u"password", Kind::PasswordField},
      {u"button", Kind::Button},     {u"submit", Kind::Button},     {u"reset", Kind::Button},
      {u"file", Kind::Button},       {u"image", Kind::Button},      {u"hidden", Kind::Button}};
  const std::u16string type = ascii_lower(input.attribute_or_empty(dom::names::type));
  for (const auto& [name, kind] : types)
    if (type == name) return kind;
  return Kind::TextField;
}

Kind kind_of_object(const Element& object) {
  switch (object.tag()) {
    case Tag::Img: return Kind::Image;
    case Tag::Input: return kind_of_input(object);
    case Tag::Button: return Kind::Button;
    case Tag::Textarea: return Kind::TextArea;
    case Tag::Select: {
      static const dom::Name multiple(u"multiple");
      return object.has_attribute(multiple) || object.has_attribute(dom::names::size) ? Kind::Choices
                                                                                      : Kind::Choice;
    }
    default: return Kind::Embedded;
  }
}

/// HTML standard, section 4.9.12: without a scope, a header is one of its row if the row has other cells.
Kind kind_of_header(const Element& header) {
  static const dom::Name scope(u"scope");
  const std::u16string said = ascii_lower(header.attribute_or_empty(scope));
  if (said.starts_with(u"row")) return Kind::RowHeader;
  if (said.starts_with(u"col")) return Kind::ColumnHeader;
  for (const dom::Node* cell = header.parent() ? header.parent()->first_child() : nullptr; cell;
       cell = cell->next_sibling())
    if (cell->is(Tag::Td)) return Kind::RowHeader;
  return Kind::ColumnHeader;
}

bool is_section(const Element& element) {
  static const std::u16string_view names[]{u"section", u"article", u"main",   u"nav",
                                           u"aside",   u"header",  u"footer", u"figure"};
  return std::ranges::find(names, element.name().text()) != std::end(names);
}

/// A block that no other name says more of: a paragraph where it holds text itself, else a part of the page.
Kind kind_of_block(const Element& block) {
  for (const dom::Node* child = block.first_child(); child; child = child->next_sibling()) {
    const auto* element = dom::as<Element>(child);
    if (element && !element->is(Tag::Br) && is_block_node(*element)) return Kind::Section;
  }
  return Kind::Paragraph;
}

std::u16string last_of_path(std::u16string_view address) {
  address = address.substr(0, address.find_first_of(u"?#"));
  const std::size_t slash = address.find_last_of(u'/');
  return std::u16string(slash == std::u16string_view::npos ? address : address.substr(slash + 1));
}

/// HTML standard, section 4.10.4: the label around a field, or the one that names it.
const Element* label_of(const Element& field) {
  const Element* around = dom::enclosing(field, Tag::Label);
  if (around) return around;
  const std::u16string_view id = field.attribute_or_empty(dom::names::id);
  const dom::Document* document = field.document();
  if (id.empty() || !document) return nullptr;
  for (const Element* element : document->all())
    if (element->is(Tag::Label) && element->attribute_or_empty(dom::names::for_) == id) return element;
  return nullptr;
}

std::u16string in_one_line(std::u16string_view text) {
  std::u16string line;
  for (const char16_t unit : text) {
    if (!is_ascii_space(unit))
      line += unit;
    else if (!line.empty() && line.back() != u' ')
      line += u' ';
  }
  if (!line.empty() && line.back() == u' ') line.pop_back();
  return line;
}

std::u16string name_of_field(const Element& field, Kind kind) {
  if (kind == Kind::Button) {
    const std::u16string caption =
        in_one_line(field.is(Tag::Button) ? dom::text_content(field)
                                          : std::u16string(field.attribute_or_empty(dom::names::value)));
    if (!caption.empty()) return caption;
  }
  if (const Element* label = label_of(field)) {
    const std::u16string text = in_one_line(dom::text_content(*label));
    if (!text.empty()) return text;
  }
  return std::u16string(field.attribute_or_empty(dom::names::name));
}

}  // namespace

AccessibleKind accessible_kind(const Element& element) {
  if (is_object(element)) return kind_of_object(element);
  switch (element.tag()) {
    case Tag::Hr: return Kind::Rule;
    case Tag::Br: return Kind::None;
    case Tag::A: return element.has_attribute(dom::names::href) ? Kind::Link : Kind::None;
    default: break;
  }
  const dom::Document* document = element.document();
  if (document && document->body() == &element) return Kind::Document;
  if (!is_block_node(element)) return Kind::None;
  switch (element.tag()) {
    case Tag::P: return Kind::Paragraph;
    case Tag::Blockquote: return Kind::Quotation;
    case Tag::Pre: return Kind::Preformatted;
    case Tag::Table: return Kind::Table;
    case Tag::Caption: return Kind::Caption;
    case Tag::Td: return Kind::Cell;
    case Tag::Th: return kind_of_header(element);
    case Tag::Form: return Kind::Form;
    case Tag::Fieldset: return Kind::Group;
    default: break;
  }
  if (is_heading(element)) return Kind::Heading;
  if (is_item(element)) return Kind::Item;
  if (holds_items(element)) return Kind::List;
  if (is_table_part(element)) return Kind::None;
  return is_section(element) ? Kind::Section : kind_of_block(element);
}

bool is_thing(AccessibleKind kind) { return kind >= Kind::Rule; }

bool is_block(AccessibleKind kind) { return kind != Kind::None && (kind < Kind::Link || kind == Kind::Rule); }

int heading_level(const Element& element) {
  if (!is_heading(element)) return 0;
  return element.name().text()[1] - u'0';
}

std::u16string accessible_name(const Element& element) {
  static const dom::Name label(u"aria-label"), summary(u"summary");
  const Kind kind = accessible_kind(element);
  for (const dom::Name name : {label, dom::names::alt, dom::names::title, summary}) {
    const bool counts = name != dom::names::alt || is_thing(kind);
    if (const std::u16string* value = counts ? element.attribute(name) : nullptr; value && !value->empty())
      return *value;
  }
  // A picture with an empty text is one that its author calls an ornament.
  if (kind == Kind::Image)
    return element.has_attribute(dom::names::alt) ? std::u16string()
                                                  : last_of_path(element.attribute_or_empty(dom::names::src));
  if (kind >= Kind::Button) return name_of_field(element, kind);
  return {};
}

std::u16string field_value(const Element& field) {
  if (field.is(Tag::Textarea)) return dom::text_content(field);
  if (!field.is(Tag::Select)) return std::u16string(field.attribute_or_empty(dom::names::value));
  static const dom::Name selected(u"selected");
  const Element* first = nullptr;
  for (const dom::Node* node = field.first_child(); node; node = dom::next_in_order(*node, &field)) {
    const auto* option = dom::as<Element>(node);
    if (!option || !option->is(Tag::Option)) continue;
    if (option->has_attribute(selected)) return in_one_line(dom::text_content(*option));
    if (!first) first = option;
  }
  return first && accessible_kind(field) == Kind::Choice ? in_one_line(dom::text_content(*first))
                                                         : std::u16string();
}

std::u16string language_of(const dom::Node& node) {
  for (const dom::Node* above = &node; above; above = above->parent()) {
    const auto* element = dom::as<Element>(above);
    if (const std::u16string* language = element ? element->attribute(dom::names::lang) : nullptr)
      return *language;
  }
  return {};
}

}  // namespace tvx::editing
