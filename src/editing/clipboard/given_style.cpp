#include "tvx/editing/clipboard/given_style.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/property_values.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/foreign_source.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Tag;
using dom::style::Color;
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

/// In pixels, of the sizes 1 to 7 of FONT; 0 for what is none.
double size_of_font(std::u16string_view size) {
  static constexpr double sizes[] = {10, 13, 16, 18, 24, 32, 48};
  size = trimmed(size);
  return size.size() == 1 && size[0] >= u'1' && size[0] <= u'7' ? sizes[size[0] - u'1'] : 0;
}

// --- colours ---

int brightest(const Color& color) { return std::max({color.red, color.green, color.blue}); }
int darkest(const Color& color) { return std::min({color.red, color.green, color.blue}); }
bool is_grey(const Color& color) { return color.alpha == 1 && brightest(color) - darkest(color) <= 16; }

/// Greys that nobody tells apart by their meaning: the black of one page and that of another.
bool are_as_good(const Color& a, const Color& b, int difference) {
  if (a == b) return true;
  const bool is_end = brightest(b) < 40 || darkest(b) > 215;
  return is_end && is_grey(a) && is_grey(b) && std::abs(brightest(a) - brightest(b)) <= difference;
}
bool are_as_good_for_text(const Color& a, const Color& b) { return are_as_good(a, b, 80); }
bool are_as_good_behind_text(const Color& a, const Color& b) { return are_as_good(a, b, 10); }

// --- what style sheets do to elements ---

bool is_code(const Element& element) {
  static const TagSet tags{Tag::Pre, Tag::Code, Tag::Kbd, Tag::Samp, Tag::Tt};
  return tags.has(element);
}

bool is_link(const Element& element) { return element.is(Tag::A) && element.has_attribute(dom::names::href); }

bool is_grey_value(std::u16string_view value) {
  const auto color = dom::style::parse_color(value);
  return color && (is_grey(*color) || color->alpha == 0);
}

bool is_of_sheet(const Declaration& declaration, const Element& element) {
  const std::u16string& name = declaration.name;
  const bool is_colour = name == u"color" || name == u"background" || name == u"background-color";
  if (is_link(element)) return is_colour || name.starts_with(u"text-decoration");
  const bool heads = is_heading(element);
  if (!heads && !is_code(element) && !element.is(Tag::Blockquote)) return false;
  if (is_colour) return is_grey_value(declaration.value);
  if (name == u"font-weight") return heads && (declaration.value == u"normal" || declaration.value == u"400");
  return name == u"font-family" || name == u"font-size" || name.starts_with(u"border") ||
         name.starts_with(u"padding");
}

// --- white space ---

/// White space written as it stands needs its style only where lines or tabs are in it.
bool has_lines(const Element& element) {
  const std::u16string text = dom::text_content(element);
  return text.find_first_of(u"\n\t") != text.npos;
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

/// One element and what it does to the style of its text.
class ElementStyle {
 public:
  ElementStyle(Element& element, const GivenStyle& around)
      : element_(element), around_(around), inside_(around), given_(around) {
    apply_element();
  }

  /// The style of its text.
  GivenStyle read() {
    const Declarations declarations(element_.attribute_or_empty(dom::names::style));
    for (const Declaration* declaration : declarations.list()) says_nothing(*declaration);
    return inside_;
  }

  /// The same, without what says nothing.
  GivenStyle drop() {
    const std::u16string style(element_.attribute_or_empty(dom::names::style));
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
    if (has_plain_blanks_) keep_blanks(element_);
    if (element_.is(Tag::Font)) drop_font();
    return inside_;
  }

 private:
  // What the element's name and attributes do to the text's style.
  void apply_element() {
    static const TagSet bold{Tag::B,  Tag::Strong, Tag::Th, Tag::H1, Tag::H2,
                             Tag::H3, Tag::H4,     Tag::H5, Tag::H6};
    static const TagSet italic{Tag::I, Tag::Em, Tag::Cite, Tag::Var, Tag::Dfn, Tag::Address};
    static const TagSet sized{Tag::Small, Tag::Big, Tag::Sub, Tag::Sup};
    if (bold.has(element_)) inside_.bold = true;
    if (italic.has(element_)) inside_.italic = true;
    if (is_code(element_)) inside_.family = u"monospace";
    if (is_code(element_) || sized.has(element_)) inside_.size = 0;
    if (element_.is(Tag::Th)) inside_.align = dom::style::TextAlign::Center;
    static constexpr Tag headings[] = {Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6};
    static constexpr double sizes[] = {2, 1.5, 1.17, 1, .83, .67};
    for (std::size_t i = 0; i < std::size(headings); ++i)
      if (element_.is(headings[i])) inside_.size *= sizes[i];
    if (is_link(element_)) {
      inside_.color = {0, 0, 238, 1};
      inside_.lines |= dom::style::text_decoration::underline;
    }
    if (element_.is(Tag::Font)) apply_font();
    const std::u16string align = ascii_lower(element_.attribute_or_empty(dom::names::align));
    if (align == u"center") inside_.align = dom::style::TextAlign::Center;
    if (align == u"right") inside_.align = dom::style::TextAlign::Right;
    if (align == u"justify") inside_.align = dom::style::TextAlign::Justify;
    if (align == u"left") inside_.align = dom::style::TextAlign::Left;
    if (const auto color = dom::style::parse_legacy_color(element_.attribute_or_empty(dom::names::bgcolor)))
      inside_.background = *color;
    given_ = inside_;
  }

  void apply_font() {
    if (const auto color = dom::style::parse_legacy_color(element_.attribute_or_empty(dom::names::color)))
      inside_.color = *color;
    if (element_.has_attribute(dom::names::face))
      inside_.family = plain_family(element_.attribute_or_empty(dom::names::face));
    if (element_.has_attribute(dom::names::size))
      inside_.size = size_of_font(element_.attribute_or_empty(dom::names::size));
  }

  // Its attributes, where they say what is around it anyway.
  void drop_font() {
    const auto color = dom::style::parse_legacy_color(element_.attribute_or_empty(dom::names::color));
    if (color && are_as_good_for_text(*color, around_.color)) {
      dom::remove_attribute(element_, dom::names::color);
      if (inside_.color == *color) inside_.color = around_.color;
    }
    if (plain_family(element_.attribute_or_empty(dom::names::face)) == around_.family)
      dom::remove_attribute(element_, dom::names::face);
    const double size = size_of_font(element_.attribute_or_empty(dom::names::size));
    if (size > 0 && size == around_.size) dom::remove_attribute(element_, dom::names::size);
  }

  bool says_nothing(const Declaration& declaration) {
    if (is_of_sheet(declaration, element_)) return true;
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
        return is_given_colour(value.color, given_.color, inside_.color, are_as_good_for_text);
      case Property::BackgroundColor:
        if (value.kind == ValueKind::Initial) return true;
        if (value.kind != ValueKind::Color) return false;
        if (value.color.alpha == 0) return true;
        return is_given_colour(value.color, given_.background, inside_.background, are_as_good_behind_text);
      case Property::FontWeight: {
        const bool bold = value.kind == ValueKind::Relative ? value.number > 0 : value.number >= 600;
        inside_.bold = bold;
        return bold == given_.bold;
      }
      case Property::FontStyle:
        if (value.kind != ValueKind::Keyword) return !given_.italic;
        inside_.italic = !keyword(dom::style::FontStyle::Normal);
        return inside_.italic == given_.italic;
      case Property::FontSize: return is_given_size(value);
      case Property::FontFamily:
        inside_.family = plain_family(value.text);
        return inside_.family == given_.family;
      case Property::TextAlign: return is_given_align(value);
      case Property::TextDecorationLine: return is_given_line(value);
      case Property::VerticalAlign:
        return value.kind == ValueKind::Keyword && keyword(dom::style::VerticalAlign::Baseline) &&
               !element_.is(Tag::Td) && !element_.is(Tag::Th) && !element_.is(Tag::Sub) &&
               !element_.is(Tag::Sup);
      case Property::Display: return !keyword(dom::style::Display::None);
      case Property::WhiteSpace:
        if (element_.is(Tag::Pre) || keyword(dom::style::WhiteSpace::Normal) ||
            keyword(dom::style::WhiteSpace::NoWrap))
          return true;
        if (has_lines(element_)) return dom::enclosing(element_, Tag::Pre) != nullptr;
        has_plain_blanks_ = true;
        return true;
      case Property::Direction: return keyword(dom::style::Direction::LeftToRight);
      case Property::TextTransform: return keyword(dom::style::TextTransform::None);
      case Property::Visibility: return keyword(dom::style::Visibility::Visible);
      case Property::Float: return keyword(dom::style::Float::None);
      default: return false;
    }
  }

  static bool is_given_colour(const Color& said, const Color& given, Color& inside,
                              bool (*are_as_good)(const Color&, const Color&)) {
    const bool is_same = are_as_good(said, given);
    inside = is_same ? given : said;
    return is_same;
  }

  bool is_given_size(const StyleValue& value) {
    double size = 0;
    if (value.kind == ValueKind::Pixels || value.kind == ValueKind::Unitless) size = value.number;
    if (value.kind == ValueKind::Em) size = value.number * given_.size;
    if (value.kind == ValueKind::Percentage) size = value.number * given_.size / 100;
    inside_.size = size;
    return size > 0 && std::abs(size - given_.size) < 0.05;
  }

  bool is_given_align(const StyleValue& value) {
    using dom::style::TextAlign;
    if (value.kind != ValueKind::Keyword) return false;
    const auto plain = [](TextAlign align) { return align == TextAlign::Left ? TextAlign::Start : align; };
    inside_.align = plain(TextAlign(int(value.number)));
    return inside_.align == plain(given_.align);
  }

  bool is_given_line(const StyleValue& value) {
    static const TagSet lined{Tag::A, Tag::U, Tag::Ins, Tag::S, Tag::Strike, Tag::Del};
    const auto lines = std::uint8_t(value.kind == ValueKind::Keyword ? value.number : 0);
    if (lines == 0) return !lined.has(element_);
    const bool given = (lines & ~given_.lines) == 0;
    inside_.lines |= lines;
    return given;
  }

  Element& element_;
  const GivenStyle& around_;
  GivenStyle inside_;
  GivenStyle given_;  // inside, without its style attribute
  bool has_plain_blanks_ = false;
};

/// Goes over the elements of content and tells the style of each text. `enter` gives the style inside an
/// element from that around it.
template <class Enter, class Take>
void walk_styles(Node& content, const GivenStyle& given, Enter&& enter, Take&& take) {
  std::vector<GivenStyle> around{given};
  for (Node* node = content.first_child(); node;) {
    if (const auto* text = dom::as<dom::Text>(node)) take(*text, around.back());
    if (auto* element = dom::as<Element>(node)) {
      GivenStyle inside = enter(*element, around.back());
      if (node->first_child()) {
        around.push_back(std::move(inside));
        node = node->first_child();
        continue;
      }
    }
    while (!node->next_sibling() && node->parent() != &content) {
      node = node->parent();
      around.pop_back();
    }
    node = node->next_sibling();
  }
}

/// What text has and how much of it.
template <class Value>
class Shares {
 public:
  void add(const Value& value, std::size_t amount) {
    amounts_[value] += amount;
    all_ += amount;
  }
  /// What more than half of it has; else the other value.
  Value most_or(Value other) const {
    for (const auto& [value, amount] : amounts_)
      if (amount * 2 > all_) return value;
    return other;
  }

 private:
  std::map<Value, std::size_t> amounts_;
  std::size_t all_ = 0;
};

bool has_style_of_its_own(const dom::Text& text) {
  for (const Element* element = text.parent_element(); element; element = element->parent_element())
    if (is_heading(*element) || is_code(*element)) return true;
  return false;
}

}  // namespace

GivenStyle style_given_at(const Element* place) {
  GivenStyle given;
  if (!place || !place->document()) return given;
  auto& styles = dom::style::style_of(*place->document());
  const dom::style::ComputedValues values = styles.values(*place);
  given.color = values.color;
  given.bold = values.font_weight >= 600;
  given.italic = values.font_style != dom::style::FontStyle::Normal;
  given.size = values.font_size;
  given.family = plain_family(styles.font_family(values));
  given.align = values.text_align;
  for (const Element* around = place; around; around = around->parent_element()) {
    const dom::style::ComputedValues& of = styles.values(*around);
    given.lines |= of.text_decoration_line;
    if (of.background_color.alpha == 0) continue;
    given.background = of.background_color;
    break;
  }
  return given;
}

GivenStyle with_font_of_source(const ForeignSource& source, Node& content, const GivenStyle& given) {
  GivenStyle base = given;
  if (!source.text_family().empty()) base.family = plain_family(source.text_family());
  if (source.text_size() > 0) base.size = source.text_size() / 0.75;
  Shares<std::u16string> families;
  Shares<double> sizes;
  walk_styles(
      content, base,
      [](Element& element, const GivenStyle& around) { return ElementStyle(element, around).read(); },
      [&](const dom::Text& text, const GivenStyle& style) {
        const std::size_t amount = trimmed(text.data()).size();
        if (amount == 0 || has_style_of_its_own(text)) return;
        families.add(style.family, amount);
        sizes.add(style.size, amount);
      });
  base.family = families.most_or(base.family);
  base.size = sizes.most_or(base.size);
  return base;
}

void drop_given_styles(Node& content, const GivenStyle& given) {
  const auto drop = [](Element& element, const GivenStyle& around) {
    return ElementStyle(element, around).drop();
  };
  walk_styles(content, given, drop, [](const dom::Text&, const GivenStyle&) {});
}

}  // namespace tvx::editing
