#include "tvx/dom/style/inline_style.h"

#include <optional>

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"

namespace tvx::dom::style {
namespace {

/// An edit that first reads the style is one step from the reading on: what stands in the tree without being
/// part of the document (the selection border) is off it meanwhile, and can't be written back as an edit.
class StyleEdit {
 public:
  explicit StyleEdit(const Element& element) {
    Document& document = document_of(element);
    if (document.mutation_kind() == MutationKind::Step) step_.emplace(document.journal(), u"");
  }

 private:
  std::optional<UndoStep> step_;
};

}  // namespace

std::u16string css_name_of(std::u16string_view name) {
  if (name == u"cssFloat" || name == u"styleFloat") return u"float";
  if (name.starts_with(u"--")) return std::u16string(name);
  std::u16string result;
  const bool css = contains(name, u"-");
  for (const char16_t c : name) {
    if (!css && is_ascii_upper(c) && !result.empty()) result += u'-';
    result += ascii_lower(c);
  }
  return result;
}

std::u16string InlineStyle::css_text() const {
  return std::u16string(element_->attribute_or_empty(names::style));
}

void InlineStyle::set_css_text(std::u16string_view text) {
  if (text == element_->attribute_or_empty(names::style)) return;
  if (trimmed(text).empty()) {
    remove_attribute(*element_, names::style);
  } else {
    set_attribute(*element_, names::style, text);
  }
}

Declarations InlineStyle::declarations() const {
  return Declarations(element_->attribute_or_empty(names::style));
}

std::u16string InlineStyle::get(std::u16string_view name) const {
  return declarations().get(css_name_of(name));
}

void InlineStyle::set(std::u16string_view name, std::u16string_view value, Important important) {
  const StyleEdit edit(*element_);
  const std::u16string property = css_name_of(name);
  Declarations now = declarations();
  if (now.set(property, with_units(property, value), important)) write(now);
}

void InlineStyle::remove(std::u16string_view name) {
  const StyleEdit edit(*element_);
  Declarations now = declarations();
  if (now.remove(css_name_of(name))) write(now);
}

void InlineStyle::write(const Declarations& declarations) { set_css_text(declarations.css_text()); }

std::u16string inline_value(const Element& element, std::u16string_view css_name) {
  const std::u16string* text = element.attribute(names::style);
  return text ? Declarations(*text).get(css_name) : std::u16string();
}

void set_inline_value(Element& element, std::u16string_view css_name, std::u16string_view value) {
  InlineStyle(element).set(css_name, value);
}

void remove_inline_value(Element& element, std::u16string_view css_name) {
  InlineStyle(element).remove(css_name);
}

std::size_t inline_length(const Element& element) {
  const std::u16string* text = element.attribute(names::style);
  return text ? Declarations(*text).length() : 0;
}

}  // namespace tvx::dom::style
