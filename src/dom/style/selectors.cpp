#include "tvx/dom/style/selectors.h"

#include <algorithm>

#include "tvx/dom/document.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

bool is_quirky(const Element& element) {
  const Document* document = element.document();
  return document && document->compatibility_mode() == CompatibilityMode::Quirks;
}

/// Ids and classes ignore case in quirks mode.
bool equal_names(const Element& element, std::u16string_view a, std::u16string_view b) {
  return a == b || (a.size() == b.size() && equals_ignoring_ascii_case(a, b) && is_quirky(element));
}

bool has_class(const Element& element, std::u16string_view name) {
  const std::u16string* value = element.attribute(names::class_);
  if (!value) return false;
  for (std::size_t at = 0; at < value->size();) {
    while (at < value->size() && is_ascii_space((*value)[at])) ++at;
    std::size_t end = at;
    while (end < value->size() && !is_ascii_space((*value)[end])) ++end;
    if (end > at && equal_names(element, std::u16string_view(*value).substr(at, end - at), name)) return true;
    at = end;
  }
  return false;
}

/// HTML standard, section 4.16.2: attributes of HTML elements whose values selectors compare without case.
bool compares_without_case(const Element& element, Name attribute) {
  static const Name list[] = {names::align,      names::type,       names::dir,    names::lang,
                              names::media,      names::rel,        names::valign, names::bgcolor,
                              names::color,      names::face,       names::target, names::checked,
                              Name(u"nowrap"),   Name(u"method"),   Name(u"link"), Name(u"shape"),
                              Name(u"disabled"), Name(u"hreflang"), Name(u"text"), Name(u"clear")};
  return element.is_html() && std::find(std::begin(list), std::end(list), attribute) != std::end(list);
}

bool has_word(std::u16string_view text, std::u16string_view word) {
  for (const std::u16string_view part : split_on_space(text)) {
    if (part == word) return true;
  }
  return false;
}

bool matches_attribute(const Element& element, const SimpleSelector& simple) {
  const std::u16string* written = element.attribute(simple.name);
  if (!written) return false;
  if (simple.test == AttributeTest::Exists) return true;
  const bool fold = simple.ignore_case || compares_without_case(element, simple.name);
  const std::u16string folded = fold ? ascii_lower(*written) : std::u16string();
  const std::u16string wanted_folded = fold ? ascii_lower(simple.value) : std::u16string();
  const std::u16string_view value = fold ? folded : *written, wanted = fold ? wanted_folded : simple.value;
  switch (simple.test) {
    case AttributeTest::Exists: return true;
    case AttributeTest::Equals: return value == wanted;
    case AttributeTest::Word: return !wanted.empty() && has_word(value, wanted);
    case AttributeTest::DashPrefix:
      return value == wanted ||
             (value.starts_with(wanted) && value.size() > wanted.size() && value[wanted.size()] == u'-');
    case AttributeTest::Prefix: return !wanted.empty() && value.starts_with(wanted);
    case AttributeTest::Suffix: return !wanted.empty() && value.ends_with(wanted);
    case AttributeTest::Part: return !wanted.empty() && contains(value, wanted);
  }
  return false;
}

Element* previous_element(const Node& node) {
  for (Node* sibling = node.previous_sibling(); sibling; sibling = sibling->previous_sibling()) {
    if (sibling->is_element()) return static_cast<Element*>(sibling);
  }
  return nullptr;
}

bool matches_nth(const Element& element, const SimpleSelector& simple) {
  const bool from_end = simple.type == SimpleType::NthLast || simple.type == SimpleType::NthLastOfType;
  const bool of_type = simple.type == SimpleType::NthOfType || simple.type == SimpleType::NthLastOfType;
  const auto next = [&](const Node& node) {
    return from_end ? next_element_sibling(node) : previous_element(node);
  };
  // After this many siblings the answer of "first child" and its like is known.
  const int limit = simple.step == 0 ? simple.offset : 0;
  int place = 1;
  for (const Element* sibling = next(element); sibling; sibling = next(*sibling)) {
    if (of_type && (sibling->name() != element.name() || sibling->name_space() != element.name_space()))
      continue;
    ++place;
    if (simple.step == 0 && place > limit) return false;
  }
  const int distance = place - simple.offset;
  if (simple.step == 0) return distance == 0;
  return distance % simple.step == 0 && distance / simple.step >= 0;
}

bool is_empty(const Element& element) {
  for (const Node* child = element.first_child(); child; child = child->next_sibling()) {
    if (child->is_element()) return false;
    if (const Text* text = as<Text>(child); text && text->length()) return false;
  }
  return true;
}

bool is_field(const Element& element) {
  return element.is(Tag::Input) || element.is(Tag::Button) || element.is(Tag::Select) ||
         element.is(Tag::Textarea) || element.is(Tag::Option) || element.is(Tag::Optgroup) ||
         element.is(Tag::Fieldset);
}

bool matches_state(const Element& element, std::u16string_view state) {
  static const Name disabled(u"disabled"), required(u"required"), selected(u"selected"), open(u"open");
  static const Name read_only(u"readonly");
  if (state == u"checked") {
    return (element.is(Tag::Input) && element.has_attribute(names::checked)) ||
           (element.is(Tag::Option) && element.has_attribute(selected));
  }
  if (state == u"disabled") return is_field(element) && element.has_attribute(disabled);
  if (state == u"enabled") return is_field(element) && !element.has_attribute(disabled);
  const bool entry = element.is(Tag::Input) || element.is(Tag::Select) || element.is(Tag::Textarea);
  if (state == u"required") return entry && element.has_attribute(required);
  if (state == u"optional") return entry && !element.has_attribute(required);
  if (state == u"open") return element.has_attribute(open);
  const bool writable = (element.is(Tag::Input) || element.is(Tag::Textarea)) &&
                        !element.has_attribute(read_only) && !element.has_attribute(disabled);
  return state == u"read-write" ? writable : !writable;
}

bool matches_simple(const Element& element, const SimpleSelector& simple) {
  switch (simple.type) {
    case SimpleType::Type:
      return element.is_html() ? element.name() == simple.name : element.name().text() == simple.value;
    case SimpleType::Id: {
      const std::u16string* id = element.attribute(names::id);
      return id && equal_names(element, *id, simple.value);
    }
    case SimpleType::Class: return has_class(element, simple.value);
    case SimpleType::Attribute: return matches_attribute(element, simple);
    case SimpleType::Root: return element.parent() && element.parent()->type() == NodeType::Document;
    case SimpleType::Empty: return is_empty(element);
    case SimpleType::Link:
      return (element.is(Tag::A) || element.is(Tag::Area)) && element.has_attribute(names::href);
    case SimpleType::Nth:
    case SimpleType::NthLast:
    case SimpleType::NthOfType:
    case SimpleType::NthLastOfType: return matches_nth(element, simple);
    case SimpleType::Not: return !simple.choices->matches(element);
    case SimpleType::Is: return simple.choices->matches(element);
    case SimpleType::State: return matches_state(element, simple.value);
    case SimpleType::Never: return false;
  }
  return false;
}

/// How far a failure reaches: past it no other ancestor, or no other sibling, needs to be tried. This keeps
/// "a b c d" linear in the depth of the element.
enum class Outcome : std::uint8_t { Matches, Fails, FailsForSiblings, FailsForAll };

// Recurses with the compounds of the selector, of which there are few, never with the tree.
Outcome match_from(const Selector& selector, std::size_t index, const Element& element) {
  const CompoundSelector& compound = selector.compounds[index];
  for (const SimpleSelector& simple : compound.simples) {
    if (!matches_simple(element, simple)) return Outcome::Fails;
  }
  if (index == 0) return Outcome::Matches;
  switch (compound.combinator) {
    case Combinator::Descendant:
      for (const Element* parent = element.parent_element(); parent; parent = parent->parent_element()) {
        const Outcome outcome = match_from(selector, index - 1, *parent);
        if (outcome == Outcome::Matches || outcome == Outcome::FailsForAll) return outcome;
      }
      return Outcome::FailsForAll;
    case Combinator::Child: {
      const Element* parent = element.parent_element();
      if (!parent) return Outcome::FailsForAll;
      const Outcome outcome = match_from(selector, index - 1, *parent);
      const bool final = outcome == Outcome::Matches || outcome == Outcome::FailsForAll;
      return final ? outcome : Outcome::FailsForSiblings;
    }
    case Combinator::NextSibling: {
      const Element* previous = previous_element(element);
      return previous ? match_from(selector, index - 1, *previous) : Outcome::FailsForSiblings;
    }
    case Combinator::LaterSibling:
      for (const Element* previous = previous_element(element); previous;
           previous = previous_element(*previous)) {
        const Outcome outcome = match_from(selector, index - 1, *previous);
        if (outcome != Outcome::Fails) return outcome;
      }
      return Outcome::FailsForSiblings;
  }
  return Outcome::Fails;
}

}  // namespace

bool Selector::matches(const Element& element) const {
  return match_from(*this, compounds.size() - 1, element) == Outcome::Matches;
}

bool SelectorList::matches(const Element& element) const {
  return std::any_of(selectors_.begin(), selectors_.end(),
                     [&](const Selector& selector) { return selector.matches(element); });
}

}  // namespace tvx::dom::style
