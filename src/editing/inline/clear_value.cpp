#include "tvx/dom/style/inline_style.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/inline/said_above.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;
namespace names = dom::names;

namespace {

// Its children take its position, and the boundaries at their edges go along.
NodeList dissolve(const Ref<Element>& element) {
  NodeList children = children_of(*element);
  for (const Ref<Node>& child : children) move_preserving_ranges(child, *element->parent(), element.get());
  dom::remove(*element);
  return children;
}

void unset_decoration(Element& element, std::u16string_view line) {
  const auto decoration = own_style(element, u"text-decoration");
  if (!decoration || !contains(*decoration, line)) return;
  std::u16string rest;
  for (const std::u16string_view part : split_on_space(*decoration)) {
    if (part == line) continue;
    if (!rest.empty()) rest += u' ';
    rest += part;
  }
  if (rest.empty()) {
    dom::style::remove_inline_value(element, u"text-decoration");
  } else {
    dom::style::set_inline_value(element, u"text-decoration", rest);
  }
}

void unset_attribute(Element& element, InlineCommand command) {
  if (element.is(Tag::Font)) {
    if (command == InlineCommand::ForeColor) dom::remove_attribute(element, names::color);
    if (command == InlineCommand::FontName) dom::remove_attribute(element, names::face);
    if (command == InlineCommand::FontSize) dom::remove_attribute(element, names::size);
  }
  if (element.is(Tag::A) && command == InlineCommand::CreateLink) dom::remove_attribute(element, names::href);
}

}  // namespace

// Editing commands standard, section "Clearing an element's value".
NodeList clear_value(const Ref<Element>& element, InlineCommand command) {
  if (!specified_command_value(*element, command) || !is_editable(*element)) return {};
  if (is_simple_modifiable_element(*element)) return dissolve(element);
  if (command == InlineCommand::Strikethrough) unset_decoration(*element, u"line-through");
  if (command == InlineCommand::Underline) unset_decoration(*element, u"underline");
  if (const auto property = css_property_of(command); !property.empty())
    dom::style::remove_inline_value(*element, property);
  unset_attribute(*element, command);
  if (!specified_command_value(*element, command)) return {};
  return {set_tag_name(*element, Name(Tag::Span))};
}

namespace {

// Steps 4 to 8: the editable ancestors that look otherwise, from the nearest on.
std::vector<Ref<Element>> unlike_ancestors(const Node& node, InlineCommand command,
                                           const InlineValue& value) {
  std::vector<Ref<Element>> ancestors;
  for (Element* current = node.parent_element(); current && is_editable(*current);
       current = current->parent_element()) {
    if (loosely_equivalent_values(command, effective_command_value(*current, command), value)) break;
    ancestors.emplace_back(current);
  }
  return ancestors;
}

}  // namespace

// Editing commands standard, section "Pushing down values".
void push_down_values(const Ref<Node>& node, InlineCommand command, const InlineValue& value, Editor& editor,
                      SaidAbove& said) {
  // Without anything said above there is nothing to push down. Asked first, as it costs no question for
  // styles.
  if (!node->parent_element() || !said.is_above(*node)) return;
  if (loosely_equivalent_values(command, effective_command_value(*node, command), value)) return;
  auto ancestors = unlike_ancestors(*node, command, value);
  if (ancestors.empty()) return;
  InlineValue propagated = specified_command_value(*ancestors.back(), command);
  if (!propagated && value) return;
  // With no value to fall back on above, taking the present one away would not bring the wanted one.
  const Node* above = ancestors.back()->parent();
  if (value && !loosely_equivalent_values(command, effective_command_value(*above, command), value)) return;
  while (!ancestors.empty()) {
    const Ref<Element> current = std::move(ancestors.back());
    ancestors.pop_back();
    const InlineValue specified = specified_command_value(*current, command);
    if (specified) propagated = specified;
    const NodeList children = children_of(*current);
    if (specified) clear_value(current, command);
    for (const Ref<Node>& child : children) {
      if (child == node || (!ancestors.empty() && child == ancestors.back().get())) continue;
      if (const auto* element = dom::as<Element>(child)) {
        const InlineValue own = specified_command_value(*element, command);
        if (own && !equivalent_values(command, own, propagated)) continue;
      }
      force_value(child, command, propagated, editor);
    }
  }
}

void push_down_values(const Ref<Node>& node, InlineCommand command, const InlineValue& value,
                      Editor& editor) {
  SaidAbove said(editor.document(), command);
  push_down_values(node, command, value, editor, said);
}

}  // namespace tvx::editing
