#include "tvx/dom/style/presentational_hints.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

const Name text_attribute(u"text"), link_attribute(u"link"), nowrap_attribute(u"nowrap"),
    wrap_attribute(u"wrap");

class Hints {
 public:
  Hints(const Element& element, std::vector<PropertyValue>& values) : element_(element), values_(values) {}

  void collect() {
    const Tag tag = element_.tag();
    switch (tag) {
      case Tag::Font: font(); break;
      case Tag::Body:
        color(Property::Color, text_attribute);
        color(Property::BackgroundColor, names::bgcolor);
        break;
      case Tag::Marquee: color(Property::BackgroundColor, names::bgcolor); break;
      case Tag::Table:
        color(Property::BackgroundColor, names::bgcolor);
        side(Property::Float);
        break;
      case Tag::Caption:
      case Tag::Thead:
      case Tag::Tbody:
      case Tag::Tfoot:
      case Tag::Tr:
      case Tag::Td:
      case Tag::Th:
      case Tag::Col:
      case Tag::Colgroup: table_part(tag); break;
      case Tag::P:
      case Tag::Div:
      case Tag::H1:
      case Tag::H2:
      case Tag::H3:
      case Tag::H4:
      case Tag::H5:
      case Tag::H6:
      case Tag::Legend: text_align(); break;
      case Tag::Img:
      case Tag::Input:
      case Tag::Object:
      case Tag::Embed:
      case Tag::Applet:
      case Tag::Iframe: image_align(); break;
      case Tag::Ol:
      case Tag::Ul:
      case Tag::Li: list_type(); break;
      case Tag::Pre:
        if (element_.has_attribute(wrap_attribute)) keyword(Property::WhiteSpace, u"pre-wrap");
        break;
      case Tag::Textarea:
        if (equals(wrap_attribute, u"off")) keyword(Property::WhiteSpace, u"pre");
        break;
      case Tag::A:
      case Tag::Area: link_color(); break;
      default: break;
    }
    direction();
  }

 private:
  bool equals(Name attribute, std::u16string_view value) const {
    return equals_ignoring_ascii_case(element_.attribute_or_empty(attribute), value);
  }

  void add(Property property, StyleValue value) { values_.push_back({property, false, std::move(value)}); }

  void keyword(Property property, std::u16string_view text) {
    if (auto value = parse_value(property, text)) add(property, std::move(*value));
  }

  void color(Property property, Name attribute) {
    if (const std::u16string* text = element_.attribute(attribute)) legacy_color(property, *text);
  }

  void legacy_color(Property property, std::u16string_view text) {
    if (const auto color = parse_legacy_color(text)) add(property, {ValueKind::Color, 0, *color, {}});
  }

  void font() {
    color(Property::Color, names::color);
    if (const std::u16string* face = element_.attribute(names::face)) keyword(Property::FontFamily, *face);
    const auto size = parse_legacy_font_size(element_.attribute_or_empty(names::size));
    if (size) add(Property::FontSize, {ValueKind::Pixels, keyword_font_size(*size + 1), {}, {}});
  }

  void text_align() {
    const std::u16string align = ascii_lower(element_.attribute_or_empty(names::align));
    if (align == u"left" || align == u"right" || align == u"center" || align == u"justify") {
      keyword(Property::TextAlign, align);
    } else if (align == u"middle") {
      keyword(Property::TextAlign, u"center");
    }
  }

  void side(Property property) {
    const std::u16string align = ascii_lower(element_.attribute_or_empty(names::align));
    if (align == u"left" || align == u"right") keyword(property, align);
  }

  void table_part(Tag tag) {
    color(Property::BackgroundColor, names::bgcolor);
    text_align();
    const std::u16string valign = ascii_lower(element_.attribute_or_empty(names::valign));
    if (valign == u"top" || valign == u"middle" || valign == u"bottom" || valign == u"baseline") {
      keyword(Property::VerticalAlign, valign);
    }
    if ((tag == Tag::Td || tag == Tag::Th) && element_.has_attribute(nowrap_attribute)) {
      keyword(Property::WhiteSpace, u"nowrap");
    }
  }

  void image_align() {
    static constexpr std::pair<std::u16string_view, std::u16string_view> places[] = {
        {u"top", u"top"},          {u"texttop", u"text-top"},  {u"middle", u"middle"},
        {u"absmiddle", u"middle"}, {u"abscenter", u"middle"},  {u"center", u"middle"},
        {u"bottom", u"bottom"},    {u"baseline", u"baseline"}, {u"absbottom", u"bottom"}};
    if (element_.is(Tag::Input) && !equals(names::type, u"image")) return;
    side(Property::Float);
    const std::u16string align = ascii_lower(element_.attribute_or_empty(names::align));
    for (const auto& [name, place] : places) {
      if (align == name) keyword(Property::VerticalAlign, place);
    }
  }

  void list_type() {
    const std::u16string_view type = element_.attribute_or_empty(names::type);
    static constexpr std::pair<std::u16string_view, std::u16string_view> counters[] = {
        {u"1", u"decimal"},
        {u"a", u"lower-alpha"},
        {u"A", u"upper-alpha"},
        {u"i", u"lower-roman"},
        {u"I", u"upper-roman"}};
    for (const auto& [name, counter] : counters) {
      if (type == name) keyword(Property::ListStyleType, counter);
    }
    const std::u16string word = ascii_lower(type);
    if (word == u"disc" || word == u"circle" || word == u"square" || word == u"none") {
      keyword(Property::ListStyleType, word);
    }
  }

  /// BODY's link attribute colours the links.
  void link_color() {
    if (!element_.has_attribute(names::href)) return;
    const Document* document = element_.document();
    const Element* body = document ? document->body() : nullptr;
    if (const std::u16string* text = body ? body->attribute(link_attribute) : nullptr) {
      legacy_color(Property::Color, *text);
    }
  }

  void direction() {
    const std::u16string* dir = element_.attribute(names::dir);
    const bool automatic = dir ? equals_ignoring_ascii_case(*dir, u"auto") : element_.is(Tag::Bdi);
    if (!automatic) return;
    keyword(Property::Direction, direction_of_text(element_) == Direction::RightToLeft ? u"rtl" : u"ltr");
  }

  const Element& element_;
  std::vector<PropertyValue>& values_;
};

/// The first strong direction in a text; none if it has no such character.
std::optional<Direction> first_strong(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    UChar32 c;
    U16_NEXT(text.data(), i, text.size(), c);
    const UCharDirection direction = u_charDirection(c);
    if (direction == U_LEFT_TO_RIGHT) return Direction::LeftToRight;
    if (direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC) return Direction::RightToLeft;
  }
  return std::nullopt;
}

}  // namespace

void append_presentational_hints(const Element& element, std::vector<PropertyValue>& values) {
  if (element.is_html() && (!element.attributes().empty() || element.is(Tag::Bdi)))
    Hints(element, values).collect();
}

bool is_presentational(Name attribute) {
  static const Name list[] = {names::style,    names::class_,  names::id,        names::align,
                              names::valign,   names::bgcolor, names::color,     names::face,
                              names::size,     names::dir,     names::href,      names::type,
                              text_attribute,  link_attribute, nowrap_attribute, wrap_attribute,
                              Name(u"hidden"), names::title,   Name(u"open"),    Name(u"controls")};
  return std::find(std::begin(list), std::end(list), attribute) != std::end(list);
}

std::optional<int> parse_legacy_font_size(std::u16string_view text) {
  text = trimmed(text);
  const bool plus = text.starts_with(u"+"), minus = text.starts_with(u"-");
  if (plus || minus) text.remove_prefix(1);
  if (text.empty() || !is_ascii_digit(text[0])) return std::nullopt;
  int size = 0;
  for (std::size_t i = 0; i < text.size() && is_ascii_digit(text[i]); ++i) {
    size = std::min(size * 10 + (text[i] - u'0'), 1000);
  }
  if (plus) size = 3 + size;
  if (minus) size = 3 - size;
  return std::clamp(size, 1, 7);
}

Direction direction_of_text(const Element& element) {
  for (const Node* node = element.first_child(); node;) {
    if (const Text* text = as<Text>(node)) {
      if (const auto direction = first_strong(text->data())) return *direction;
    }
    const Element* inner = as<Element>(node);
    const bool apart = inner && (inner->is(Tag::Bdi) || inner->is(Tag::Script) || inner->is(Tag::Style) ||
                                 inner->is(Tag::Textarea) || inner->has_attribute(names::dir));
    node = apart ? next_skipping_children(*node, &element) : next_in_order(*node, &element);
  }
  return Direction::LeftToRight;
}

}  // namespace tvx::dom::style
