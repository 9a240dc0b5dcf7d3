#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"

/// What may stand in what. Editing commands standard, section "Allowed children".
namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::NodeType;
using dom::Tag;

namespace {

const TagSet& headings() {
  static const TagSet tags{Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6};
  return tags;
}

const TagSet& inline_contents() {
  static const TagSet tags{
      Tag::A,    Tag::Abbr,  Tag::Acronym, Tag::B,      Tag::Bdi,    Tag::Bdo,     Tag::Big,  Tag::Blink,
      Tag::Cite, Tag::Code,  Tag::Dfn,     Tag::Em,     Tag::Font,   Tag::H1,      Tag::H2,   Tag::H3,
      Tag::H4,   Tag::H5,    Tag::H6,      Tag::I,      Tag::Kbd,    Tag::Listing, Tag::Mark, Tag::Marquee,
      Tag::Nobr, Tag::P,     Tag::Pre,     Tag::Q,      Tag::Rp,     Tag::Rt,      Tag::Ruby, Tag::S,
      Tag::Samp, Tag::Small, Tag::Span,    Tag::Strike, Tag::Strong, Tag::Sub,     Tag::Sup,  Tag::Tt,
      Tag::U,    Tag::Var,   Tag::Xmp};
  return tags;
}

const TagSet& prohibited_in_paragraphs() {
  static const TagSet tags{
      Tag::Address, Tag::Article,  Tag::Aside,    Tag::Blockquote, Tag::Caption,   Tag::Center,
      Tag::Col,     Tag::Colgroup, Tag::Dd,       Tag::Details,    Tag::Dir,       Tag::Div,
      Tag::Dl,      Tag::Dt,       Tag::Fieldset, Tag::Figcaption, Tag::Figure,    Tag::Footer,
      Tag::Form,    Tag::H1,       Tag::H2,       Tag::H3,         Tag::H4,        Tag::H5,
      Tag::H6,      Tag::Header,   Tag::Hgroup,   Tag::Hr,         Tag::Li,        Tag::Listing,
      Tag::Menu,    Tag::Nav,      Tag::Ol,       Tag::P,          Tag::Plaintext, Tag::Pre,
      Tag::Section, Tag::Summary,  Tag::Table,    Tag::Tbody,      Tag::Td,        Tag::Tfoot,
      Tag::Th,      Tag::Thead,    Tag::Tr,       Tag::Ul,         Tag::Xmp};
  return tags;
}

const TagSet& table_parts_without_text() {
  static const TagSet tags{Tag::Colgroup, Tag::Table, Tag::Tbody, Tag::Tfoot, Tag::Thead, Tag::Tr};
  return tags;
}

const TagSet& text_only() {
  static const TagSet tags{Tag::Plaintext, Tag::Script, Tag::Style, Tag::Xmp};
  return tags;
}

// What may stand in an element that takes nothing else; null for all other elements.
const TagSet* sole_children(Tag parent) {
  static const TagSet columns{Tag::Col};
  static const TagSet table{Tag::Caption, Tag::Col, Tag::Colgroup, Tag::Tbody, Tag::Td,
                            Tag::Tfoot,   Tag::Th,  Tag::Thead,    Tag::Tr};
  static const TagSet rows{Tag::Td, Tag::Th, Tag::Tr};
  static const TagSet cells{Tag::Td, Tag::Th};
  static const TagSet terms{Tag::Dt, Tag::Dd};
  static const TagSet items{Tag::Dir, Tag::Li, Tag::Ol, Tag::Ul};
  switch (parent) {
    case Tag::Colgroup: return &columns;
    case Tag::Table: return &table;
    case Tag::Tbody:
    case Tag::Tfoot:
    case Tag::Thead: return &rows;
    case Tag::Tr: return &cells;
    case Tag::Dl: return &terms;
    case Tag::Dir:
    case Tag::Ol:
    case Tag::Ul: return &items;
    case Tag::Hgroup: return &headings();
    default: return nullptr;
  }
}

bool never_in_flow(Tag child) {
  static const TagSet tags{Tag::Body,     Tag::Caption, Tag::Col,   Tag::Colgroup, Tag::Frame,
                           Tag::Frameset, Tag::Head,    Tag::Html,  Tag::Tbody,    Tag::Td,
                           Tag::Tfoot,    Tag::Th,      Tag::Thead, Tag::Tr};
  return tags.has(child);
}

// Steps 9 to 14, with both sides as names.
bool may_hold(Tag parent, Tag child) {
  if (const TagSet* sole = sole_children(parent)) return sole->has(child);
  if (never_in_flow(child)) return false;
  if ((child == Tag::Dd || child == Tag::Dt) && parent != Tag::Dl) return false;
  if (child == Tag::Li && parent != Tag::Ol && parent != Tag::Ul) return false;
  if (parent == Tag::A && child == Tag::A) return false;
  if ((parent == Tag::Dd || parent == Tag::Dt) && (child == Tag::Dd || child == Tag::Dt)) return false;
  if (headings().has(parent) && headings().has(child)) return false;
  if (parent == Tag::Nobr && child == Tag::Nobr) return false;
  return !(inline_contents().has(parent) && prohibited_in_paragraphs().has(child));
}

bool ancestor_allows(const Node& ancestor, Tag child) {
  if (child == Tag::A && ancestor.is(Tag::A)) return false;
  if (prohibited_in_paragraphs().has(child) && inline_contents().has(ancestor)) return false;
  return !headings().has(child) || !headings().has(ancestor);
}

// Step 6: what the ancestors forbid, because the text would not come back as the same tree.
bool ancestors_allow(const Node& parent, Tag child) {
  if (child != Tag::A && !prohibited_in_paragraphs().has(child)) return true;
  for (const Node* node = &parent; node; node = node->parent()) {
    if (!ancestor_allows(*node, child)) return false;
  }
  return true;
}

bool is_blank(std::u16string_view text) { return trimmed(text).empty(); }

// Steps 1 to 5 for a child that is no HTML element.
bool may_hold_other(Tag parent, const Node& child) {
  const auto* text = dom::as<dom::Text>(&child);
  if (text) return !table_parts_without_text().has(parent) || is_blank(text->data());
  if (text_only().has(parent)) return false;
  return child.type() == NodeType::Comment || child.type() == NodeType::Element;
}

const Element* html_element(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && element->is_html() ? element : nullptr;
}

}  // namespace

bool is_heading(const Node& node) { return headings().has(node); }
bool may_stand_below(const Node& node, const Node& ancestor) {
  const Element* element = html_element(node);
  return !element || ancestor_allows(ancestor, element->tag());
}
bool is_prohibited_paragraph_child(const Node& node) { return prohibited_in_paragraphs().has(node); }
bool is_prohibited_paragraph_child_name(Name name) { return prohibited_in_paragraphs().has(name.tag()); }
bool is_element_with_inline_contents(const Node& node) { return inline_contents().has(node); }

bool is_allowed_child_name(Name child, Name parent) {
  return !text_only().has(parent.tag()) && may_hold(parent.tag(), child.tag());
}

bool is_allowed_child_name(Name child, const Node& parent) {
  if (const Element* element = html_element(parent)) {
    return !text_only().has(element->tag()) && ancestors_allow(parent, child.tag()) &&
           may_hold(element->tag(), child.tag());
  }
  return parent.is_element() || parent.type() == NodeType::DocumentFragment;
}

bool is_allowed_child(const Node& child, Name parent) {
  if (const Element* element = html_element(child)) return is_allowed_child_name(element->name(), parent);
  return may_hold_other(parent.tag(), child);
}

bool is_allowed_child(const Node& child, const Node& parent) {
  if (const Element* element = html_element(child)) return is_allowed_child_name(element->name(), parent);
  const Element* holder = html_element(parent);
  return may_hold_other(holder ? holder->tag() : Tag::Unknown, child);
}

}  // namespace tvx::editing
