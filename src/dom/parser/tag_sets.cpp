#include "tvx/dom/parser/tag_sets.h"

#include <array>
#include <initializer_list>

namespace tvx::dom::parser {
namespace {

using TagTable = std::array<BoundarySet, static_cast<std::size_t>(Tag::Count)>;

constexpr void add(TagTable& table, BoundarySet set, std::initializer_list<Tag> tags) {
  for (const Tag tag : tags) table[static_cast<std::size_t>(tag)] |= set;
}

constexpr BoundarySet all_scopes =
    bit(Boundary::Scope) | bit(Boundary::ListItemScope) | bit(Boundary::ButtonScope);
constexpr BoundarySet special = bit(Boundary::Special) | bit(Boundary::ListItemStop);

constexpr TagTable html_table() {
  using enum Tag;
  TagTable table{};
  for (BoundarySet& set : table) set = bit(Boundary::Html);
  add(table, all_scopes, {Applet, Caption, Html, Table, Td, Th, Marquee, Object, Select, Template});
  add(table, bit(Boundary::ListItemScope), {Ol, Ul});
  add(table, bit(Boundary::ButtonScope), {Button});
  add(table, bit(Boundary::TableScope), {Html, Table, Template});
  add(table, bit(Boundary::Special), {Address, Div, P});
  add(table, special,
      {Applet,   Area,     Article,    Aside,    Base,     Basefont, Bgsound, Blockquote, Body, Br,
       Button,   Caption,  Center,     Col,      Colgroup, Dd,       Details, Dir,        Dl,   Dt,
       Embed,    Fieldset, Figcaption, Figure,   Footer,   Form,     Frame,   Frameset,   H1,   H2,
       H3,       H4,       H5,         H6,       Head,     Header,   Hgroup,  Hr,         Html, Iframe,
       Img,      Input,    Keygen,     Li,       Link,     Listing,  Main,    Marquee,    Menu, Meta,
       Nav,      Noembed,  Noframes,   Noscript, Object,   Ol,       Param,   Plaintext,  Pre,  Script,
       Search,   Section,  Select,     Source,   Style,    Summary,  Table,   Tbody,      Td,   Template,
       Textarea, Tfoot,    Th,         Thead,    Title,    Tr,       Track,   Ul,         Wbr,  Xmp});
  add(table, bit(Boundary::ModeDecider),
      {Td, Th, Tr, Tbody, Thead, Tfoot, Caption, Colgroup, Table, Template, Head, Body, Frameset, Html});
  return table;
}

constexpr TagTable svg_table() {
  TagTable table{};
  add(table, all_scopes | special, {Tag::ForeignObject, Tag::Desc, Tag::Title});
  return table;
}

constexpr TagTable math_table() {
  using enum Tag;
  TagTable table{};
  add(table, all_scopes | special, {Mi, Mo, Mn, Ms, Mtext, AnnotationXml});
  return table;
}

constexpr TagTable tables[] = {html_table(), svg_table(), math_table()};

}  // namespace

BoundarySet boundaries_of(const Element& element) {
  return tables[static_cast<std::size_t>(element.name_space())]
               [static_cast<std::size_t>(element.name().tag())];
}

bool is_heading(Tag tag) { return tag >= Tag::H1 && tag <= Tag::H6; }

bool has_implied_end(Tag tag) {
  switch (tag) {
    case Tag::Dd:
    case Tag::Dt:
    case Tag::Li:
    case Tag::Optgroup:
    case Tag::Option:
    case Tag::P:
    case Tag::Rb:
    case Tag::Rp:
    case Tag::Rt:
    case Tag::Rtc: return true;
    default: return false;
  }
}

bool has_thoroughly_implied_end(Tag tag) {
  switch (tag) {
    case Tag::Caption:
    case Tag::Colgroup:
    case Tag::Tbody:
    case Tag::Td:
    case Tag::Tfoot:
    case Tag::Th:
    case Tag::Thead:
    case Tag::Tr: return true;
    default: return has_implied_end(tag);
  }
}

bool is_table_structure(Tag tag) {
  switch (tag) {
    case Tag::Table:
    case Tag::Tbody:
    case Tag::Tfoot:
    case Tag::Thead:
    case Tag::Tr: return true;
    default: return false;
  }
}

}  // namespace tvx::dom::parser
