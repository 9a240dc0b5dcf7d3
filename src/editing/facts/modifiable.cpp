#include <algorithm>

#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/facts/tag_set.h"

/// Elements that inline commands may change or take away. Editing commands standard, section "Inline
/// formatting command definitions".
namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Tag;
namespace names = dom::names;

namespace {

const TagSet& modifiable_tags() {
  static const TagSet tags{Tag::A,    Tag::B,      Tag::Em,     Tag::Font, Tag::I,   Tag::S,
                           Tag::Span, Tag::Strike, Tag::Strong, Tag::Sub,  Tag::Sup, Tag::U};
  return tags;
}

bool may_have(Tag tag, Name attribute) {
  if (attribute == names::style) return true;
  if (tag == Tag::A) return attribute == names::href;
  return tag == Tag::Font &&
         (attribute == names::color || attribute == names::face || attribute == names::size);
}

bool is_one_of(std::u16string_view value, std::initializer_list<std::u16string_view> values) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

// Whether an element of that name with nothing but a style attribute says one thing alone.
bool says_one_thing(const Element& element) {
  const auto property = only_own_property(element);
  if (!property) return sets_nothing(element);
  const Tag tag = element.tag();
  if ((tag == Tag::B || tag == Tag::Strong) && *property == u"font-weight") return true;
  if ((tag == Tag::I || tag == Tag::Em) && *property == u"font-style") return true;
  if (*property != u"text-decoration") return tag == Tag::A || tag == Tag::Font || tag == Tag::Span;
  static const TagSet decorated{Tag::A, Tag::Font, Tag::S, Tag::Span, Tag::Strike, Tag::U};
  return decorated.has(tag) && is_one_of(own_style(element, u"text-decoration").value_or(u""),
                                         {u"line-through", u"underline", u"overline", u"none"});
}

}  // namespace

bool is_modifiable_element(const Node& node) {
  if (!modifiable_tags().has(node)) return false;
  const auto& element = static_cast<const Element&>(node);
  return std::all_of(
      element.attributes().begin(), element.attributes().end(),
      [&](const dom::Attribute& attribute) { return may_have(element.tag(), attribute.name); });
}

bool is_simple_modifiable_element(const Node& node) {
  if (!modifiable_tags().has(node)) return false;
  const auto& element = static_cast<const Element&>(node);
  if (element.attributes().empty()) return true;
  if (element.attributes().size() > 1 || !may_have(element.tag(), element.attributes().front().name))
    return false;
  return element.attributes().front().name != names::style || says_one_thing(element);
}

}  // namespace tvx::editing
