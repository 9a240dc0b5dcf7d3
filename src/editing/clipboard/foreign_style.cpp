#include "tvx/editing/clipboard/foreign_style.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/declarations.h"
#include "tvx/editing/clipboard/foreign_source.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Tag;
using dom::style::Declaration;
using dom::style::Declarations;

namespace {

bool is_cell(const Element& element) { return element.is(Tag::Td) || element.is(Tag::Th); }

bool is_grid_part(const Element& element) {
  static const TagSet tags{Tag::Table, Tag::Tr, Tag::Td, Tag::Th, Tag::Col, Tag::Colgroup};
  return tags.has(element);
}

bool is_nothing(std::u16string_view value) {
  value = trimmed(value);
  return value == u"none" || value == u"normal" || value == u"auto" || value == u"initial" ||
         (!value.empty() && points_of(value) == 0 && (value.starts_with(u"0") || value.starts_with(u".0")));
}

/// Layout that a program writes by itself, and that its user doesn't mean.
bool is_layout(const Declaration& declaration, const Element& element) {
  const std::u16string& name = declaration.name;
  static constexpr std::u16string_view beginnings[] = {
      u"-",         u"mso-",       u"orphans",      u"widows",       u"caret-color",   u"font-variant",
      u"font-feat", u"font-kern",  u"font-optical", u"font-stretch", u"font-size-adj", u"font-variation",
      u"text-size", u"text-wrap",  u"box-sizing",   u"cursor",       u"user-select",   u"overflow",
      u"position",  u"clear",      u"z-index",      u"outline",      u"pointer-",      u"transition",
      u"animation", u"word-break", u"word-wrap",    u"tab-stops",    u"tab-interval",  u"line-",
      u"layout-",   u"punctuat",   u"text-auto",    u"text-justify", u"unicode-bidi",  u"min-",
      u"max-",      u"so-",        u"text-line",    u"table-layout", u"text-underline"};
  for (std::u16string_view beginning : beginnings)
    if (name.starts_with(beginning)) return true;
  if (name.starts_with(u"text-decoration-") && name != u"text-decoration-line") return true;
  if (name == u"white-space-collapse") return true;
  // By so little a program makes a line fill its width.
  if (name == u"letter-spacing" || name == u"word-spacing")
    return is_nothing(declaration.value) || std::abs(points_of(declaration.value)) <= 2;
  if (name == u"text-indent") return is_nothing(declaration.value);
  if (name == u"page" || name.starts_with(u"page-break-") || name.starts_with(u"break-"))
    return ascii_lower(declaration.value) != u"always";
  if (name.starts_with(u"padding")) return !is_cell(element);
  if (name.starts_with(u"margin")) {
    // An indent is what a user gave a paragraph; the space above and below is the program's own.
    if (name != u"margin-left" && name != u"margin-right") return true;
    return is_nothing(declaration.value) || element.is(Tag::Li) || element.is(Tag::Ul) || element.is(Tag::Ol);
  }
  if (name.starts_with(u"border") && !name.ends_with(u"collapse"))
    return is_nothing(declaration.value) || declaration.value.starts_with(u"0px");
  if (name == u"height" || name == u"width")
    return is_grid_part(element) && (name == u"height" || element.has_attribute(dom::names::width) ||
                                     points_of(declaration.value) == 0);
  return false;
}

/// The colour that a desktop gives text is black on a page.
std::u16string with_plain_colour(std::u16string_view value) {
  constexpr std::u16string_view name = u"windowtext";
  std::u16string plain(value);
  const std::size_t at = ascii_lower(value).find(name);
  if (at != plain.npos) plain.replace(at, name.size(), u"black");
  return plain;
}

/// As a person writes a value: "#eaecf0" for a colour that a browser has worked out, and names in the quotes
/// that an attribute may have in it.
std::u16string as_by_hand(std::u16string value) {
  if (!contains(value, u"'")) std::ranges::replace(value, u'"', u'\'');
  for (std::size_t at = value.find(u"rgb("); at != value.npos; at = value.find(u"rgb(", at + 1)) {
    const std::size_t end = value.find(u')', at);
    if (end == value.npos) break;
    const auto color = dom::style::parse_color(value.substr(at, end + 1 - at));
    if (color && color->alpha == 1) value.replace(at, end + 1 - at, dom::style::to_hex(*color));
  }
  return value;
}

}  // namespace

std::u16string foreign_style(const ForeignSource& source, const Element& element) {
  std::u16string all = source.class_style(element);
  const std::u16string_view own = element.attribute_or_empty(dom::names::style);
  if (!all.empty() && !own.empty()) all += u"; ";
  all += own;
  if (all.empty()) return all;
  std::vector<const Declaration*> kept;
  const Declarations declarations(all);
  for (const Declaration* declaration : declarations.list()) {
    if (is_layout(*declaration, element)) continue;
    if (declaration->name == u"color" && equals_ignoring_ascii_case(declaration->value, u"windowtext"))
      continue;
    // The last one of a name counts.
    std::erase_if(kept, [&](const Declaration* earlier) { return earlier->name == declaration->name; });
    kept.push_back(declaration);
  }
  std::u16string style;
  for (const Declaration* declaration : kept) {
    if (!style.empty()) style += u"; ";
    style += declaration->name + u": " + as_by_hand(with_plain_colour(declaration->value));
    if (declaration->important) style += u" !important";
  }
  return style;
}

bool is_residue(const ForeignSource& source, const Element& element, std::u16string_view name) {
  static constexpr std::u16string_view beginnings[] = {u"data-", u"aria-", u"para", u"xml", u"sd"};
  for (std::u16string_view beginning : beginnings)
    if (name.starts_with(beginning)) return true;
  if (name == u"class" || name == u"role" || name == u"clear") return true;
  if (name == u"lang") return source.is_office() || source.is_web_word_processor();
  if (name == u"dir") return equals_ignoring_ascii_case(element.attribute_or_empty(dom::names::dir), u"ltr");
  if (name == u"height") return is_grid_part(element);
  return name == u"id" && element.attribute_or_empty(dom::names::id).starts_with(u"docs-internal-guid");
}

}  // namespace tvx::editing
