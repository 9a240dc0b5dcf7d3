#include "tvx/automation/bench.h"

#include "tvx/base/error.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/walk/marks.h"

namespace tvx::automation {

namespace {

using dom::Element;
using dom::Ref;
using dom::Tag;

Ref<Element> lay_div(dom::Document& document, Element& body) {
  const Ref<Element> div = document.create_element(Tag::Div);
  dom::set_attribute(*div, dom::Name(u"contenteditable"), u"true");
  const Ref<Element> paragraph = document.create_element(Tag::P);
  dom::insert(*paragraph, document.create_text(u"test"));
  dom::insert(body, div);
  dom::insert(body, paragraph);
  return div;
}

// The public cases were made in a page of the standards mode; content in the body has its document's own.
void set_mode(dom::Document& document, bool in_div) {
  if (in_div)
    document.set_compatibility_mode(dom::CompatibilityMode::NoQuirks);
  else if (!document.document_type())
    document.set_compatibility_mode(dom::CompatibilityMode::Quirks);
}

}  // namespace

Ref<Element> lay_out_bench(editing::Editor& editor, const BenchContent& content, bool design_mode) {
  dom::Document& document = editor.document();
  const dom::MutationScope loading(document, dom::MutationKind::Load);
  const Ref<Element> body = document.body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");
  editor.selection().clear();
  dom::style::style_of(document).set_extra_sheets(
      content.sheet.empty() ? std::vector<std::u16string>() : std::vector<std::u16string>{content.sheet});
  set_mode(document, content.in_div);
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
