// Markup put into a document: into elements of all kinds, in their places, and over ranges. The tree stays
// sound, and one undo takes each of them back.

#include "fuzz_choices.h"
#include "tree_laws.h"
#include "tvx/base/error.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/ranges/control_range.h"

namespace {

using namespace tvx;
using namespace tvx::dom;

constexpr std::u16string_view page =
    u"<!DOCTYPE html><body>top<p>one <b>two <i>three</i></b></p><ul><li>4<li>5<ul><li>6</ul></ul>"
    u"<table><caption>c</caption><tr><td>7<td><p>8</p><tr><th>9</table><pre>\n a  b\n</pre>"
    u"<form><select><option>x</select><textarea>t</textarea></form><a href=y>link</a>"
    u"<svg><foreignObject><p>f</p></foreignObject></svg><h1>h</h1><div></div>";

Node& any_node(Document& document, fuzz::Choices& choices) {
  std::size_t steps = choices.below(80);
  Node* node = document.body();
  while (steps-- > 0)
    if (Node* next = next_in_order(*node, document.body())) node = next;
  return *node;
}

Boundary any_place(Document& document, fuzz::Choices& choices) {
  Node& node = any_node(document, choices);
  return {&node, choices.below(length_of(node) + 1)};
}

void put(editing::Editor& editor, fuzz::Choices& choices, const std::u16string& markup) {
  Document& document = editor.document();
  const std::size_t how = choices.below(6);
  if (how < 4) {
    Element* element = as<Element>(&any_node(document, choices));
    if (!element) return;
    if (how == 0) return assign_inner_html(*element, markup);
    if (how == 1) return assign_outer_html(*element, markup);
    if (how == 2) return assign_inner_text(*element, markup);
    return assign_outer_text(*element, markup);
  }
  Range range{any_place(document, choices), any_place(document, choices)};
  if (compare(range.start, range.end) > 0) std::swap(range.start, range.end);
  editor.selection().set(range);
  editing::TextRange text = editing::create_text_range(editor);
  text.html_text();
  how == 4 ? text.paste_html(markup) : text.set_text(markup);
  fuzz::require(text.collapsed(), "after what was put in stands a caret");
  text.parent_element();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Choices choices(data, size);
  const Ref<Document> document = parse_document(page);
  editing::Editor editor(*document);
  editor.set_design_mode(true);
  const std::u16string first = print_tree(*document);
  for (int round = 0; round < 4 && choices.left(); ++round) {
    const std::u16string before = print_tree(*document);
    const std::size_t depth = document->journal().depth();
    const std::u16string markup = choices.text(200);
    attempt([&] { put(editor, choices, markup); });
    fuzz::require_sound_links(*document);
    fuzz::require_sound_order(*document);
    const std::u16string after = print_tree(*document);
    fuzz::require(document->journal().depth() <= depth + 1, "it is one step");
    if (document->journal().depth() == depth) {
      fuzz::require(after == before, "no step, no change");
      continue;
    }
    fuzz::require(document->journal().undo(), "it can be undone");
    fuzz::require(print_tree(*document) == before, "undo gives the tree before");
    fuzz::require(document->journal().redo(), "it can be done again");
    fuzz::require(print_tree(*document) == after, "redo gives the tree after");
  }
  while (document->journal().undo()) {
  }
  fuzz::require(print_tree(*document) == first, "undoing all gives the first tree");
  return 0;
}
