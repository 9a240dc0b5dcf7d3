#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/style/css_tokens.h"

/// Which properties are written together, and how: the grammar of the shorthands that are known here.
namespace tvx::dom::style {

enum class ShorthandKind : std::uint8_t {
  Box,     // one to four values, round the box
  Line,    // width, style, colour
  Border,  // a line round the box
  ListStyle,
  TextDecoration,
  Background,
  Font
};

struct Shorthand {
  std::u16string_view name;
  ShorthandKind kind;
  /// In the order of the grammar. A border's are the four widths, the four styles, the four colours.
  std::vector<std::u16string_view> longhands;
};

/// Null if the name is no shorthand known here.
const Shorthand* find_shorthand(std::u16string_view name);
/// The shorthands that can hold what is left of one, the wider first.
std::span<const Shorthand> all_shorthands();

/// A piece of a value between white space, or a "/" or a ",".
struct Component {
  std::u16string text;
  Token token;  // its first
};
std::vector<Component> components_of(std::u16string_view value);

/// A shorthand's value taken apart.
struct Expansion {
  std::vector<std::u16string> values;  // one for each longhand
  std::vector<int> origins;            // the component that says it, -1: left out, so it is the initial value
  std::vector<Component> components;
};

/// None if the value is not one of that shorthand, or can't be taken apart (see is_opaque).
std::optional<Expansion> expand(const Shorthand& shorthand, std::u16string_view value);
/// The shortest value that says these; none if there is none.
std::optional<std::u16string> compose(const Shorthand& shorthand, const std::vector<std::u16string>& values);
/// The value with some longhands changed and every other component as written; none where that is not
/// possible. `changes` has one entry for each longhand, none: as it is.
std::optional<std::u16string> rewrite(const Shorthand& shorthand, std::u16string_view value,
                                      const std::vector<std::optional<std::u16string>>& changes);

std::u16string_view initial_value(std::u16string_view longhand);
/// "inherit", "initial", "unset", "revert".
bool is_css_wide_keyword(std::u16string_view value);
/// A value that stands for all longhands without telling which is what: var(), a system font.
bool is_opaque(const Shorthand& shorthand, std::u16string_view value);
/// Whether the value can stand in a declaration of that property, as far as its grammar is known here.
bool is_valid_value(std::u16string_view name, std::u16string_view value);
/// Closed in itself: nothing in it ends the declaration or swallows what follows.
bool is_complete_value(std::u16string_view value);
/// Whether a text after this component would become a part of it: an open block, string, comment, escape.
bool leaves_open(std::u16string_view component);
/// Small letters where the grammar has only keywords, lengths and colours; else as given.
std::u16string normalised_value(std::u16string_view name, std::u16string_view value);

}  // namespace tvx::dom::style
