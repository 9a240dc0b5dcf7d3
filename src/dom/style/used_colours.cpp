#include "tvx/dom/style/used_colours.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

constexpr std::size_t most = 16;

const Name attributes[] = {names::color,  Name(u"bgcolor"), Name(u"bordercolor"), Name(u"bordercolordark"),
                           Name(u"text"), Name(u"link")};
constexpr std::u16string_view properties[] = {u"color", u"background-color", u"border-top-color"};

struct Used {
  std::u16string colour;
  std::size_t times;
};

void count(std::vector<Used>& used, const std::optional<Color>& colour) {
  if (!colour || colour->alpha < 1) return;
  const std::u16string text = to_hex(*colour);
  const auto known = std::ranges::find(used, text, &Used::colour);
  known == used.end() ? void(used.push_back({text, 1})) : void(++known->times);
}

}  // namespace

std::vector<std::u16string> used_colours(const Document& document) {
  std::vector<Used> used;
  for (const Node* node = &document; node; node = next_in_order(*node)) {
    const auto* element = as<Element>(node);
    if (!element || element->attributes().empty()) continue;
    for (const Name name : attributes)
      if (const std::u16string* text = element->attribute(name)) count(used, parse_legacy_color(*text));
    if (!element->has_attribute(names::style)) continue;
    for (const std::u16string_view property : properties)
      count(used, parse_color(inline_value(*element, property)));
  }
  std::ranges::stable_sort(used, std::greater(), &Used::times);
  std::vector<std::u16string> colours;
  for (Used& each : used)
    if (colours.size() < most) colours.push_back(std::move(each.colour));
  return colours;
}

}  // namespace tvx::dom::style
