#include "tvx/dom/objects/element_content.h"

#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

namespace {

[[noreturn]] void refuse() {
  throw RuntimeError(errors::not_supported, u"This can't be written in an element of this kind");
}

bool holds_parts_only(const Element& element) {
  switch (element.tag()) {
    case Tag::Html:
    case Tag::Head:
    case Tag::Frameset:
    case Tag::Table:
    case Tag::Tbody:
    case Tag::Thead:
    case Tag::Tfoot:
    case Tag::Tr:
    case Tag::Colgroup: return true;
    default: return is_void(element);
  }
}

bool is_part_of_a_whole(const Element& element) {
  switch (element.tag()) {
    case Tag::Html:
    case Tag::Head:
    case Tag::Body:
    case Tag::Frameset:
    case Tag::Caption:
    case Tag::Col:
    case Tag::Colgroup:
    case Tag::Tbody:
    case Tag::Thead:
    case Tag::Tfoot:
    case Tag::Tr:
    case Tag::Td:
    case Tag::Th: return true;
    default: return false;
  }
}

void put_in_place_of(Element& element, const Ref<DocumentFragment>& content) {
  const Ref<Node> parent(element.parent());
  insert(*parent, content, &element);
  remove(element);
}

}  // namespace

void assign_inner_html(Element& element, std::u16string_view html) {
  if (holds_parts_only(element) || element.is(Tag::Title) || element.is(Tag::Style)) refuse();
  const UndoStep step(document_of(element).journal(), u"Change");
  set_inner_html(element, html);
}

void assign_outer_html(Element& element, std::u16string_view html) {
  if (is_part_of_a_whole(element) || !element.parent()) refuse();
  Document& document = document_of(element);
  const Element* context = element.parent_element();
  const bool usable = context && !context->is(Tag::Html);
  const UndoStep step(document.journal(), u"Change");
  put_in_place_of(element, parse_fragment(document, usable ? context_of(*context) : FragmentContext(), html));
}

void assign_outer_nodes(Element& element, const Ref<DocumentFragment>& content) {
  if (is_part_of_a_whole(element) || !element.parent()) refuse();
  const UndoStep step(document_of(element).journal(), u"Change");
  put_in_place_of(element, content);
}

void assign_inner_text(Element& element, std::u16string_view text) {
  if (holds_parts_only(element)) refuse();
  Document& document = document_of(element);
  const UndoStep step(document.journal(), u"Change");
  if (element.is(Tag::Title) || element.is(Tag::Style) || element.is(Tag::Script) ||
      element.is(Tag::Textarea))
    return replace_children(element, document.create_text(std::u16string(text)));
  set_inner_text(element, text);
}

void assign_outer_text(Element& element, std::u16string_view text) {
  if (is_part_of_a_whole(element) || !element.parent()) refuse();
  Document& document = document_of(element);
  const UndoStep step(document.journal(), u"Change");
  put_in_place_of(element, lines_of(document, text));
}

}  // namespace tvx::dom
