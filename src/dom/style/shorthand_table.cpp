#include <algorithm>
#include <array>

#include "tvx/dom/style/declarations.h"
#include "tvx/dom/style/shorthands.h"

namespace tvx::dom::style {
namespace {

const std::vector<Shorthand>& table() {
  static const std::vector<Shorthand> shorthands = {
      {u"border",
       ShorthandKind::Border,
       {u"border-top-width", u"border-right-width", u"border-bottom-width", u"border-left-width",
        u"border-top-style", u"border-right-style", u"border-bottom-style", u"border-left-style",
        u"border-top-color", u"border-right-color", u"border-bottom-color", u"border-left-color"}},
      {u"border-width",
       ShorthandKind::Box,
       {u"border-top-width", u"border-right-width", u"border-bottom-width", u"border-left-width"}},
      {u"border-style",
       ShorthandKind::Box,
       {u"border-top-style", u"border-right-style", u"border-bottom-style", u"border-left-style"}},
      {u"border-color",
       ShorthandKind::Box,
       {u"border-top-color", u"border-right-color", u"border-bottom-color", u"border-left-color"}},
      {u"border-top", ShorthandKind::Line, {u"border-top-width", u"border-top-style", u"border-top-color"}},
      {u"border-right",
       ShorthandKind::Line,
       {u"border-right-width", u"border-right-style", u"border-right-color"}},
      {u"border-bottom",
       ShorthandKind::Line,
       {u"border-bottom-width", u"border-bottom-style", u"border-bottom-color"}},
      {u"border-left",
       ShorthandKind::Line,
       {u"border-left-width", u"border-left-style", u"border-left-color"}},
      {u"outline", ShorthandKind::Line, {u"outline-width", u"outline-style", u"outline-color"}},
      {u"margin", ShorthandKind::Box, {u"margin-top", u"margin-right", u"margin-bottom", u"margin-left"}},
      {u"padding",
       ShorthandKind::Box,
       {u"padding-top", u"padding-right", u"padding-bottom", u"padding-left"}},
      {u"list-style",
       ShorthandKind::ListStyle,
       {u"list-style-type", u"list-style-position", u"list-style-image"}},
      {u"text-decoration",
       ShorthandKind::TextDecoration,
       {u"text-decoration-line", u"text-decoration-style", u"text-decoration-color",
        u"text-decoration-thickness"}},
      {u"background",
       ShorthandKind::Background,
       {u"background-image", u"background-position", u"background-size", u"background-repeat",
        u"background-attachment", u"background-origin", u"background-clip", u"background-color"}},
      {u"font",
       ShorthandKind::Font,
       {u"font-style", u"font-variant", u"font-weight", u"font-stretch", u"font-size", u"line-height",
        u"font-family"}},
  };
  return shorthands;
}

struct Initial {
  std::u16string_view end, value;
};

// By the end of the name, so that one row serves the four sides.
constexpr Initial initials[] = {
    {u"-width", u"medium"},
    {u"list-style-type", u"disc"},
    {u"list-style-position", u"outside"},
    {u"-image", u"none"},
    {u"text-decoration-line", u"none"},
    {u"text-decoration-style", u"solid"},
    {u"text-decoration-thickness", u"auto"},
    {u"font-style", u"normal"},
    {u"-style", u"none"},
    {u"background-position", u"0% 0%"},
    {u"background-size", u"auto"},
    {u"background-repeat", u"repeat"},
    {u"background-attachment", u"scroll"},
    {u"background-origin", u"padding-box"},
    {u"background-clip", u"border-box"},
    {u"background-color", u"transparent"},
    {u"-color", u"currentcolor"},
    {u"font-variant", u"normal"},
    {u"font-weight", u"normal"},
    {u"font-stretch", u"normal"},
    {u"line-height", u"normal"},
    {u"font-size", u"medium"},
};

// Properties, beside the border's, margins and paddings, that take lengths and no plain numbers.
constexpr std::u16string_view length_properties[] = {u"width",
                                                     u"height",
                                                     u"min-width",
                                                     u"min-height",
                                                     u"max-width",
                                                     u"max-height",
                                                     u"left",
                                                     u"top",
                                                     u"right",
                                                     u"bottom",
                                                     u"font-size",
                                                     u"letter-spacing",
                                                     u"word-spacing",
                                                     u"text-indent",
                                                     u"border-spacing",
                                                     u"outline",
                                                     u"outline-width",
                                                     u"outline-offset",
                                                     u"column-gap",
                                                     u"column-width",
                                                     u"row-gap",
                                                     u"gap",
                                                     u"vertical-align",
                                                     u"clip",
                                                     u"background-position",
                                                     u"background-size",
                                                     u"perspective",
                                                     u"inset"};

// Names alone: their values may hold texts whose case counts.
constexpr std::u16string_view keyword_properties[] = {u"color",
                                                      u"background-color",
                                                      u"text-align",
                                                      u"font-weight",
                                                      u"font-style",
                                                      u"font-size",
                                                      u"font-variant",
                                                      u"display",
                                                      u"visibility",
                                                      u"white-space",
                                                      u"direction",
                                                      u"vertical-align",
                                                      u"text-transform",
                                                      u"float",
                                                      u"clear",
                                                      u"position",
                                                      u"overflow",
                                                      u"width",
                                                      u"height",
                                                      u"left",
                                                      u"top",
                                                      u"right",
                                                      u"bottom",
                                                      u"z-index",
                                                      u"text-decoration",
                                                      u"text-decoration-line",
                                                      u"text-decoration-color",
                                                      u"text-indent",
                                                      u"line-height",
                                                      u"outline",
                                                      u"background-repeat",
                                                      u"background-attachment",
                                                      u"list-style-position",
                                                      u"unicode-bidi"};

template <std::size_t size>
bool holds(const std::u16string_view (&list)[size], std::u16string_view name) {
  return std::find(std::begin(list), std::end(list), name) != std::end(list);
}

bool is_box_property(std::u16string_view name) {
  return (name.starts_with(u"border") && name != u"border-collapse" && !name.starts_with(u"border-image")) ||
         name.starts_with(u"margin") || name.starts_with(u"padding");
}

}  // namespace

std::span<const Shorthand> all_shorthands() { return table(); }

const Shorthand* find_shorthand(std::u16string_view name) {
  for (const Shorthand& shorthand : table()) {
    if (shorthand.name == name) return &shorthand;
  }
  return nullptr;
}

std::vector<std::u16string_view> longhands_of(std::u16string_view name) {
  if (const Shorthand* shorthand = find_shorthand(name)) return shorthand->longhands;
  return {name};
}

std::u16string_view initial_value(std::u16string_view longhand) {
  for (const Initial& initial : initials) {
    if (longhand.ends_with(initial.end)) return initial.value;
  }
  return {};
}

bool is_css_wide_keyword(std::u16string_view value) {
  for (const std::u16string_view keyword : {u"inherit", u"initial", u"unset", u"revert", u"revert-layer"}) {
    if (equals_ignoring_ascii_case(value, keyword)) return true;
  }
  return false;
}

std::u16string with_units(std::u16string_view name, std::u16string_view value) {
  if (!is_box_property(name) && !holds(length_properties, name)) return std::u16string(value);
  std::u16string result;
  int depth = 0;
  for (const Token& token : tokenize(value)) {
    result += value.substr(token.begin, token.end - token.begin);
    if (token.type == TokenType::Function || token.type == TokenType::OpenParen) ++depth;
    if (token.type == TokenType::CloseParen) --depth;
    if (token.type == TokenType::Number && depth == 0) result += u"px";
  }
  return result;
}

std::u16string normalised_value(std::u16string_view name, std::u16string_view value) {
  if (!is_box_property(name) && !holds(keyword_properties, name)) return std::u16string(value);
  std::u16string result;
  for (const Token& token : tokenize(value)) {
    const std::u16string_view text = value.substr(token.begin, token.end - token.begin);
    const bool literal = token.type == TokenType::String || token.type == TokenType::Url;
    result += literal ? std::u16string(text) : ascii_lower(text);
  }
  return result;
}

}  // namespace tvx::dom::style
