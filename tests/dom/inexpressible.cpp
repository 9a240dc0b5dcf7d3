#include "dom/inexpressible.h"

#include <algorithm>
#include <initializer_list>

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"
#include "tvx/dom/parser/tag_sets.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::test {

namespace {

bool is_one_of(const Element& element, std::initializer_list<Tag> tags) {
  return std::any_of(tags.begin(), tags.end(), [&](Tag tag) { return element.is(tag); });
}

bool is_heading(const Element& element) {
  return is_one_of(element, {Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6});
}

/// HTML standard, section 13.2.4.2 "has an element in scope".
bool ends_scope(const Element& element) {
  if (!element.is_html()) {
    for (const std::u16string_view name :
         {u"mi", u"mo", u"mn", u"ms", u"mtext", u"annotation-xml", u"foreignObject", u"desc", u"title"})
      if (element.name().text() == name) return true;
    return false;
  }
  return is_one_of(element, {Tag::Applet, Tag::Caption, Tag::Html, Tag::Table, Tag::Td, Tag::Th, Tag::Marquee,
                             Tag::Object, Tag::Select, Tag::Template});
}

/// Whether an ancestor of `element` fits, with nothing between that stops the search.
template <class Fits, class Stops>
bool has_around(const Element& element, Fits fits, Stops stops) {
  for (const Element* around = element.parent_element(); around; around = around->parent_element()) {
    if (fits(*around)) return true;
    if (stops(*around)) return false;
  }
  return false;
}

bool stands_in(const Element& element, Tag tag) {
  return has_around(
      element, [tag](const Element& around) { return around.is(tag); }, ends_scope);
}

/// What a start tag of these does to an open paragraph.
bool ends_paragraph(const Element& element) {
  return is_heading(element) ||
         is_one_of(element, {Tag::Address,  Tag::Article, Tag::Aside,   Tag::Blockquote, Tag::Center, Tag::Dd,
                             Tag::Details,  Tag::Dialog,  Tag::Dir,     Tag::Div,        Tag::Dl,     Tag::Dt,
                             Tag::Fieldset, Tag::Figure,  Tag::Footer,  Tag::Form,       Tag::Header, Tag::Hr,
                             Tag::Li,       Tag::Listing, Tag::Main,    Tag::Menu,       Tag::Nav,    Tag::Ol,
                             Tag::P,        Tag::Pre,     Tag::Section, Tag::Summary,    Tag::Table,  Tag::Ul,
                             Tag::Xmp});
}

bool stands_in_paragraph(const Element& element) {
  return has_around(
      element, [](const Element& around) { return around.is(Tag::P); },
      [](const Element& around) { return around.is(Tag::Button) || ends_scope(around); });
}

/// Text and formatting after a marker don't see what is open before it.
bool holds_formatting_back(const Element& element) {
  return is_one_of(element,
                   {Tag::Applet, Tag::Caption, Tag::Marquee, Tag::Object, Tag::Td, Tag::Template, Tag::Th});
}

/// HTML standard, section 13.2.6.4.7, the start tags "li" and "dd", "dt".
bool stands_in_item(const Element& element) {
  const bool definition = is_one_of(element, {Tag::Dd, Tag::Dt});
  if (!definition && !element.is(Tag::Li)) return false;
  return has_around(
      element,
      [definition](const Element& around) {
        return definition ? is_one_of(around, {Tag::Dd, Tag::Dt}) : around.is(Tag::Li);
      },
      [](const Element& around) {
        return parser::is_special(around) && !is_one_of(around, {Tag::Address, Tag::Div, Tag::P});
      });
}

/// The same section: start tags of the parts of rubies and lists end what may be ended without an end tag.
bool ends_its_parent(const Element& element) {
  const Element* parent = element.parent_element();
  if (!parent || !parser::has_implied_end(parent->tag())) return false;
  if (is_one_of(element, {Tag::Rb, Tag::Rtc})) return stands_in(element, Tag::Ruby);
  if (is_one_of(element, {Tag::Rp, Tag::Rt})) return stands_in(element, Tag::Ruby) && !parent->is(Tag::Rtc);
  if (element.is(Tag::Option))
    return parent->is(Tag::Option) || (stands_in(element, Tag::Select) && !parent->is(Tag::Optgroup));
  return is_one_of(element, {Tag::Hr, Tag::Optgroup}) && stands_in(element, Tag::Select);
}

std::string kind_of(const Element& element) {
  if (element.is(Tag::Plaintext)) return "plaintext has no end";
  if (element.is(Tag::A) &&
      has_around(
          element, [](const Element& around) { return around.is(Tag::A); }, holds_formatting_back))
    return "a link in a link";
  if (element.is(Tag::Nobr) && stands_in(element, Tag::Nobr)) return "an unbroken line in its like";
  if (element.is(Tag::Button) && stands_in(element, Tag::Button)) return "a button in a button";
  if (element.is(Tag::Form) && enclosing(*element.parent(), Tag::Form)) return "a form in a form";
  if (is_heading(element) && element.parent_element() && is_heading(*element.parent_element()))
    return "a heading in a heading";
  if (is_one_of(element, {Tag::Input, Tag::Select}) && stands_in(element, Tag::Select))
    return "a field in a list";
  if (ends_its_parent(element)) return "a part of a ruby or a list in what it ends";
  if (stands_in_item(element)) return "an item in an item";
  if (ends_paragraph(element) && stands_in_paragraph(element)) return "a paragraph around what ends it";
  if (element.is(Tag::Script)) {
    const std::u16string text = text_content(element);
    if (contains(text, u"<!--") && contains(text, u"<script"))
      return "a script that opens a script and doesn't close it";
  }
  return "";
}

}  // namespace

std::string inexpressible_kind(const Node& root) {
  for (const Node* node = &root; node; node = next_in_order(*node, &root)) {
    if (const auto* element = as<Element>(node)) {
      std::string kind = kind_of(*element);
      if (kind.empty() && element->template_content())
        kind = inexpressible_kind(*element->template_content());
      if (!kind.empty()) return kind;
      for (const Attribute& attribute : element->attributes())
        if (contains(attribute.value, u"\r")) return "a carriage return";
    } else if (const auto* data = as<CharacterData>(node); data && contains(data->data(), u"\r")) {
      return "a carriage return";
    }
  }
  return "";
}

}  // namespace tvx::dom::test
