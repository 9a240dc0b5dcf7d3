#include "tvx/editing/facts/rendering.h"

#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/style/style_engine.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
namespace style = dom::style;

Display display_of(const Element& element) {
  switch (style::display_of(element)) {
    case style::Display::None: return Display::None;
    case style::Display::Inline:
    case style::Display::Ruby:
    case style::Display::RubyText: return Display::Inline;
    // COMPAT: the standard names the first two alone; the others came later and stand in lines as well.
    case style::Display::InlineBlock:
    case style::Display::InlineTable:
    case style::Display::InlineFlex:
    case style::Display::InlineGrid: return Display::InlineBlock;
    default: return Display::Block;
  }
}

style::WhiteSpace white_space_of(const Element& element) {
  return style::computed_values(element).white_space;
}

bool is_rendered(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  if (!element) element = node.parent_element();
  return !element || style::computed_values(*element).rendered;
}

bool is_folded_away(const Node& node) {
  static const dom::Name open(u"open");
  const Node* details = node.parent();
  if (!details || !details->is(dom::Tag::Details)) return false;
  if (static_cast<const Element*>(details)->has_attribute(open)) return false;
  if (!node.is(dom::Tag::Summary)) return true;
  const Node* before = node.previous_sibling();
  while (before && !before->is(dom::Tag::Summary)) before = before->previous_sibling();
  return before != nullptr;
}

std::optional<std::u16string> own_style(const Element& element, std::u16string_view property) {
  if (!element.has_attribute(dom::names::style)) return std::nullopt;
  std::u16string value = style::inline_value(element, property);
  if (value.empty()) return std::nullopt;
  return value;
}

std::optional<std::u16string> only_own_property(const Element& element) {
  const std::u16string* text = element.attribute(dom::names::style);
  if (!text) return std::nullopt;
  const style::Declarations declarations(*text);
  if (declarations.length() != 1) return std::nullopt;
  return declarations.item(0).name;
}

bool sets_nothing(const Element& element) {
  return !element.has_attribute(dom::names::style) || style::inline_length(element) == 0;
}

}  // namespace tvx::editing
