#include "tvx/files/page_replacement.h"

#include <vector>

#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::files {
namespace {

dom::Element* child_with(dom::Element& root, dom::Tag tag) {
  for (dom::Node* child = root.first_child(); child; child = child->next_sibling())
    if (child->is(tag)) return static_cast<dom::Element*>(child);
  return nullptr;
}

void take_attributes(dom::Element& element, const dom::Element& from) {
  std::vector<dom::Name> surplus;
  for (const dom::Attribute& each : element.attributes())
    if (!from.has_attribute(each.name)) surplus.push_back(each.name);
  for (const dom::Name name : surplus) dom::remove_attribute(element, name);
  for (const dom::Attribute& each : from.attributes())
    dom::set_attribute(element, each.name, each.value, each.name_space);
}

}  // namespace

void replace_page(dom::Document& document, std::u16string_view text) {
  const dom::Ref<dom::Document> page = dom::parse_document(text);
  dom::Element *root = document.document_element(), *new_root = page->document_element();
  if (!root) return;  // a host has taken it away
  const dom::UndoStep step(document.journal(), u"Restore");
  take_attributes(*root, *new_root);
  for (const dom::Tag tag : {dom::Tag::Head, dom::Tag::Body}) {
    dom::Element *part = child_with(*root, tag), *new_part = child_with(*new_root, tag);
    if (!part || !new_part) continue;
    take_attributes(*part, *new_part);
    const std::u16string content = dom::inner_html(*new_part);
    if (dom::inner_html(*part) != content) dom::set_inner_html(*part, content);
  }
}

}  // namespace tvx::files
