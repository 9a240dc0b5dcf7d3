#include "tvx/editing/clipboard/foreign_style.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/property_values.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/foreign_source.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;
using dom::style::Declaration;
using dom::style::Declarations;
using dom::style::Property;
using dom::style::StyleValue;
using dom::style::ValueKind;

namespace {

std::u16string plain_family(std::u16string_view families) {
  std::u16string plain;
  for (char16_t c : families)
    if (c != u'"' && c != u'\'' && !is_ascii_space(c)) plain += ascii_lower(c);
  return plain;
}

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
  if (name == u"letter-spacing" || name == u"word-spacing" || name == u"text-indent" ||
      name == u"white-space-collapse")
    return name == u"white-space-collapse" || is_nothing(declaration.value);
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

/// White space written as it stands needs its style only where lines or tabs are in it.
bool has_lines(const Element& element) {
  const std::u16string text = dom::text_content(element);
  return text.find_first_of(u"\n\t") != text.npos;
}

/// The colour that a desktop gives text is black on a page.
std::u16string with_plain_colour(std::u16string_view value) {
  constexpr std::u16string_view name = u"windowtext";
  std::u16string plain(value);
  const std::size_t at = ascii_lower(value).find(name);
  if (at != plain.npos) plain.replace(at, name.size(), u"black");
  return plain;
}

/// Blanks that stand as they are without a style for it.
void keep_blanks(Element& element) {
  for (Node* node = element.first_child(); node; node = dom::next_in_order(*node, &element)) {
    auto* text = dom::as<dom::Text>(node);
    if (!text || !contains(text->data(), u"  ")) continue;
    std::u16string data = text->data();
    for (std::size_t i = 1; i < data.size(); ++i)
      if (data[i] == u' ' && data[i - 1] == u' ') data[i - 1] = u'\u00A0';
    dom::replace_data(*text, 0, text->length(), data);
  }
}

class StyleDrop {
 public:
  StyleDrop(Element& element, const GivenLook& around) : element_(element), look_(around), given_(around) {
    apply_element();
  }

  GivenLook run() {
    const std::u16string style(element_.attribute_or_empty(dom::names::style));
    if (style.empty()) return look_;
    const Declarations declarations(style);
    std::u16string kept;
    for (const Declaration* declaration : declarations.list()) {
      if (says_nothing(*declaration)) continue;
      if (!kept.empty()) kept += u"; ";
      kept += declaration->name + u": " + declaration->value;
      if (declaration->important) kept += u" !important";
    }
    if (kept.empty())
      dom::remove_attribute(element_, dom::names::style);
    else if (kept != style)
      dom::set_attribute(element_, dom::names::style, kept);
    return look_;
  }

 private:
  // What the element's name and attributes do to the text's style.
  void apply_element() {
    static const TagSet bold{Tag::B,  Tag::Strong, Tag::Th, Tag::H1, Tag::H2,
                             Tag::H3, Tag::H4,     Tag::H5, Tag::H6};
    static const TagSet italic{Tag::I, Tag::Em, Tag::Cite, Tag::Var, Tag::Dfn, Tag::Address};
    static const TagSet mono{Tag::Pre, Tag::Code, Tag::Kbd, Tag::Samp, Tag::Tt};
    static const TagSet sized{Tag::Small, Tag::Big, Tag::Sub, Tag::Sup};
    if (bold.has(element_)) look_.bold = true;
    if (italic.has(element_)) look_.italic = true;
    if (mono.has(element_)) look_.family = u"monospace";
    if (mono.has(element_) || sized.has(element_)) look_.size = 0;
    if (element_.is(Tag::Th)) look_.align = dom::style::TextAlign::Center;
    static constexpr Tag headings[] = {Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6};
    static constexpr double sizes[] = {2, 1.5, 1.17, 1, .83, .67};
    for (std::size_t i = 0; i < std::size(headings); ++i)
      if (element_.is(headings[i])) look_.size *= sizes[i];
    if (element_.is(Tag::A) && element_.has_attribute(dom::names::href)) {
      look_.color = {0, 0, 238, 1};
      look_.lines |= dom::style::text_decoration::underline;
    }
    if (element_.is(Tag::Font)) apply_font();
    const std::u16string align = ascii_lower(element_.attribute_or_empty(dom::names::align));
    if (align == u"center") look_.align = dom::style::TextAlign::Center;
    if (align == u"right") look_.align = dom::style::TextAlign::Right;
    if (align == u"justify") look_.align = dom::style::TextAlign::Justify;
    if (align == u"left") look_.align = dom::style::TextAlign::Left;
    if (const auto color = dom::style::parse_legacy_color(element_.attribute_or_empty(dom::names::bgcolor)))
      look_.background = *color;
    given_ = look_;
  }

  void apply_font() {
    if (const auto color = dom::style::parse_legacy_color(element_.attribute_or_empty(dom::names::color)))
      look_.color = *color;
    if (element_.has_attribute(dom::names::face))
      look_.family = plain_family(element_.attribute_or_empty(dom::names::face));
    if (element_.has_attribute(dom::names::size)) look_.size = 0;
  }

  bool says_nothing(const Declaration& declaration) {
    const auto values =
        dom::style::property_values(Declarations(declaration.name + u": " + declaration.value));
    bool nothing = !values.empty();
    for (const dom::style::PropertyValue& value : values)
      if (!is_given(value.property, value.value)) nothing = false;
    // Of a shorthand only a part is known here.
    return nothing && declaration.name != u"font" &&
           (declaration.name != u"background" || !contains(declaration.value, u"url("));
  }

  bool is_given(Property property, const StyleValue& value) {
    if (value.kind == ValueKind::Inherit || value.kind == ValueKind::Unset) return true;
    const auto keyword = [&](auto known) { return value.number == double(known); };
    switch (property) {
      case Property::Color:
        if (value.kind != ValueKind::Color) return value.kind == ValueKind::CurrentColor;
        look_.color = value.color;
        return value.color == given_.color;
      case Property::BackgroundColor:
        if (value.kind == ValueKind::Initial) return true;
        if (value.kind != ValueKind::Color) return false;
        if (value.color.alpha == 0) return true;
        look_.background = value.color;
        return value.color == given_.background;
      case Property::FontWeight: {
        const bool bold = value.kind == ValueKind::Relative ? value.number > 0 : value.number >= 600;
        look_.bold = bold;
        return bold == given_.bold;
      }
      case Property::FontStyle:
        if (value.kind != ValueKind::Keyword) return !given_.italic;
        look_.italic = !keyword(dom::style::FontStyle::Normal);
        return look_.italic == given_.italic;
      case Property::FontSize: return is_given_size(value);
      case Property::FontFamily:
        look_.family = plain_family(value.text);
        return look_.family == given_.family;
      case Property::TextAlign: return is_given_align(value);
      case Property::TextDecorationLine: return is_given_line(value);
      case Property::VerticalAlign:
        return value.kind == ValueKind::Keyword && keyword(dom::style::VerticalAlign::Baseline) &&
               !is_cell(element_) && !element_.is(Tag::Sub) && !element_.is(Tag::Sup);
      case Property::Display: return !keyword(dom::style::Display::None);
      case Property::WhiteSpace:
        if (element_.is(Tag::Pre) || keyword(dom::style::WhiteSpace::Normal) ||
            keyword(dom::style::WhiteSpace::NoWrap))
          return true;
        if (has_lines(element_)) return dom::enclosing(element_, Tag::Pre) != nullptr;
        keep_blanks(element_);
        return true;
      case Property::Direction: return keyword(dom::style::Direction::LeftToRight);
      case Property::TextTransform: return keyword(dom::style::TextTransform::None);
      case Property::Visibility: return keyword(dom::style::Visibility::Visible);
      case Property::Float: return keyword(dom::style::Float::None);
      default: return false;
    }
  }

  bool is_given_size(const StyleValue& value) {
    double size = 0;
    if (value.kind == ValueKind::Pixels || value.kind == ValueKind::Unitless) size = value.number;
    if (value.kind == ValueKind::Em) size = value.number * given_.size;
    if (value.kind == ValueKind::Percentage) size = value.number * given_.size / 100;
    look_.size = size;
    return size > 0 && std::abs(size - given_.size) < 0.05;
  }

  bool is_given_align(const StyleValue& value) {
    using dom::style::TextAlign;
    if (value.kind != ValueKind::Keyword) return false;
    const auto plain = [](TextAlign align) { return align == TextAlign::Left ? TextAlign::Start : align; };
    look_.align = plain(TextAlign(int(value.number)));
    return look_.align == plain(given_.align);
  }

  bool is_given_line(const StyleValue& value) {
    static const TagSet lined{Tag::A, Tag::U, Tag::Ins, Tag::S, Tag::Strike, Tag::Del};
    const auto lines = std::uint8_t(value.kind == ValueKind::Keyword ? value.number : 0);
    if (lines == 0) return !lined.has(element_);
    const bool given = (lines & ~given_.lines) == 0;
    look_.lines |= lines;
    return given;
  }

  Element& element_;
  GivenLook look_;   // inside the element
  GivenLook given_;  // the same without its style
};

}  // namespace

GivenLook look_at(const Element* place) {
  GivenLook look;
  if (!place || !place->document()) return look;
  auto& styles = dom::style::style_of(*place->document());
  const dom::style::ComputedValues values = styles.values(*place);
  look.color = values.color;
  look.bold = values.font_weight >= 600;
  look.italic = values.font_style != dom::style::FontStyle::Normal;
  look.size = values.font_size;
  look.family = plain_family(styles.font_family(values));
  look.align = values.text_align;
  for (const Element* around = place; around; around = around->parent_element()) {
    const dom::style::ComputedValues& of = styles.values(*around);
    look.lines |= of.text_decoration_line;
    if (of.background_color.alpha == 0) continue;
    look.background = of.background_color;
    break;
  }
  return look;
}

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
    style += declaration->name + u": " + with_plain_colour(declaration->value);
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

void drop_given_styles(Node& content, const GivenLook& look) {
  std::vector<GivenLook> looks{look};
  for (Node* node = content.first_child(); node;) {
    if (auto* element = dom::as<Element>(node)) {
      GivenLook inside = StyleDrop(*element, looks.back()).run();
      if (node->first_child()) {
        looks.push_back(std::move(inside));
        node = node->first_child();
        continue;
      }
    }
    while (!node->next_sibling() && node->parent() != &content) {
      node = node->parent();
      looks.pop_back();
    }
    node = node->next_sibling();
  }
}

}  // namespace tvx::editing
