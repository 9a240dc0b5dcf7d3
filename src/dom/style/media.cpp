#include "tvx/dom/style/media.h"

#include "tvx/base/strings.h"
#include "tvx/dom/style/shorthands.h"

namespace tvx::dom::style {
namespace {

constexpr double screen_width = 1024, screen_height = 768;

double pixels(const Token& token) {
  const bool em =
      equals_ignoring_ascii_case(token.value, u"em") || equals_ignoring_ascii_case(token.value, u"rem");
  return em ? token.number * 16 : token.number;
}

/// "(min-width: 600px)" without its brackets.
bool matches_feature(std::u16string_view text) {
  const std::size_t colon = text.find(u':');
  const std::u16string name = ascii_lower(trimmed(text.substr(0, colon)));
  if (name == u"color" || name == u"hover" || name == u"scripting") return name == u"color";
  if (colon == std::u16string_view::npos) return false;
  const std::vector<Component> value = components_of(text.substr(colon + 1));
  if (value.empty()) return false;
  const Token& token = value[0].token;
  if (name == u"orientation") return token.is_ident(u"landscape");
  if (token.type != TokenType::Dimension && token.type != TokenType::Number) return false;
  const double wanted = pixels(token);
  if (name == u"min-width" || name == u"min-device-width") return screen_width >= wanted;
  if (name == u"max-width" || name == u"max-device-width") return screen_width <= wanted;
  if (name == u"min-height" || name == u"min-device-height") return screen_height >= wanted;
  if (name == u"max-height" || name == u"max-device-height") return screen_height <= wanted;
  return false;
}

/// Words and features with "and" between them.
bool matches_query(const std::vector<Component>& components, std::size_t from, std::size_t to) {
  bool negated = false, holds = true;
  for (std::size_t i = from; i < to; ++i) {
    const Component& component = components[i];
    if (component.token.is_ident(u"not")) {
      negated = true;
    } else if (component.token.type == TokenType::OpenParen) {
      holds &= matches_feature(std::u16string_view(component.text).substr(1, component.text.size() - 2));
    } else if (component.token.type != TokenType::Ident) {
      return false;
    } else if (!component.token.is_ident(u"and") && !component.token.is_ident(u"only")) {
      holds &= component.token.is_ident(u"screen") || component.token.is_ident(u"all");
    }
  }
  return holds != negated;
}

}  // namespace

bool matches_screen(std::u16string_view media) {
  if (trimmed(media).empty()) return true;
  const std::vector<Component> components = components_of(media);
  for (std::size_t from = 0; from <= components.size();) {
    std::size_t to = from;
    while (to < components.size() && components[to].token.type != TokenType::Comma) ++to;
    if (to > from && matches_query(components, from, to)) return true;
    from = to + 1;
  }
  return false;
}

}  // namespace tvx::dom::style
