#include "tvx/files/declared_charset.h"

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::files {
namespace {

constexpr std::u16string_view type_header = u"content-type";

dom::Element* head_of(const dom::Document& document) {
  const dom::Element* root = document.document_element();
  for (dom::Node* child = root ? root->first_child() : nullptr; child; child = child->next_sibling())
    if (child->is(dom::Tag::Head)) return static_cast<dom::Element*>(child);
  return nullptr;
}

const std::u16string* value_of(const dom::Element& element, std::u16string_view name) {
  return element.attribute(dom::Name(name));
}

/// What a meta says of the character set; empty where it says something else.
std::string label_in(const dom::Element& meta) {
  if (const std::u16string* charset = value_of(meta, u"charset")) return to_utf8(*charset);
  const std::u16string *header = value_of(meta, u"http-equiv"), *content = value_of(meta, u"content");
  if (!header || !content || ascii_lower(*header) != type_header) return {};
  return browser::charset_of_type(to_utf8(*content));
}

dom::Element* declaration_in(const dom::Document& document) {
  const dom::Element* head = head_of(document);
  for (dom::Node* child = head ? head->first_child() : nullptr; child; child = child->next_sibling())
    if (child->is(dom::Tag::Meta) && !label_in(static_cast<dom::Element&>(*child)).empty())
      return static_cast<dom::Element*>(child);
  return nullptr;
}

}  // namespace

std::string declared_charset(const dom::Document& document) {
  const dom::Element* meta = declaration_in(document);
  const auto page = meta ? CodePage::by_name(label_in(*meta)) : std::nullopt;
  return page ? page->name() : std::string();
}

void declare_charset(dom::Document& document, std::string_view charset) {
  const dom::UndoStep step(document.journal(), u"Charset");
  const std::u16string name = from_utf8(charset);
  if (dom::Element* meta = declaration_in(document)) {
    if (value_of(*meta, u"charset"))
      dom::set_attribute(*meta, dom::Name(u"charset"), name);
    else
      dom::set_attribute(*meta, dom::Name(u"content"), u"text/html; charset=" + name);
    return;
  }
  dom::Element* head = head_of(document);
  if (!head) return;
  const dom::Ref<dom::Element> meta = document.create_element(dom::Tag::Meta);
  dom::set_attribute(*meta, dom::Name(u"charset"), name);
  dom::insert(*head, meta, head->first_child());
}

}  // namespace tvx::files
