#include "tvx/core/content/style_classes.h"

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/style/style_sheet.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/ranges/control_range.h"

namespace tvx::core {

namespace {

std::u16string_view trimmed(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

dom::Element& parent_of(const editing::TextRange& range) {
  dom::Element* parent = range.parent_element();
  if (!parent) throw RuntimeError(errors::object_not_set, u"The range stands in nothing");
  return *parent;
}

bool is_all_of_span(const editing::TextRange& range) {
  const dom::Element& parent = parent_of(range);
  return parent.is(dom::Tag::Span) && range.text().size() == dom::inner_text(parent).size();
}

}  // namespace

std::vector<StyleClass> style_classes_of(const dom::style::StyleSheet& sheet) {
  std::vector<StyleClass> classes;
  std::int16_t index = 0;
  for (const dom::style::Rule& rule : sheet.rules()) {
    if (++index <= 0) break;  // more rules than a menu has numbers for
    if (trimmed(rule.selector_text).starts_with(u'.'))
      classes.push_back({index, rule.selector_text.substr(1)});
  }
  return classes;
}

void set_style_class(dom::Element& element, std::u16string_view name) {
  dom::Document* document = element.document();
  if (!document) throw RuntimeError(errors::object_not_set, u"The element's document is gone");
  const dom::Ref<dom::Element> held(element);
  const dom::UndoStep step(document->journal(), u"Class");
  if (name.empty())
    dom::remove_attribute(element, dom::Name(u"class"));
  else
    dom::set_attribute(element, dom::Name(u"class"), name);
}

void set_style_class(editing::Editor& editor, std::u16string_view name) {
  const dom::WithoutOverlay bare(editor.document(), u"Class");
  editing::TextRange range = editing::create_text_range(editor);
  dom::Element& whole = parent_of(range);
  if (range.html_text() == dom::outer_html(whole)) return set_style_class(whole, name);
  if (range.html_text().empty()) range.expand(u"word");
  if (is_all_of_span(range)) return set_style_class(parent_of(range), name);
  if (name.empty()) return;
  range.paste_html(u"<SPAN class=" + std::u16string(name) + u">" + range.html_text() + u"</SPAN>");
}

}  // namespace tvx::core
