#include "tvx/dom/style/shorthands.h"

#include <algorithm>

#include "tvx/dom/style/color.h"

namespace tvx::dom::style {
namespace {

template <std::size_t size>
bool is_one_of(const Component& component, const char16_t* const (&words)[size]) {
  if (component.token.type != TokenType::Ident) return false;
  return std::any_of(std::begin(words), std::end(words), [&](std::u16string_view word) {
    return equals_ignoring_ascii_case(component.token.value, word);
  });
}

constexpr const char16_t* line_styles[] = {u"none",   u"hidden", u"dotted", u"dashed", u"solid",
                                           u"double", u"groove", u"ridge",  u"inset",  u"outset"};
constexpr const char16_t* line_widths[] = {u"thin", u"medium", u"thick"};
constexpr const char16_t* system_colors[] = {u"currentcolor",    u"canvas",          u"canvastext",
                                             u"linktext",        u"visitedtext",     u"activetext",
                                             u"buttonface",      u"buttontext",      u"buttonborder",
                                             u"field",           u"fieldtext",       u"highlight",
                                             u"highlighttext",   u"graytext",        u"mark",
                                             u"marktext",        u"accentcolor",     u"activeborder",
                                             u"activecaption",   u"appworkspace",    u"background",
                                             u"buttonhighlight", u"buttonshadow",    u"captiontext",
                                             u"inactiveborder",  u"inactivecaption", u"inactivecaptiontext",
                                             u"infobackground",  u"infotext",        u"menu",
                                             u"menutext",        u"scrollbar",       u"threeddarkshadow",
                                             u"threedface",      u"threedhighlight", u"threedlightshadow",
                                             u"threedshadow",    u"window",          u"windowframe",
                                             u"windowtext"};
constexpr const char16_t* color_functions[] = {u"color", u"color-mix", u"hwb",        u"lab", u"lch",
                                               u"oklab", u"oklch",     u"light-dark", u"var"};
constexpr const char16_t* math_functions[] = {u"calc", u"min", u"max", u"clamp", u"env", u"var"};

template <std::size_t size>
bool is_function(const Component& component, const char16_t* const (&names)[size]) {
  if (component.token.type != TokenType::Function) return false;
  return std::any_of(std::begin(names), std::end(names), [&](std::u16string_view name) {
    return equals_ignoring_ascii_case(component.token.value, name);
  });
}

bool is_color(const Component& component) {
  return parse_color(component.text) || is_one_of(component, system_colors) ||
         is_function(component, color_functions);
}

// A number without a unit is taken too: old pages write it, and what it means is for the view to tell.
bool is_length(const Component& component) {
  return component.token.type == TokenType::Dimension || component.token.type == TokenType::Number ||
         is_function(component, math_functions);
}

bool is_length_or_percentage(const Component& component) {
  return is_length(component) || component.token.type == TokenType::Percentage;
}

bool is_line_width(const Component& component) {
  return (is_length(component) && component.token.number >= 0) || is_one_of(component, line_widths);
}

bool is_image(const Component& component) {
  if (component.token.type == TokenType::Url) return true;
  if (component.token.type != TokenType::Function) return false;
  const std::u16string name = ascii_lower(component.token.value);
  return name == u"url" || name == u"image" || name == u"image-set" || name == u"element" ||
         name.ends_with(u"gradient") || name == u"cross-fade";
}

Expansion blank_expansion(const Shorthand& shorthand, std::vector<Component> components) {
  Expansion expansion;
  for (const std::u16string_view longhand : shorthand.longhands) {
    expansion.values.emplace_back(initial_value(longhand));
  }
  expansion.origins.assign(shorthand.longhands.size(), -1);
  expansion.components = std::move(components);
  return expansion;
}

/// Puts component `i` into a longhand that has none yet.
bool take(Expansion& expansion, std::size_t longhand, std::size_t i) {
  if (expansion.origins[longhand] >= 0) return false;
  expansion.origins[longhand] = int(i);
  expansion.values[longhand] = expansion.components[i].text;
  return true;
}

bool is_box_part(std::u16string_view name, const Component& component) {
  if (name == u"border-style") return is_one_of(component, line_styles);
  if (name == u"border-width") return is_line_width(component);
  if (name == u"border-color") return is_color(component);
  if (name == u"padding") return is_length_or_percentage(component) && component.token.number >= 0;
  return is_length_or_percentage(component) || component.token.is_ident(u"auto");
}

std::optional<Expansion> expand_box(const Shorthand& shorthand, std::vector<Component> components) {
  const std::size_t count = components.size();
  if (count < 1 || count > 4) return std::nullopt;
  for (const Component& component : components) {
    if (!is_box_part(shorthand.name, component)) return std::nullopt;
  }
  Expansion expansion = blank_expansion(shorthand, std::move(components));
  static constexpr std::size_t sources[4][4] = {{0, 0, 0, 0}, {0, 1, 0, 1}, {0, 1, 2, 1}, {0, 1, 2, 3}};
  for (std::size_t side = 0; side < 4; ++side) take(expansion, side, sources[count - 1][side]);
  return expansion;
}

/// The place of a component in a line: 0 width, 1 style, 2 colour; -1: in none.
int line_part(const Component& component) {
  if (is_line_width(component)) return 0;
  if (is_one_of(component, line_styles)) return 1;
  return is_color(component) ? 2 : -1;
}

std::optional<Expansion> expand_line(const Shorthand& shorthand, std::vector<Component> components) {
  if (components.empty()) return std::nullopt;
  const std::size_t repeat = shorthand.longhands.size() / 3;
  Expansion expansion = blank_expansion(shorthand, std::move(components));
  for (std::size_t i = 0; i < expansion.components.size(); ++i) {
    const int part = line_part(expansion.components[i]);
    if (part < 0) return std::nullopt;
    for (std::size_t side = 0; side < repeat; ++side) {
      if (!take(expansion, part * repeat + side, i)) return std::nullopt;
    }
  }
  return expansion;
}

std::optional<Expansion> expand_list_style(const Shorthand& shorthand, std::vector<Component> components) {
  if (components.empty()) return std::nullopt;
  Expansion expansion = blank_expansion(shorthand, std::move(components));
  std::vector<std::size_t> nones;
  for (std::size_t i = 0; i < expansion.components.size(); ++i) {
    const Component& component = expansion.components[i];
    if (component.token.is_ident(u"none")) {
      nones.push_back(i);
    } else if (component.token.is_ident(u"inside") || component.token.is_ident(u"outside")) {
      if (!take(expansion, 1, i)) return std::nullopt;
    } else if (is_image(component)) {
      if (!take(expansion, 2, i)) return std::nullopt;
    } else if (component.token.type == TokenType::Ident || component.token.type == TokenType::String) {
      if (!take(expansion, 0, i)) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  // "none" means whichever of type and image is not told otherwise (CSS Lists, section 3.5).
  for (const std::size_t i : nones) {
    if (!take(expansion, 0, i) && !take(expansion, 2, i)) return std::nullopt;
  }
  return expansion;
}

std::optional<Expansion> expand_text_decoration(const Shorthand& shorthand,
                                                std::vector<Component> components) {
  static constexpr const char16_t* lines[] = {u"none", u"underline", u"overline", u"line-through", u"blink"};
  static constexpr const char16_t* styles[] = {u"solid", u"double", u"dotted", u"dashed", u"wavy"};
  static constexpr const char16_t* thicknesses[] = {u"auto", u"from-font"};
  if (components.empty()) return std::nullopt;
  Expansion expansion = blank_expansion(shorthand, std::move(components));
  std::u16string line;
  for (std::size_t i = 0; i < expansion.components.size(); ++i) {
    const Component& component = expansion.components[i];
    if (is_one_of(component, lines)) {
      if (expansion.origins[0] < 0) expansion.origins[0] = int(i);
      if (!line.empty()) line += u' ';
      line += component.text;
    } else if (is_one_of(component, styles)) {
      if (!take(expansion, 1, i)) return std::nullopt;
    } else if (is_one_of(component, thicknesses) || is_length_or_percentage(component)) {
      if (!take(expansion, 3, i)) return std::nullopt;
    } else if (!is_color(component) || !take(expansion, 2, i)) {
      return std::nullopt;
    }
  }
  if (!line.empty()) expansion.values[0] = line;
  return expansion;
}

/// One layer of a background.
bool take_background_layer(Expansion& expansion, std::size_t from, std::size_t to) {
  static constexpr const char16_t* repeats[] = {u"repeat",    u"repeat-x", u"repeat-y",
                                                u"no-repeat", u"space",    u"round"};
  static constexpr const char16_t* attachments[] = {u"scroll", u"fixed", u"local"};
  static constexpr const char16_t* boxes[] = {u"border-box", u"padding-box", u"content-box"};
  static constexpr const char16_t* places[] = {u"left", u"right", u"top", u"bottom", u"center"};
  enum : std::size_t { Image, Place, Size, Repeat, Attachment, Origin, Clip, Colour };
  bool in_size = false;
  const auto extend = [&](std::size_t longhand, std::size_t i) {
    if (take(expansion, longhand, i)) return;
    expansion.values[longhand] += u" " + expansion.components[i].text;
  };
  for (std::size_t i = from; i < to; ++i) {
    const Component& component = expansion.components[i];
    const bool size_word = is_length_or_percentage(component) || component.token.is_ident(u"auto");
    if (component.token.is_delim(u'/')) {
      if (expansion.origins[Place] < 0 || in_size) return false;
      in_size = true;
    } else if (in_size &&
               (size_word || component.token.is_ident(u"cover") || component.token.is_ident(u"contain"))) {
      extend(Size, i);
    } else if (is_length_or_percentage(component) || is_one_of(component, places)) {
      extend(Place, i);
    } else if (is_one_of(component, repeats)) {
      extend(Repeat, i);
    } else if (is_one_of(component, attachments)) {
      if (!take(expansion, Attachment, i)) return false;
    } else if (is_one_of(component, boxes)) {
      if (!take(expansion, Origin, i) && !take(expansion, Clip, i)) return false;
    } else if (is_image(component) || component.token.is_ident(u"none")) {
      if (!take(expansion, Image, i)) return false;
    } else if (!is_color(component) || !take(expansion, Colour, i)) {
      return false;
    }
  }
  if (expansion.origins[Origin] >= 0 && expansion.origins[Clip] < 0) {
    expansion.values[Clip] = expansion.values[Origin];
    expansion.origins[Clip] = expansion.origins[Origin];
  }
  return true;
}

/// Layers stand one by one in each longhand, but for the colour, which the last one has alone.
std::optional<Expansion> expand_background(const Shorthand& shorthand, std::vector<Component> components) {
  if (components.empty()) return std::nullopt;
  Expansion result = blank_expansion(shorthand, std::move(components));
  const std::size_t count = result.components.size();
  const std::size_t color = shorthand.longhands.size() - 1;
  for (std::size_t from = 0, layer = 0; from <= count; ++layer) {
    std::size_t to = from;
    while (to < count && result.components[to].token.type != TokenType::Comma) ++to;
    if (to == from) return std::nullopt;
    Expansion one = blank_expansion(shorthand, result.components);
    if (!take_background_layer(one, from, to)) return std::nullopt;
    if (to < count && one.origins[color] >= 0) return std::nullopt;
    for (std::size_t i = 0; i < color; ++i) {
      result.values[i] = layer == 0 ? one.values[i] : result.values[i] + u", " + one.values[i];
      result.origins[i] = std::max(result.origins[i], one.origins[i]);
    }
    result.values[color] = one.values[color];
    result.origins[color] = one.origins[color];
    from = to + 1;
  }
  return result;
}

/// font-style, font-variant, font-weight and font-stretch: 0 to 3; -1: none of them.
int font_part(const Component& component) {
  static constexpr const char16_t* weights[] = {u"bold", u"bolder", u"lighter"};
  static constexpr const char16_t* stretches[] = {u"ultra-condensed", u"extra-condensed", u"condensed",
                                                  u"semi-condensed",  u"semi-expanded",   u"expanded",
                                                  u"extra-expanded",  u"ultra-expanded"};
  if (component.token.is_ident(u"italic") || component.token.is_ident(u"oblique")) return 0;
  if (component.token.is_ident(u"small-caps")) return 1;
  if (is_one_of(component, weights)) return 2;
  if (component.token.type == TokenType::Number && component.token.number >= 1 &&
      component.token.number <= 1000) {
    return 2;
  }
  return is_one_of(component, stretches) ? 3 : -1;
}

bool is_font_size(const Component& component) {
  static constexpr const char16_t* sizes[] = {u"xx-small", u"x-small",  u"small",     u"medium",  u"large",
                                              u"x-large",  u"xx-large", u"xxx-large", u"smaller", u"larger"};
  return is_length_or_percentage(component) || is_one_of(component, sizes);
}

std::optional<Expansion> expand_font(const Shorthand& shorthand, std::vector<Component> components) {
  Expansion expansion = blank_expansion(shorthand, std::move(components));
  const auto& parts = expansion.components;
  std::size_t i = 0;
  for (; i < parts.size(); ++i) {
    if (parts[i].token.is_ident(u"normal")) continue;
    const int part = font_part(parts[i]);
    if (part < 0) break;
    if (!take(expansion, part, i)) return std::nullopt;
  }
  if (i == parts.size() || !is_font_size(parts[i])) return std::nullopt;
  take(expansion, 4, i++);
  if (i + 1 < parts.size() && parts[i].token.is_delim(u'/')) {
    take(expansion, 5, i + 1);
    i += 2;
  }
  if (i == parts.size()) return std::nullopt;
  expansion.origins[6] = int(i);
  std::u16string family;
  for (; i < parts.size(); ++i) {
    const TokenType type = parts[i].token.type;
    if (type != TokenType::Ident && type != TokenType::String && type != TokenType::Comma)
      return std::nullopt;
    if (!family.empty() && type != TokenType::Comma) family += u' ';
    family += parts[i].text;
  }
  expansion.values[6] = family;
  return expansion;
}

std::u16string joined(const std::vector<std::u16string>& words, std::u16string_view fallback) {
  std::u16string text;
  for (const std::u16string& word : words) {
    if (!text.empty()) text += u' ';
    text += word;
  }
  return text.empty() ? std::u16string(fallback) : text;
}

std::u16string compose_box(const std::vector<std::u16string>& values) {
  std::size_t count = 4;
  if (values[3] == values[1]) count = 3;
  if (count == 3 && values[2] == values[0]) count = 2;
  if (count == 2 && values[1] == values[0]) count = 1;
  return joined({values.begin(), values.begin() + count}, u"");
}

std::optional<std::u16string> compose_background(const Shorthand& shorthand,
                                                 const std::vector<std::u16string>& values) {
  std::vector<std::u16string> words;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (contains(values[i], u",") && !contains(values[i], u"(")) return std::nullopt;
    const bool initial = values[i] == initial_value(shorthand.longhands[i]);
    if (i == 2 && !initial) {
      if (values[1] == initial_value(shorthand.longhands[1])) words.push_back(values[1]);
      words.push_back(u"/");
    }
    if (!initial) words.push_back(values[i]);
  }
  return joined(words, u"none");
}

std::u16string compose_font(const Shorthand& shorthand, const std::vector<std::u16string>& values) {
  std::vector<std::u16string> words;
  for (std::size_t i = 0; i < 4; ++i) {
    if (values[i] != initial_value(shorthand.longhands[i])) words.push_back(values[i]);
  }
  words.push_back(values[5] == u"normal" ? values[4] : values[4] + u"/" + values[5]);
  words.push_back(values[6]);
  return joined(words, u"");
}

std::u16string text_of(const std::vector<Component>& components) {
  std::u16string text;
  bool glue = true;
  for (const Component& component : components) {
    const bool comma = component.token.type == TokenType::Comma;
    const bool slash = component.token.is_delim(u'/');
    if (!glue && !comma && !slash) text += u' ';
    text += component.text;
    glue = slash;
  }
  return text;
}

/// Longhands that one component says together: the four sides of a border.
std::size_t slot_of(const Shorthand& shorthand, std::size_t longhand) {
  return shorthand.kind == ShorthandKind::Border ? longhand / 4 : longhand;
}

/// The components of a value with some of them changed, left out, or added where the grammar lets them stand.
std::u16string with_components(const Shorthand& shorthand, const Expansion& expansion,
                               const std::vector<std::optional<std::u16string>>& changes) {
  std::vector<Component> parts = expansion.components;
  std::vector<bool> dropped(parts.size(), false), done(changes.size(), false);
  std::vector<Component> added;
  for (std::size_t i = 0; i < changes.size(); ++i) {
    const std::size_t slot = slot_of(shorthand, i);
    if (!changes[i] || done[slot]) continue;
    done[slot] = true;
    const std::u16string_view longhand = shorthand.longhands[i];
    const bool initial = *changes[i] == initial_value(longhand);
    const bool omissible = longhand.ends_with(u"-width") || longhand.ends_with(u"-color");
    if (const int origin = expansion.origins[i]; origin >= 0) {
      parts[origin].text = *changes[i];
      dropped[origin] = initial && omissible && parts.size() > 1;
    } else if (!initial) {
      added.push_back({*changes[i], Token{}});
    }
  }
  std::vector<Component> all;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (!dropped[i]) all.push_back(parts[i]);
  }
  // A font's size and family end it.
  const auto place = shorthand.kind == ShorthandKind::Font ? all.begin() : all.end();
  all.insert(place, added.begin(), added.end());
  return text_of(all);
}

/// A token that ends badly: it would swallow or lose what follows.
bool is_broken(const Token& token, std::u16string_view text) {
  switch (token.type) {
    case TokenType::BadString:
    case TokenType::BadUrl: return true;
    case TokenType::Delim: return token.delim == u'\\';
    case TokenType::String: return text.size() < 2 || text.back() != text.front();
    case TokenType::Url: return text.back() != u')';
    case TokenType::Comment: return text.size() < 4 || !text.ends_with(u"*/");
    default: return false;
  }
}

}  // namespace

std::vector<Component> components_of(std::u16string_view value) {
  std::vector<Component> components;
  const std::vector<Token> tokens = tokenize(value);
  for (std::size_t at = 0; tokens[at].type != TokenType::End;) {
    if (tokens[at].is_gap()) {
      ++at;
      continue;
    }
    const std::size_t end = skip_component(tokens, at);
    const Offset stop = tokens[end - 1].end;
    components.push_back(
        {std::u16string(value.substr(tokens[at].begin, stop - tokens[at].begin)), tokens[at]});
    at = end;
  }
  return components;
}

bool is_opaque(const Shorthand& shorthand, std::u16string_view value) {
  std::vector<Component> components = components_of(value);
  if (shorthand.kind == ShorthandKind::Font && components.size() == 1) {
    static constexpr const char16_t* fonts[] = {u"caption",     u"icon",          u"menu",
                                                u"message-box", u"small-caption", u"status-bar"};
    return is_one_of(components[0], fonts);
  }
  return std::any_of(components.begin(), components.end(), [](const Component& component) {
    return component.token.type == TokenType::Function && contains(ascii_lower(component.text), u"var(");
  });
}

std::optional<Expansion> expand(const Shorthand& shorthand, std::u16string_view value) {
  if (is_opaque(shorthand, value)) return std::nullopt;
  std::vector<Component> components = components_of(value);
  if (components.size() == 1 && is_css_wide_keyword(components[0].text)) {
    Expansion all = blank_expansion(shorthand, std::move(components));
    for (std::size_t i = 0; i < all.values.size(); ++i) take(all, i, 0);
    return all;
  }
  switch (shorthand.kind) {
    case ShorthandKind::Box: return expand_box(shorthand, std::move(components));
    case ShorthandKind::Line:
    case ShorthandKind::Border: return expand_line(shorthand, std::move(components));
    case ShorthandKind::ListStyle: return expand_list_style(shorthand, std::move(components));
    case ShorthandKind::TextDecoration: return expand_text_decoration(shorthand, std::move(components));
    case ShorthandKind::Background: return expand_background(shorthand, std::move(components));
    case ShorthandKind::Font: return expand_font(shorthand, std::move(components));
  }
  return std::nullopt;
}

std::optional<std::u16string> compose(const Shorthand& shorthand, const std::vector<std::u16string>& values) {
  const bool some_wide = std::any_of(values.begin(), values.end(), is_css_wide_keyword);
  if (some_wide) {
    const bool same = std::equal(values.begin() + 1, values.end(), values.begin());
    return same ? std::optional(values[0]) : std::nullopt;
  }
  if (shorthand.kind == ShorthandKind::Box) return compose_box(values);
  if (shorthand.kind == ShorthandKind::Background) return compose_background(shorthand, values);
  if (shorthand.kind == ShorthandKind::Font) return compose_font(shorthand, values);
  const std::size_t sides = shorthand.kind == ShorthandKind::Border ? 4 : 1;
  std::vector<std::u16string> words;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i % sides) {
      if (values[i] != values[i - 1]) return std::nullopt;
    } else if (values[i] != initial_value(shorthand.longhands[i])) {
      words.push_back(values[i]);
    }
  }
  return joined(words, u"none");
}

std::optional<std::u16string> rewrite(const Shorthand& shorthand, std::u16string_view value,
                                      const std::vector<std::optional<std::u16string>>& changes) {
  auto expansion = expand(shorthand, value);
  if (!expansion || is_css_wide_keyword(trimmed(value))) return std::nullopt;
  std::vector<std::u16string> wanted = expansion->values;
  for (std::size_t i = 0; i < changes.size(); ++i) {
    if (changes[i]) wanted[i] = *changes[i];
  }
  std::optional<std::u16string> result;
  if (shorthand.kind == ShorthandKind::Box) {
    result = compose_box(wanted);
  } else {
    result = with_components(shorthand, *expansion, changes);
  }
  // Whatever this made counts only if it says exactly what was asked for.
  const auto check = expand(shorthand, *result);
  return check && check->values == wanted ? result : std::nullopt;
}

bool is_complete_value(std::u16string_view value) {
  if (trimmed(value).empty()) return false;
  std::vector<TokenType> open;
  for (const Token& token : tokenize(value)) {
    const std::u16string_view text = value.substr(token.begin, token.end - token.begin);
    if (is_broken(token, text)) return false;
    if (open.empty() && (token.type == TokenType::Semicolon || token.is_delim(u'!'))) return false;
    switch (token.type) {
      case TokenType::Function:
      case TokenType::OpenParen: open.push_back(TokenType::CloseParen); break;
      case TokenType::OpenSquare: open.push_back(TokenType::CloseSquare); break;
      case TokenType::OpenBrace: open.push_back(TokenType::CloseBrace); break;
      case TokenType::CloseParen:
      case TokenType::CloseSquare:
      case TokenType::CloseBrace:
        if (open.empty() || open.back() != token.type) return false;
        open.pop_back();
        break;
      default: break;
    }
  }
  return open.empty();
}

bool leaves_open(std::u16string_view component) {
  const std::vector<Token> tokens = tokenize(component);
  std::vector<TokenType> open;
  for (const Token& token : tokens) {
    const std::u16string_view text = component.substr(token.begin, token.end - token.begin);
    if (token.type == TokenType::Function || token.type == TokenType::OpenParen) {
      open.push_back(TokenType::CloseParen);
    } else if (token.type == TokenType::OpenSquare) {
      open.push_back(TokenType::CloseSquare);
    } else if (token.type == TokenType::OpenBrace) {
      open.push_back(TokenType::CloseBrace);
    } else if (!open.empty() && open.back() == token.type) {
      open.pop_back();
    }
    const bool at_end = token.end == component.size() && !text.empty();
    if (at_end && is_broken(token, text) && token.type != TokenType::BadUrl) return true;
    if (at_end && token.type == TokenType::BadUrl && text.back() != u')') return true;
  }
  return !open.empty();
}

bool is_valid_value(std::u16string_view name, std::u16string_view value) {
  if (!is_complete_value(value)) return false;
  if (name.starts_with(u"--") || is_css_wide_keyword(trimmed(value))) return true;
  if (const Shorthand* shorthand = find_shorthand(name)) {
    return is_opaque(*shorthand, value) || expand(*shorthand, value).has_value();
  }
  const std::vector<Component> components = components_of(value);
  const bool single = components.size() == 1;
  const bool line = name.starts_with(u"border-") || name.starts_with(u"outline-");
  if (line && name.ends_with(u"-style"))
    return single && (is_one_of(components[0], line_styles) || contains(value, u"var("));
  if (line && name.ends_with(u"-width")) return single && is_line_width(components[0]);
  if (name == u"color" || name == u"background-color" || name == u"text-decoration-color" ||
      (line && name.ends_with(u"-color"))) {
    return single && is_color(components[0]);
  }
  if (name.starts_with(u"margin-") || name.starts_with(u"padding-")) {
    return single && is_box_part(name.substr(0, name.find(u'-')), components[0]);
  }
  return true;
}

}  // namespace tvx::dom::style
