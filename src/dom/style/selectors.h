#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/style/css_tokens.h"

/// Selectors Level 4, as far as a document without a user can answer them: what needs a pointer, a focus or a
/// history is understood and matches nothing.
namespace tvx::dom::style {

class SelectorList;

enum class SimpleType : std::uint8_t {
  Type,
  Id,
  Class,
  Attribute,
  Root,
  Empty,
  Link,
  Nth,      // :nth-child and what it can say: :first-child
  NthLast,  // from the end
  NthOfType,
  NthLastOfType,
  Not,
  Is,     // :is() and, without weight, :where()
  State,  // :checked, :disabled, :enabled, :required, ... from attributes
  Never   // :hover, ::before
};

enum class AttributeTest : std::uint8_t { Exists, Equals, Word, DashPrefix, Prefix, Suffix, Part };

struct SimpleSelector {
  SimpleType type;
  Name name;             // Type, Attribute: in small letters
  std::u16string value;  // Id, Class, Attribute, State; Type: the name as written, for foreign elements
  AttributeTest test = AttributeTest::Exists;
  bool ignore_case = false;               // Attribute
  int step = 0, offset = 0;               // Nth...: step * n + offset
  std::shared_ptr<SelectorList> choices;  // Not, Is
};

enum class Combinator : std::uint8_t { Descendant, Child, NextSibling, LaterSibling };

struct CompoundSelector {
  std::vector<SimpleSelector> simples;             // none: everything ("*")
  Combinator combinator = Combinator::Descendant;  // to the compound on its left
};

struct Selector {
  std::vector<CompoundSelector> compounds;  // as written; the last one is the subject
  std::uint32_t specificity = 0;            // ids, classes and types, ten bits each

  bool matches(const Element& element) const;
};

class SelectorList {
 public:
  /// None if any of them is invalid.
  static std::optional<SelectorList> parse(std::u16string_view text);

  const std::vector<Selector>& selectors() const { return selectors_; }
  bool matches(const Element& element) const;

 private:
  friend class SelectorParser;
  std::vector<Selector> selectors_;
};

}  // namespace tvx::dom::style
