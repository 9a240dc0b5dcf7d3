#include "automation/bench.h"

#include "base/error.h"
#include "dom/journal.h"
#include "dom/mutation.h"
#include "dom/tree.h"
#include "editing/marks.h"

namespace tvx::automation {

namespace {

using dom::Element;
using dom::Ref;
using dom::Tag;

/// Marks the style element that is the bench's own, among those that the document brought.
const dom::Name& bench_mark() {
  static const dom::Name mark(u"data-bench");
  return mark;
}

Element* bench_sheet(const Element& head) {
  for (Element* child = dom::first_child_element(head); child; child = dom::next_element_sibling(*child))
    if (child->is(Tag::Style) && child->has_attribute(bench_mark())) return child;
  return nullptr;
}

void lay_sheet(dom::Document& document, std::u16string_view sheet) {
  Element* head = document.head();
  if (!head) return;
  Element* style = bench_sheet(*head);
  if (style && dom::text_content(*style) == sheet) return;
  if (style) dom::remove(*style);
  if (sheet.empty()) return;
  const Ref<Element> fresh = document.create_element(Tag::Style);
  dom::set_attribute(*fresh, bench_mark(), u"");
  dom::insert(*fresh, document.create_text(std::u16string(sheet)));
  dom::insert(*head, fresh);
}

Ref<Element> lay_div(dom::Document& document, Element& body) {
  const Ref<Element> div = document.create_element(Tag::Div);
  dom::set_attribute(*div, dom::Name(u"contenteditable"), u"true");
  const Ref<Element> paragraph = document.create_element(Tag::P);
  dom::insert(*paragraph, document.create_text(u"test"));
  dom::insert(body, div);
  dom::insert(body, paragraph);
  return div;
}

}  // namespace

Ref<Element> lay_out_bench(editing::Editor& editor, const BenchContent& content, bool design_mode) {
  dom::Document& document = editor.document();
  const dom::MutationScope loading(document, dom::MutationKind::Load);
  const Ref<Element> body = document.body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");
  editor.selection().clear();
  lay_sheet(document, content.sheet);
  dom::clear(*body);
  const Ref<Element> host = content.in_div ? lay_div(document, *body) : body;
  editor.set_design_mode(design_mode && !content.in_div);
  editor.set_style_with_css(content.style_with_css);
  editor.set_paragraph_separator(content.separator);
  editing::load_marked(editor, *host, content.html);
  editor.overrides().clear();
  document.journal().clear();
  return host;
}

}  // namespace tvx::automation
