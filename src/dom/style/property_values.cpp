#include "tvx/dom/style/property_values.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>

#include "tvx/base/strings.h"
#include "tvx/dom/style/shorthands.h"

namespace tvx::dom::style {
namespace {

struct Keyword {
  std::u16string_view text;
  std::uint8_t value;
};

template <class Enumeration>
constexpr Keyword keyword(std::u16string_view text, Enumeration value) {
  return {text, static_cast<std::uint8_t>(value)};
}

// The first text of a value is the one that is printed.
constexpr Keyword display_keywords[] = {keyword(u"inline", Display::Inline),
                                        keyword(u"block", Display::Block),
                                        keyword(u"none", Display::None),
                                        keyword(u"inline-block", Display::InlineBlock),
                                        keyword(u"list-item", Display::ListItem),
                                        keyword(u"table", Display::Table),
                                        keyword(u"inline-table", Display::InlineTable),
                                        keyword(u"table-row-group", Display::TableRowGroup),
                                        keyword(u"table-header-group", Display::TableHeaderGroup),
                                        keyword(u"table-footer-group", Display::TableFooterGroup),
                                        keyword(u"table-row", Display::TableRow),
                                        keyword(u"table-cell", Display::TableCell),
                                        keyword(u"table-column", Display::TableColumn),
                                        keyword(u"table-column-group", Display::TableColumnGroup),
                                        keyword(u"table-caption", Display::TableCaption),
                                        keyword(u"flex", Display::Flex),
                                        keyword(u"inline-flex", Display::InlineFlex),
                                        keyword(u"grid", Display::Grid),
                                        keyword(u"inline-grid", Display::InlineGrid),
                                        keyword(u"flow-root", Display::FlowRoot),
                                        keyword(u"contents", Display::Contents),
                                        keyword(u"ruby", Display::Ruby),
                                        keyword(u"ruby-text", Display::RubyText),
                                        keyword(u"-webkit-box", Display::Flex),
                                        keyword(u"-webkit-flex", Display::Flex)};
constexpr Keyword visibility_keywords[] = {keyword(u"visible", Visibility::Visible),
                                           keyword(u"hidden", Visibility::Hidden),
                                           keyword(u"collapse", Visibility::Collapse)};
constexpr Keyword white_space_keywords[] = {
    keyword(u"normal", WhiteSpace::Normal),    keyword(u"pre", WhiteSpace::Pre),
    keyword(u"nowrap", WhiteSpace::NoWrap),    keyword(u"pre-wrap", WhiteSpace::PreWrap),
    keyword(u"pre-line", WhiteSpace::PreLine), keyword(u"break-spaces", WhiteSpace::BreakSpaces)};
constexpr Keyword direction_keywords[] = {keyword(u"ltr", Direction::LeftToRight),
                                          keyword(u"rtl", Direction::RightToLeft)};
constexpr Keyword text_align_keywords[] = {keyword(u"start", TextAlign::Start),
                                           keyword(u"end", TextAlign::End),
                                           keyword(u"left", TextAlign::Left),
                                           keyword(u"right", TextAlign::Right),
                                           keyword(u"center", TextAlign::Center),
                                           keyword(u"justify", TextAlign::Justify),
                                           keyword(u"-webkit-left", TextAlign::Left),
                                           keyword(u"-webkit-right", TextAlign::Right),
                                           keyword(u"-webkit-center", TextAlign::Center),
                                           keyword(u"-moz-center", TextAlign::Center)};
constexpr Keyword text_transform_keywords[] = {
    keyword(u"none", TextTransform::None), keyword(u"uppercase", TextTransform::Uppercase),
    keyword(u"lowercase", TextTransform::Lowercase), keyword(u"capitalize", TextTransform::Capitalize)};
constexpr Keyword font_style_keywords[] = {keyword(u"normal", FontStyle::Normal),
                                           keyword(u"italic", FontStyle::Italic),
                                           keyword(u"oblique", FontStyle::Oblique)};
constexpr Keyword vertical_align_keywords[] = {
    keyword(u"baseline", VerticalAlign::Baseline), keyword(u"sub", VerticalAlign::Sub),
    keyword(u"super", VerticalAlign::Super),       keyword(u"top", VerticalAlign::Top),
    keyword(u"text-top", VerticalAlign::TextTop),  keyword(u"middle", VerticalAlign::Middle),
    keyword(u"bottom", VerticalAlign::Bottom),     keyword(u"text-bottom", VerticalAlign::TextBottom)};
constexpr Keyword list_style_type_keywords[] = {
    keyword(u"disc", ListStyleType::Disc),
    keyword(u"circle", ListStyleType::Circle),
    keyword(u"square", ListStyleType::Square),
    keyword(u"decimal", ListStyleType::Decimal),
    keyword(u"lower-alpha", ListStyleType::LowerAlpha),
    keyword(u"upper-alpha", ListStyleType::UpperAlpha),
    keyword(u"lower-roman", ListStyleType::LowerRoman),
    keyword(u"upper-roman", ListStyleType::UpperRoman),
    keyword(u"lower-latin", ListStyleType::LowerLatin),
    keyword(u"upper-latin", ListStyleType::UpperLatin),
    keyword(u"lower-greek", ListStyleType::LowerGreek),
    keyword(u"decimal-leading-zero", ListStyleType::DecimalLeadingZero),
    keyword(u"armenian", ListStyleType::Armenian),
    keyword(u"georgian", ListStyleType::Georgian),
    keyword(u"none", ListStyleType::None)};
constexpr Keyword float_keywords[] = {keyword(u"none", Float::None), keyword(u"left", Float::Left),
                                      keyword(u"right", Float::Right)};
constexpr Keyword position_keywords[] = {
    keyword(u"static", Position::Static), keyword(u"relative", Position::Relative),
    keyword(u"absolute", Position::Absolute), keyword(u"fixed", Position::Fixed),
    keyword(u"sticky", Position::Sticky)};

struct PropertyRow {
  std::u16string_view name;
  bool inherited;
  std::span<const Keyword> keywords;
};

// In the order of Property.
constexpr PropertyRow rows[] = {{u"display", false, display_keywords},
                                {u"visibility", true, visibility_keywords},
                                {u"white-space", true, white_space_keywords},
                                {u"direction", true, direction_keywords},
                                {u"text-align", true, text_align_keywords},
                                {u"text-transform", true, text_transform_keywords},
                                {u"font-weight", true, {}},
                                {u"font-style", true, font_style_keywords},
                                {u"font-size", true, {}},
                                {u"font-family", true, {}},
                                {u"text-decoration-line", false, {}},
                                {u"color", true, {}},
                                {u"background-color", false, {}},
                                {u"vertical-align", false, vertical_align_keywords},
                                {u"list-style-type", true, list_style_type_keywords},
                                {u"float", false, float_keywords},
                                {u"position", false, position_keywords}};
static_assert(std::size(rows) == std::size_t(Property::Count));

const PropertyRow& row_of(Property property) { return rows[std::size_t(property)]; }

StyleValue number_value(ValueKind kind, double number) { return {kind, number, {}, {}}; }

std::optional<StyleValue> keyword_value(std::span<const Keyword> keywords, std::u16string_view text) {
  for (const Keyword& keyword : keywords) {
    if (equals_ignoring_ascii_case(keyword.text, text))
      return number_value(ValueKind::Keyword, keyword.value);
  }
  return std::nullopt;
}

/// Pixels for one of the unit; none for units that need more than an element.
std::optional<double> pixels_of(std::u16string_view unit) {
  static constexpr std::pair<std::u16string_view, double> units[] = {
      {u"px", 1},         {u"pt", 4.0 / 3},    {u"pc", 16},       {u"in", 96},
      {u"cm", 96 / 2.54}, {u"mm", 9.6 / 2.54}, {u"q", 2.4 / 2.54}};
  for (const auto& [name, pixels] : units) {
    if (equals_ignoring_ascii_case(name, unit)) return pixels;
  }
  return std::nullopt;
}

std::optional<StyleValue> length_value(const Component& component) {
  const Token& token = component.token;
  if (token.type == TokenType::Percentage) return number_value(ValueKind::Percentage, token.number);
  if (token.type == TokenType::Number) {
    return number_value(token.number == 0 ? ValueKind::Pixels : ValueKind::Unitless, token.number);
  }
  if (token.type != TokenType::Dimension) return std::nullopt;
  if (const auto pixels = pixels_of(token.value))
    return number_value(ValueKind::Pixels, token.number * *pixels);
  const std::u16string unit = ascii_lower(token.value);
  if (unit == u"em") return number_value(ValueKind::Em, token.number);
  if (unit == u"ex" || unit == u"ch") return number_value(ValueKind::Em, token.number / 2);
  if (unit == u"rem") return number_value(ValueKind::RootEm, token.number);
  return std::nullopt;
}

std::optional<StyleValue> font_size_value(const Component& component) {
  static constexpr std::u16string_view sizes[] = {u"xx-small", u"x-small", u"small",    u"medium",
                                                  u"large",    u"x-large", u"xx-large", u"xxx-large"};
  if (component.token.is_ident(u"larger")) return number_value(ValueKind::Relative, 1);
  if (component.token.is_ident(u"smaller")) return number_value(ValueKind::Relative, -1);
  for (std::size_t i = 0; i < std::size(sizes); ++i) {
    if (component.token.is_ident(sizes[i]))
      return number_value(ValueKind::Pixels, keyword_font_size(int(i) + 1));
  }
  auto value = length_value(component);
  return value && value->number >= 0 ? value : std::nullopt;
}

std::optional<StyleValue> font_weight_value(const Component& component) {
  const Token& token = component.token;
  if (token.is_ident(u"normal")) return number_value(ValueKind::Keyword, 400);
  if (token.is_ident(u"bold")) return number_value(ValueKind::Keyword, 700);
  if (token.is_ident(u"bolder")) return number_value(ValueKind::Relative, 1);
  if (token.is_ident(u"lighter")) return number_value(ValueKind::Relative, -1);
  if (token.type != TokenType::Number || token.number < 1 || token.number > 1000) return std::nullopt;
  return number_value(ValueKind::Keyword, token.number);
}

std::optional<StyleValue> decoration_value(const std::vector<Component>& components) {
  static constexpr Keyword lines[] = {{u"none", text_decoration::none},
                                      {u"underline", text_decoration::underline},
                                      {u"overline", text_decoration::overline},
                                      {u"line-through", text_decoration::line_through},
                                      {u"blink", text_decoration::blink}};
  int bits = 0;
  for (const Component& component : components) {
    const auto line = keyword_value(lines, component.text);
    if (!line || (line->number == 0 && components.size() > 1)) return std::nullopt;
    bits |= int(line->number);
  }
  return number_value(ValueKind::Keyword, bits);
}

std::optional<StyleValue> color_value(std::u16string_view text) {
  // CSS Color 4, section 6.2: what the system's colours are to a page that nobody themes.
  static constexpr std::pair<std::u16string_view, std::u16string_view> system[] = {
      {u"canvas", u"white"},
      {u"canvastext", u"black"},
      {u"linktext", u"#0000ee"},
      {u"buttonface", u"#efefef"},
      {u"buttontext", u"black"},
      {u"field", u"white"},
      {u"fieldtext", u"black"},
      {u"highlight", u"#3297fd"},
      {u"highlighttext", u"white"},
      {u"graytext", u"gray"},
      {u"mark", u"yellow"},
      {u"marktext", u"black"},
      {u"window", u"white"},
      {u"windowtext", u"black"},
      {u"menu", u"white"},
      {u"menutext", u"black"},
      {u"infobackground", u"#ffffe1"},
      {u"infotext", u"black"},
      {u"threedface", u"#efefef"},
      {u"activecaption", u"white"},
      {u"captiontext", u"black"},
      {u"background", u"white"},
      {u"visitedtext", u"#551a8b"},
      {u"activetext", u"red"}};
  if (equals_ignoring_ascii_case(text, u"currentcolor")) return number_value(ValueKind::CurrentColor, 0);
  auto color = parse_color(text);
  for (const auto& [name, meaning] : system) {
    if (!color && equals_ignoring_ascii_case(name, text)) color = parse_color(meaning);
  }
  if (!color) return std::nullopt;
  return StyleValue{ValueKind::Color, 0, *color, {}};
}

/// Families one by one, in the form that CSSOM prints: texts in double quotes, ", " between them.
std::optional<StyleValue> family_value(const std::vector<Component>& components) {
  StyleValue value{ValueKind::Family, 0, {}, {}};
  bool begins = true;
  for (const Component& component : components) {
    if (component.token.type == TokenType::Comma) {
      if (begins) return std::nullopt;
      value.text += u", ";
      begins = true;
    } else if (component.token.type == TokenType::String) {
      if (!begins) return std::nullopt;
      value.text += u'"' + component.token.value + u'"';
      begins = false;
    } else if (component.token.type == TokenType::Ident) {
      if (!begins) value.text += u' ';
      value.text += component.token.value;
      begins = false;
    } else {
      return std::nullopt;
    }
  }
  return begins ? std::nullopt : std::optional(value);
}

std::optional<StyleValue> wide_value(std::u16string_view text) {
  static constexpr std::pair<std::u16string_view, ValueKind> words[] = {{u"inherit", ValueKind::Inherit},
                                                                        {u"initial", ValueKind::Initial},
                                                                        {u"unset", ValueKind::Unset},
                                                                        {u"revert", ValueKind::Revert},
                                                                        {u"revert-layer", ValueKind::Revert}};
  for (const auto& [word, kind] : words) {
    if (equals_ignoring_ascii_case(word, text)) return number_value(kind, 0);
  }
  return std::nullopt;
}

std::u16string decimal(double number) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.6g", number);
  return from_utf8(buffer);
}

std::u16string decoration_text(std::uint8_t bits) {
  std::u16string text;
  static constexpr Keyword lines[] = {{u"underline", text_decoration::underline},
                                      {u"overline", text_decoration::overline},
                                      {u"line-through", text_decoration::line_through},
                                      {u"blink", text_decoration::blink}};
  for (const Keyword& line : lines) {
    if (!(bits & line.value)) continue;
    if (!text.empty()) text += u' ';
    text += line.text;
  }
  return text.empty() ? u"none" : text;
}

std::u16string keyword_text(Property property, std::uint8_t value) {
  for (const Keyword& keyword : row_of(property).keywords) {
    if (keyword.value == value) return std::u16string(keyword.text);
  }
  return {};
}

}  // namespace

double keyword_font_size(int index) {
  static constexpr double sizes[] = {9, 10, 13, 16, 18, 24, 32, 48};
  return sizes[std::clamp(index, 1, 8) - 1];
}

std::optional<Property> property_of(std::u16string_view name) {
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    if (rows[i].name == name) return Property(i);
  }
  return std::nullopt;
}

bool is_inherited(Property property) { return row_of(property).inherited; }

std::optional<StyleValue> parse_value(Property property, std::u16string_view text) {
  const std::vector<Component> components = components_of(text);
  if (components.empty()) return std::nullopt;
  if (components.size() == 1) {
    if (const auto wide = wide_value(components[0].text)) return wide;
  }
  if (property == Property::TextDecorationLine) return decoration_value(components);
  if (property == Property::FontFamily) return family_value(components);
  if (property == Property::FontStyle) return keyword_value(row_of(property).keywords, components[0].text);
  if (components.size() > 1) return std::nullopt;
  switch (property) {
    case Property::FontSize: return font_size_value(components[0]);
    case Property::FontWeight: return font_weight_value(components[0]);
    case Property::Color:
    case Property::BackgroundColor: return color_value(components[0].text);
    case Property::VerticalAlign: {
      const auto keyword = keyword_value(row_of(property).keywords, components[0].text);
      return keyword ? keyword : length_value(components[0]);
    }
    case Property::TextAlign:
      if (components[0].text == u"-internal-center") return number_value(ValueKind::CellCenter, 0);
      [[fallthrough]];
    default: return keyword_value(row_of(property).keywords, components[0].text);
  }
}

std::vector<PropertyValue> property_values(const Declarations& declarations) {
  std::vector<PropertyValue> values;
  const auto add = [&](std::u16string_view name, std::u16string_view text, bool important) {
    const auto property = property_of(name);
    if (!property) return;
    if (auto value = parse_value(*property, text))
      values.push_back({*property, important, std::move(*value)});
  };
  for (const Declaration* written : declarations.list()) {
    const Declaration& declaration = *written;
    const Shorthand* shorthand = find_shorthand(declaration.name);
    if (!shorthand) {
      add(declaration.name, declaration.value, declaration.important);
    } else if (const auto expansion = expand(*shorthand, declaration.value)) {
      for (std::size_t part = 0; part < shorthand->longhands.size(); ++part) {
        add(shorthand->longhands[part], expansion->values[part], declaration.important);
      }
    }
  }
  return values;
}

std::u16string value_text(const ComputedValues& values, Property property) {
  const auto word = [&](auto value) { return keyword_text(property, std::uint8_t(value)); };
  switch (property) {
    case Property::Display: return word(values.display);
    case Property::Visibility: return word(values.visibility);
    case Property::WhiteSpace: return word(values.white_space);
    case Property::Direction: return word(values.direction);
    case Property::TextAlign: return word(values.text_align);
    case Property::TextTransform: return word(values.text_transform);
    case Property::FontWeight: return tvx::to_text(std::int64_t(values.font_weight));
    case Property::FontStyle: return word(values.font_style);
    case Property::FontSize: return decimal(values.font_size) + u"px";
    case Property::TextDecorationLine: return decoration_text(values.text_decoration_line);
    case Property::Color: return to_text(values.color);
    case Property::BackgroundColor: return to_text(values.background_color);
    case Property::VerticalAlign:
      if (values.vertical_align == VerticalAlign::Length) return decimal(values.vertical_align_size) + u"px";
      if (values.vertical_align == VerticalAlign::Percentage)
        return decimal(values.vertical_align_size) + u"%";
      return word(values.vertical_align);
    case Property::ListStyleType: return word(values.list_style_type);
    case Property::Float: return word(values.float_side);
    case Property::Position: return word(values.position);
    case Property::FontFamily:
    case Property::Count: break;
  }
  return {};
}

}  // namespace tvx::dom::style
