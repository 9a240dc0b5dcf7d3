#include "tvx/dom/parse.h"

#include "tvx/dom/builder.h"
#include "tvx/dom/parser/tree_builder.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

Ref<Document> parse_document(std::u16string_view html) {
  Ref<Document> document = Document::create();
  parser::TreeBuilder(*document, html).run();
  return document;
}

FragmentContext context_of(const Element& element) {
  FragmentContext context;
  context.name = element.name();
  context.name_space = element.name_space();
  if (const Document* document = element.document())
    context.compatibility_mode = document->compatibility_mode();
  context.inside_form = enclosing(element, Tag::Form) != nullptr;
  context.encoding = element.attribute_or_empty(names::encoding);
  return context;
}

Ref<DocumentFragment> parse_fragment(Document& document, const FragmentContext& context,
                                     std::u16string_view html) {
  parser::TreeBuilder builder(document, html, context);
  builder.run();
  Ref<DocumentFragment> fragment = document.create_fragment();
  Builder::move_children(builder.root(), *fragment);
  return fragment;
}

}  // namespace tvx::dom
