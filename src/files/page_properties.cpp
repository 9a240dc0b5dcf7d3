#include "tvx/files/page_properties.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/files/declared_charset.h"

namespace tvx::files {
namespace {

using dom::Name;
using dom::Tag;

dom::Element* child_of_root(const dom::Document& document, Tag tag) {
  const dom::Element* root = document.document_element();
  for (dom::Node* child = root ? root->first_child() : nullptr; child; child = child->next_sibling())
    if (child->is(tag)) return static_cast<dom::Element*>(child);
  return nullptr;
}

/// The first element of that kind in the head for which the condition holds.
template <class Condition>
dom::Element* in_head(const dom::Document& document, Tag tag, const Condition& holds) {
  const dom::Element* head = child_of_root(document, Tag::Head);
  for (dom::Node* child = head ? head->first_child() : nullptr; child; child = child->next_sibling())
    if (child->is(tag) && holds(static_cast<dom::Element&>(*child))) return static_cast<dom::Element*>(child);
  return nullptr;
}
dom::Element* in_head(const dom::Document& document, Tag tag) {
  return in_head(document, tag, [](const dom::Element&) { return true; });
}

std::u16string value_of(const dom::Element* element, std::u16string_view name) {
  const std::u16string* value = element ? element->attribute(Name(name)) : nullptr;
  return value ? *value : std::u16string();
}

dom::Element* meta_named(const dom::Document& document, std::u16string_view name) {
  return in_head(document, Tag::Meta,
                 [&](const dom::Element& meta) { return ascii_lower(value_of(&meta, u"name")) == name; });
}

std::vector<dom::Element*> sheets_of(const dom::Document& document) {
  std::vector<dom::Element*> sheets;
  const dom::Element* head = child_of_root(document, Tag::Head);
  for (dom::Node* child = head ? head->first_child() : nullptr; child; child = child->next_sibling()) {
    if (!child->is(Tag::Style) && !child->is(Tag::Link)) continue;
    auto* element = static_cast<dom::Element*>(child);
    const std::u16string relations = ascii_lower(value_of(element, u"rel"));
    const auto words = split_on_space(relations);
    if (child->is(Tag::Style) || std::ranges::find(words, u"stylesheet") != words.end())
      sheets.push_back(element);
  }
  return sheets;
}

/// A colour of the body: its attribute where there is one, else its inline style.
struct BodyColour {
  std::u16string PageProperties::*member;
  const char16_t *attribute, *style;  // no style: there is only the attribute
};
constexpr BodyColour body_colours[] = {{&PageProperties::background, u"bgcolor", u"background-color"},
                                       {&PageProperties::text, u"text", u"color"},
                                       {&PageProperties::link, u"link", nullptr},
                                       {&PageProperties::visited, u"vlink", nullptr},
                                       {&PageProperties::background_image, u"background", nullptr}};

std::u16string colour_of(dom::Element* body, const BodyColour& colour) {
  if (!body) return {};
  if (std::u16string value = value_of(body, colour.attribute); !value.empty() || !colour.style) return value;
  return dom::style::InlineStyle(*body).get(colour.style);
}

void write_attribute(dom::Element& element, std::u16string_view name, const std::u16string& value) {
  if (value.empty())
    dom::remove_attribute(element, Name(name));
  else
    dom::set_attribute(element, Name(name), value);
}

/// Writes the differences between two descriptions of a page.
class Writer {
 public:
  Writer(dom::Document& document, const PageProperties& before, const PageProperties& now)
      : document_(document), head_(*child_of_root(document, Tag::Head)), before_(before), now_(now) {}

  void write() {
    if (now_.charset != before_.charset && !now_.charset.empty())
      declare_charset(document_, to_utf8(now_.charset));
    if (now_.title != before_.title) write_title();
    if (now_.language != before_.language)
      write_attribute(*document_.document_element(), u"lang", now_.language);
    if (now_.base != before_.base)
      write_element(in_head(document_, Tag::Base), Tag::Base, u"href", now_.base);
    if (now_.description != before_.description) write_meta(u"description", now_.description);
    if (now_.keywords != before_.keywords) write_meta(u"keywords", now_.keywords);
    write_colours();
    if (now_.sheets != before_.sheets) write_sheets();
  }

 private:
  void write_title() {
    dom::Element* title = in_head(document_, Tag::Title);
    if (now_.title.empty()) {
      if (title) dom::remove(*title);
      return;
    }
    if (!title) title = &append(Tag::Title);
    dom::replace_children(*title, document_.create_text(now_.title));
  }
  dom::Element& append(Tag tag) {
    const dom::Ref<dom::Element> element = document_.create_element(tag);
    dom::insert(head_, element);
    return *element;
  }
  void write_element(dom::Element* element, Tag tag, std::u16string_view name, const std::u16string& value) {
    if (value.empty()) {
      if (element) dom::remove(*element);
      return;
    }
    if (!element) element = &append(tag);
    dom::set_attribute(*element, Name(name), value);
  }
  void write_meta(std::u16string_view name, const std::u16string& value) {
    dom::Element* meta = meta_named(document_, name);
    if (!meta && !value.empty()) {
      meta = &append(Tag::Meta);
      dom::set_attribute(*meta, Name(u"name"), name);
    }
    write_element(meta, Tag::Meta, u"content", value);
  }
  void write_colours() {
    dom::Element* body = child_of_root(document_, Tag::Body);
    if (!body) return;
    for (const BodyColour& colour : body_colours) {
      const std::u16string& value = now_.*colour.member;
      if (value == before_.*colour.member) continue;
      if (!colour.style || body->has_attribute(Name(colour.attribute)))
        write_attribute(*body, colour.attribute, value);
      else
        dom::style::InlineStyle(*body).set(colour.style, value);
    }
  }
  // In the order in which they are given: later sheets win.
  void write_sheets() {
    const std::vector<dom::Element*> old = sheets_of(document_);
    std::vector<dom::Ref<dom::Element>> wanted;
    for (const PageProperties::Sheet& sheet : now_.sheets) {
      const bool known = sheet.number < old.size();
      dom::Ref<dom::Element> element = known
                                           ? dom::Ref<dom::Element>(*old[sheet.number])
                                           : document_.create_element(sheet.linked ? Tag::Link : Tag::Style);
      if (!known && sheet.linked) dom::set_attribute(*element, Name(u"rel"), u"stylesheet");
      if (sheet.linked)
        dom::set_attribute(*element, Name(u"href"), sheet.text);
      else if (!known || dom::text_content(*element) != sheet.text)
        dom::replace_children(*element, document_.create_text(sheet.text));
      wanted.push_back(element);
    }
    const bool kept_order = std::ranges::is_sorted(now_.sheets, {}, &PageProperties::Sheet::number);
    for (dom::Element* each : old)
      if (!kept_order || std::ranges::none_of(wanted, [&](const auto& one) { return one.get() == each; }))
        dom::remove(*each);
    for (const auto& element : wanted)
      if (!element->parent()) dom::insert(head_, element);
  }

  dom::Document& document_;
  dom::Element& head_;
  const PageProperties& before_;
  const PageProperties& now_;
};

}  // namespace

PageProperties page_properties(const dom::Document& document) {
  PageProperties properties;
  if (const dom::Element* title = in_head(document, Tag::Title)) properties.title = dom::text_content(*title);
  properties.language = value_of(document.document_element(), u"lang");
  properties.charset = from_utf8(declared_charset(document));
  properties.base = value_of(in_head(document, Tag::Base), u"href");
  properties.description = value_of(meta_named(document, u"description"), u"content");
  properties.keywords = value_of(meta_named(document, u"keywords"), u"content");
  dom::Element* body = child_of_root(document, Tag::Body);
  for (const BodyColour& colour : body_colours) properties.*colour.member = colour_of(body, colour);
  for (const dom::Element* sheet : sheets_of(document)) {
    const bool linked = sheet->is(Tag::Link);
    properties.sheets.push_back(
        {linked, linked ? value_of(sheet, u"href") : dom::text_content(*sheet), properties.sheets.size()});
  }
  return properties;
}

void set_page_properties(dom::Document& document, const PageProperties& properties) {
  const PageProperties before = page_properties(document);
  if (before == properties || !child_of_root(document, Tag::Head)) return;
  const dom::UndoStep step(document.journal(), u"Page properties");
  Writer(document, before, properties).write();
}

}  // namespace tvx::files
