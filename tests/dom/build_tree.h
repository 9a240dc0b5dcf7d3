#pragma once

#include <initializer_list>
#include <variant>

#include "tvx/dom/builder.h"

/// Trees for tests, written as nested values: element(Tag::P, {text(u"one"), element(Tag::B, {...})}).
namespace tvx::dom::test {

struct Spec {
  Tag tag = Tag::Unknown;  // Unknown: a text
  std::u16string text;
  std::vector<Spec> children;
};

inline Spec text(std::u16string data) { return {Tag::Unknown, std::move(data), {}}; }
inline Spec element(Tag tag, std::vector<Spec> children = {}) { return {tag, u"", std::move(children)}; }

inline Ref<Node> build(Document& document, const Spec& spec) {
  if (spec.tag == Tag::Unknown) return document.create_text(spec.text);
  Ref<Element> made = document.create_element(spec.tag);
  for (const Spec& child : spec.children) Builder::insert(*made, build(document, child));
  return made;
}

/// A document whose body holds `content`.
inline Ref<Document> document_with(const std::vector<Spec>& content) {
  Ref<Document> document = Document::create();
  Spec html = element(Tag::Html, {element(Tag::Head), element(Tag::Body, content)});
  Builder::insert(*document, build(*document, html));
  return document;
}

}  // namespace tvx::dom::test
