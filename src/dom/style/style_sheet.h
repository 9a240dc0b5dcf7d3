#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::dom::style {

class StyleEngine;

enum class RuleKind : std::uint8_t { Style, Media, Import, Supports, Other };

/// A rule as written. A selector list (".a, .b") is one rule; rules that CSS drops for a fault are not here.
struct Rule {
  RuleKind kind = RuleKind::Style;
  std::u16string selector_text;   // trimmed; "" for anything but style rules
  std::u16string css_text;        // the whole rule
  std::u16string block;           // what stands between the braces
  std::u16string prelude;         // @media: the media; @import: what follows the name
  std::vector<Rule> child_rules;  // of @media and @supports
};

/// The rules of a sheet (CSS Syntax, "parse a stylesheet"). A faulty rule costs itself and nothing else.
std::vector<Rule> parse_rules(std::u16string_view text);

/// What an @import asks for.
struct Import {
  std::u16string url;    // as written
  std::u16string media;  // may be empty
};
/// Of the prelude of an import rule; nothing if it names no address. A condition by `supports` counts as met.
std::optional<Import> parse_import(std::u16string_view prelude);
/// What a sheet imports for a screen, in its order.
std::vector<Import> imports_of(const std::vector<Rule>& rules);

/// A sheet of a document: that of one `style` or stylesheet `link` element, for as long as that element
/// stands in the tree with that meaning. A handle stays safe to use afterwards.
class StyleSheet {
 public:
  StyleSheet(Element& owner, StyleEngine* engine) : owner_(owner), engine_(engine) {}

  Element& owner() const { return *owner_; }
  bool is_link() const;

  /// The link's address as written; "" for a `style` element.
  std::u16string href() const;
  /// Writes the address. An equal one is no mutation, but asks for the sheet to be loaded again all the same.
  void set_href(std::u16string_view address);
  std::u16string media() const;

  /// The text: of a `style` element its content, of a link what was loaded, "" if nothing was.
  std::u16string css_text() const;
  /// A `style` element's content is replaced; a link's text only in memory.
  void set_css_text(std::u16string_view text);

  /// The rules as written, kept until the text changes.
  const std::vector<Rule>& rules() const;

 private:
  friend class SheetList;
  Ref<Element> owner_;
  StyleEngine* engine_;  // null when the document is gone
  std::optional<std::u16string> loaded_text_;
  std::vector<std::vector<Rule>> imported_;  // all that the sheet imports, in the order of the cascade
  mutable bool parsed_ = false;
  mutable std::u16string parsed_text_;
  mutable std::vector<Rule> rules_;
};

using StyleSheetHandle = std::shared_ptr<StyleSheet>;

}  // namespace tvx::dom::style
