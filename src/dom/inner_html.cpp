#include "tvx/dom/inner_html.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace tvx::dom {

std::u16string inner_html(const Node& node) { return serialise_children(node); }
std::u16string outer_html(const Node& node) { return serialise_node(node); }

void set_inner_html(Element& element, std::u16string_view html) {
  const Ref<Element> keep = &element;
  Ref<DocumentFragment> content = parse_fragment(document_of(element), context_of(element), html);
  Node* target = element.template_content() ? element.template_content() : &element;
  replace_children(*target, content);
}

}  // namespace tvx::dom
