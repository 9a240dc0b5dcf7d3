#include "editing/rendering.h"

#include "editing/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

// The last declaration of a property in a style attribute; empty if there is none.
std::u16string inline_declaration(const Element& element, std::u16string_view property) {
  const std::u16string* style = element.attribute(dom::names::style);
  std::u16string value;
  if (!style) return value;
  for (const std::u16string_view declaration : split(*style, u';')) {
    const std::size_t colon = declaration.find(u':');
    if (colon == std::u16string_view::npos) continue;
    if (!equals_ignoring_ascii_case(trimmed(declaration.substr(0, colon)), property)) continue;
    value = ascii_lower(trimmed(declaration.substr(colon + 1)));
  }
  return value;
}

const TagSet& hidden_tags() {
  static const TagSet tags{Tag::Area, Tag::Base,   Tag::Basefont, Tag::Datalist, Tag::Head,
                           Tag::Link, Tag::Meta,   Tag::Noembed,  Tag::Noframes, Tag::Param,
                           Tag::Rp,   Tag::Script, Tag::Style,    Tag::Template, Tag::Title};
  return tags;
}

const TagSet& block_tags() {
  static const TagSet tags{
      Tag::Address, Tag::Article,  Tag::Aside,    Tag::Blockquote, Tag::Body,    Tag::Caption, Tag::Center,
      Tag::Col,     Tag::Colgroup, Tag::Dd,       Tag::Details,    Tag::Dialog,  Tag::Dir,     Tag::Div,
      Tag::Dl,      Tag::Dt,       Tag::Fieldset, Tag::Figcaption, Tag::Figure,  Tag::Footer,  Tag::Form,
      Tag::H1,      Tag::H2,       Tag::H3,       Tag::H4,         Tag::H5,      Tag::H6,      Tag::Header,
      Tag::Hgroup,  Tag::Hr,       Tag::Html,     Tag::Legend,     Tag::Li,      Tag::Listing, Tag::Main,
      Tag::Menu,    Tag::Nav,      Tag::Ol,       Tag::Optgroup,   Tag::Option,  Tag::P,       Tag::Plaintext,
      Tag::Pre,     Tag::Rt,       Tag::Search,   Tag::Section,    Tag::Summary, Tag::Table,   Tag::Tbody,
      Tag::Td,      Tag::Tfoot,    Tag::Th,       Tag::Thead,      Tag::Tr,      Tag::Ul,      Tag::Xmp};
  return tags;
}

const TagSet& inline_block_tags() {
  static const TagSet tags{Tag::Button,   Tag::Input,  Tag::Marquee, Tag::Meter,
                           Tag::Progress, Tag::Select, Tag::Textarea};
  return tags;
}

const TagSet& preformatted_tags() {
  static const TagSet tags{Tag::Listing, Tag::Plaintext, Tag::Pre, Tag::Xmp};
  return tags;
}

}  // namespace

Display display_of(const Element& element) {
  if (const std::u16string own = inline_declaration(element, u"display"); !own.empty()) {
    if (own == u"none") return Display::None;
    if (own == u"inline") return Display::Inline;
    if (own == u"inline-block") return Display::InlineBlock;
    if (own == u"inline-table") return Display::InlineTable;
    return Display::Block;
  }
  const Tag tag = element.tag();
  if (block_tags().has(tag)) return Display::Block;
  if (hidden_tags().has(tag)) return Display::None;
  return inline_block_tags().has(tag) ? Display::InlineBlock : Display::Inline;
}

WhiteSpace white_space_of(const Element& element) {
  for (const Element* current = &element; current; current = current->parent_element()) {
    if (const std::u16string own = inline_declaration(*current, u"white-space"); !own.empty()) {
      if (own == u"normal") return WhiteSpace::Normal;
      if (own == u"nowrap") return WhiteSpace::NoWrap;
      if (own == u"pre") return WhiteSpace::Pre;
      if (own == u"pre-wrap" || own == u"break-spaces") return WhiteSpace::PreWrap;
      if (own == u"pre-line") return WhiteSpace::PreLine;
    }
    if (preformatted_tags().has(*current)) return WhiteSpace::Pre;
    if (current->is(Tag::Textarea)) return WhiteSpace::PreWrap;
    if (current->is(Tag::Table)) return WhiteSpace::Normal;
    if (current->is(Tag::Nobr)) return WhiteSpace::NoWrap;
  }
  return WhiteSpace::Normal;
}

bool is_rendered(const Node& node) {
  for (const Node* current = &node; current; current = current->parent()) {
    const auto* element = dom::as<Element>(current);
    if (element && display_of(*element) == Display::None) return false;
  }
  return true;
}

}  // namespace tvx::editing
