#include "tvx/editing/clipboard/style_elements.h"

#include <algorithm>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/declarations.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/elements_in.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool has_word(std::u16string_view words, std::u16string_view wanted) {
  for (std::u16string_view word : split_on_space(words))
    if (word == wanted) return true;
  return false;
}

/// The elements that say what a declaration says; none where no element does.
std::vector<Tag> elements_for(const dom::style::Declaration& declaration) {
  const std::u16string value = ascii_lower(declaration.value);
  std::vector<Tag> tags;
  if (declaration.name == u"font-weight" && (value == u"bold" || value == u"600" || value == u"700"))
    tags = {Tag::B};
  if (declaration.name == u"font-style" && value == u"italic") tags = {Tag::I};
  if (declaration.name == u"vertical-align" && value == u"sub") tags = {Tag::Sub};
  if (declaration.name == u"vertical-align" && value == u"super") tags = {Tag::Sup};
  if (declaration.name == u"text-decoration" || declaration.name == u"text-decoration-line") {
    if (has_word(value, u"underline")) tags.push_back(Tag::U);
    if (has_word(value, u"line-through")) tags.push_back(Tag::S);
    // A line of another kind or colour no element draws.
    if (tags.size() != split_on_space(value).size()) tags.clear();
  }
  return tags;
}

void put_into(Element& element, Tag tag) {
  const Ref<Element> inner = element.document()->create_element(tag);
  while (Node* child = element.first_child()) dom::insert(*inner, dom::remove(*child));
  dom::insert(element, inner);
}

void make_elements(Element& span) {
  const dom::style::Declarations declarations(span.attribute_or_empty(dom::names::style));
  std::u16string kept;
  std::vector<Tag> tags;
  for (const dom::style::Declaration* declaration : declarations.list()) {
    const std::vector<Tag> said = elements_for(*declaration);
    tags.insert(tags.end(), said.begin(), said.end());
    if (!said.empty()) continue;
    if (!kept.empty()) kept += u"; ";
    kept += declaration->name + u": " + declaration->value;
  }
  if (tags.empty()) return;
  if (kept.empty())
    dom::remove_attribute(span, dom::names::style);
  else
    dom::set_attribute(span, dom::names::style, kept);
  for (std::size_t i = tags.size(); i-- > 0;) put_into(span, tags[i]);
}

void unwrap(Element& element) {
  const Ref<Element> held(element);
  while (Node* child = element.first_child()) dom::insert(*element.parent(), dom::remove(*child), &element);
  dom::remove(*held);
}

/// The only thing in an element that is seen, if that is an element.
Element* only_element_in(const Element& element) {
  Element* only = nullptr;
  for (Node* child = element.first_child(); child; child = child->next_sibling()) {
    if (is_filling(*child)) continue;
    if (only || !child->is_element()) return nullptr;
    only = static_cast<Element*>(child);
  }
  return only;
}

/// Takes the colour and the line off an element that is nothing but a link's appearance.
void plain(Element& element) {
  if (element.is(Tag::U)) return unwrap(element);
  dom::style::Declarations style(element.attribute_or_empty(dom::names::style));
  bool changed = style.remove(u"color");
  changed = style.remove(u"text-decoration") || changed;
  changed = style.remove(u"text-decoration-line") || changed;
  if (changed && style.empty())
    dom::remove_attribute(element, dom::names::style);
  else if (changed)
    dom::set_attribute(element, dom::names::style, style.css_text());
  dom::remove_attribute(element, dom::names::color);
}

bool may_color(const Element& element) {
  static const TagSet tags{Tag::Span, Tag::Font, Tag::U};
  return tags.has(element);
}

void plain_around(Element& link) {
  Element* around = link.parent_element();
  while (around && may_color(*around) && only_element_in(*around)) {
    const Ref<Element> held(around);
    around = around->parent_element();
    plain(*held);
  }
}

void plain_inside(Element& link) {
  Element* inside = only_element_in(link);
  while (inside && may_color(*inside)) {
    const Ref<Element> held(inside);
    inside = only_element_in(*inside);
    plain(*held);
  }
}

}  // namespace

/// A FONT that holds nothing but another one says with it what one alone can say.
static void join_fonts(Node& content) {
  const auto fonts = elements_in(content, [](const Element& element) { return element.is(Tag::Font); });
  for (std::size_t i = fonts.size(); i-- > 0;) {
    Element* inner = only_element_in(*fonts[i]);
    if (!inner || !inner->is(Tag::Font)) continue;
    const auto attributes = inner->attributes();
    const bool says_it_twice = std::ranges::any_of(
        attributes, [&](const dom::Attribute& attribute) { return fonts[i]->has_attribute(attribute.name); });
    if (says_it_twice) continue;
    for (const dom::Attribute& attribute : attributes)
      dom::set_attribute(*fonts[i], attribute.name, attribute.value);
    unwrap(*inner);
  }
}

void make_style_elements(Node& content) {
  join_fonts(content);
  const auto spans = elements_in(content, [](const Element& element) {
    return element.is(Tag::Span) && element.has_attribute(dom::names::style) && element.has_children() &&
           !is_block_piece(element);
  });
  for (const Ref<Element>& span : spans) make_elements(*span);
}

void drop_link_styles(Node& content) {
  const auto links = elements_in(content, [](const Element& element) {
    return element.is(Tag::A) && element.has_attribute(dom::names::href);
  });
  for (const Ref<Element>& link : links) {
    plain_around(*link);
    plain_inside(*link);
  }
}

}  // namespace tvx::editing
