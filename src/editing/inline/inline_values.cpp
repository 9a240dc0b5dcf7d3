#include "tvx/editing/inline/inline_values.h"

#include <algorithm>

#include "tvx/base/work_count.h"
#include "tvx/dom/style/presentational_hints.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/editing/facts/font_sizes.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Tag;
namespace names = dom::names;
namespace style = dom::style;

namespace {

const Element* element_at_or_above(const Node& node) {
  if (const auto* element = dom::as<Element>(&node)) return element;
  return node.parent_element();
}

bool is_hyperlink(const Node& node) {
  return node.is(Tag::A) && static_cast<const Element&>(node).has_attribute(names::href);
}

InlineValue link_of(const Element& element) {
  const Element* link = style::computed_values(element).link;
  return link ? InlineValue(link->attribute_or_empty(names::href)) : std::nullopt;
}

InlineValue script_of(const Element& element) {
  switch (style::computed_values(element).scripts) {
    case style::script::none: return std::nullopt;
    case style::script::lowered: return u"subscript";
    case style::script::raised: return u"superscript";
    default: return u"mixed";
  }
}

// Decorations are not inherited but drawn through everything below.
InlineValue decoration_of(const Element& element, std::uint8_t line, std::u16string_view name) {
  const bool drawn = style::computed_values(element).lines_drawn & line;
  return drawn ? InlineValue(name) : std::nullopt;
}

}  // namespace

std::u16string_view css_property_of(InlineCommand command) {
  switch (command) {
    case InlineCommand::BackColor: return u"background-color";
    case InlineCommand::Bold: return u"font-weight";
    case InlineCommand::FontName: return u"font-family";
    case InlineCommand::FontSize: return u"font-size";
    case InlineCommand::ForeColor: return u"color";
    case InlineCommand::Italic: return u"font-style";
    default: return {};
  }
}

InlineValue effective_command_value(const Node& node, InlineCommand command) {
  const Element* element = element_at_or_above(node);
  if (!element) return std::nullopt;
  switch (command) {
    case InlineCommand::None: return std::nullopt;
    case InlineCommand::CreateLink: return link_of(*element);
    case InlineCommand::BackColor: return style::to_text(style::computed_values(*element).shown_background);
    case InlineCommand::Subscript:
    case InlineCommand::Superscript: return script_of(*element);
    case InlineCommand::Strikethrough:
      return decoration_of(*element, style::text_decoration::line_through, u"line-through");
    case InlineCommand::Underline:
      return decoration_of(*element, style::text_decoration::underline, u"underline");
    case InlineCommand::Bold: return style::computed_value(*element, style::Property::FontWeight);
    case InlineCommand::FontName: return style::computed_value(*element, style::Property::FontFamily);
    case InlineCommand::FontSize: return style::computed_value(*element, style::Property::FontSize);
    case InlineCommand::ForeColor: return style::computed_value(*element, style::Property::Color);
    case InlineCommand::Italic: return style::computed_value(*element, style::Property::FontStyle);
  }
  return std::nullopt;
}

namespace {

std::optional<std::uint16_t> font_weight_of(std::u16string_view value) {
  if (value == u"bold") return 700;
  if (value == u"normal") return 400;
  if (value.size() != 3 || value.substr(1) != u"00" || !is_ascii_digit(value[0])) return std::nullopt;
  return std::uint16_t((value[0] - u'0') * 100);
}

std::optional<style::FontStyle> font_style_of(std::u16string_view value) {
  if (value == u"italic") return style::FontStyle::Italic;
  if (value == u"normal") return style::FontStyle::Normal;
  return std::nullopt;
}

}  // namespace

bool has_effective_value(const Node& node, InlineCommand command, const InlineValue& value) {
  const Element* element = element_at_or_above(node);
  if (element && value && command == InlineCommand::Bold) {
    if (const auto weight = font_weight_of(*value))
      return style::computed_values(*element).font_weight == *weight;
  }
  if (element && value && command == InlineCommand::Italic) {
    if (const auto slope = font_style_of(*value))
      return style::computed_values(*element).font_style == *slope;
  }
  return loosely_equivalent_values(command, effective_command_value(node, command), value);
}

namespace {

InlineValue specified_decoration(const Element& element, std::u16string_view line, bool by_name) {
  if (const auto decoration = own_style(element, u"text-decoration")) {
    return contains(*decoration, line) ? InlineValue(line) : std::nullopt;
  }
  return by_name ? InlineValue(line) : std::nullopt;
}

// What the attributes of a FONT element set. HTML standard, section 15.3.4.
InlineValue font_attribute(const Element& element, InlineCommand command) {
  const auto* value = element.attribute(command == InlineCommand::ForeColor  ? names::color
                                        : command == InlineCommand::FontName ? names::face
                                                                             : names::size);
  if (!value) return std::nullopt;
  if (command == InlineCommand::FontSize) {
    const auto size = style::parse_legacy_font_size(*value);
    return size ? InlineValue(font_size_keyword(*size)) : std::nullopt;
  }
  if (command == InlineCommand::ForeColor) {
    const auto colour = style::parse_legacy_color(*value);
    return colour ? InlineValue(style::to_text(*colour)) : std::nullopt;
  }
  return *value;
}

InlineValue specified_property(const Element& element, InlineCommand command) {
  if (element.attributes().empty() && element.tag() == Tag::Span) return std::nullopt;
  if (!element.attributes().empty()) {
    if (auto own = own_style(element, css_property_of(command))) return own;
  }
  const Tag tag = element.tag();
  if (tag == Tag::Font && (command == InlineCommand::ForeColor || command == InlineCommand::FontName ||
                           command == InlineCommand::FontSize)) {
    return font_attribute(element, command);
  }
  if (command == InlineCommand::Bold && (tag == Tag::B || tag == Tag::Strong)) return u"bold";
  if (command == InlineCommand::Italic && (tag == Tag::I || tag == Tag::Em)) return u"italic";
  return std::nullopt;
}

}  // namespace

InlineValue specified_command_value(const Element& element, InlineCommand command) {
  count_work();
  switch (command) {
    case InlineCommand::None: return std::nullopt;
    case InlineCommand::BackColor:
      if (display_of(element) != Display::Inline) return std::nullopt;
      return own_style(element, u"background-color");
    case InlineCommand::CreateLink:
      if (!is_hyperlink(element)) return std::nullopt;
      return std::u16string(element.attribute_or_empty(names::href));
    case InlineCommand::Subscript:
    case InlineCommand::Superscript:
      if (element.is(Tag::Sup)) return u"superscript";
      return element.is(Tag::Sub) ? InlineValue(u"subscript") : std::nullopt;
    case InlineCommand::Strikethrough:
      return specified_decoration(element, u"line-through", element.is(Tag::S) || element.is(Tag::Strike));
    case InlineCommand::Underline: return specified_decoration(element, u"underline", element.is(Tag::U));
    default: return specified_property(element, command);
  }
}

bool equivalent_values(InlineCommand command, const InlineValue& a, const InlineValue& b) {
  if (!a || !b) return !a && !b;
  if (*a == *b) return true;
  const auto are = [&](std::u16string_view x, std::u16string_view y) {
    return (*a == x && *b == y) || (*a == y && *b == x);
  };
  switch (command) {
    case InlineCommand::Bold: return are(u"bold", u"700") || are(u"normal", u"400");
    case InlineCommand::BackColor:
    case InlineCommand::ForeColor: return style::parse_color(*a) == style::parse_color(*b);
    default: return false;
  }
}

bool loosely_equivalent_values(InlineCommand command, const InlineValue& a, const InlineValue& b) {
  if (equivalent_values(command, a, b)) return true;
  if (command != InlineCommand::FontSize || !a || !b) return false;
  if (!font_size_of_keyword(*a) && !font_size_of_keyword(*b)) return false;
  const auto pixels = font_size_in_pixels(*a);
  return pixels && pixels == font_size_in_pixels(*b);
}

bool has_activated_values(InlineCommand command) {
  switch (command) {
    case InlineCommand::Bold:
    case InlineCommand::Italic:
    case InlineCommand::Strikethrough:
    case InlineCommand::Subscript:
    case InlineCommand::Superscript:
    case InlineCommand::Underline: return true;
    default: return false;
  }
}

bool is_activated_value(InlineCommand command, const InlineValue& value) {
  if (!value) return false;
  const auto is_one_of = [&](std::initializer_list<std::u16string_view> values) {
    return std::find(values.begin(), values.end(), *value) != values.end();
  };
  switch (command) {
    case InlineCommand::Bold: return is_one_of({u"bold", u"600", u"700", u"800", u"900"});
    case InlineCommand::Italic: return is_one_of({u"italic", u"oblique"});
    case InlineCommand::Strikethrough: return *value == u"line-through";
    case InlineCommand::Subscript: return *value == u"subscript";
    case InlineCommand::Superscript: return *value == u"superscript";
    case InlineCommand::Underline: return *value == u"underline";
    default: return false;
  }
}

}  // namespace tvx::editing
