#include "tvx/base/error.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/ranges/replacement.h"
#include "tvx/editing/ranges/text_range.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

Ref<dom::DocumentFragment> parse_in(Node& parent, std::u16string_view html) {
  const auto* context = dom::as<Element>(&parent);
  const bool usable = context && !context->is(Tag::Html);
  return dom::parse_fragment(dom::document_of(parent),
                             usable ? dom::context_of(*context) : dom::FragmentContext(), html);
}

}  // namespace

void TextRange::finish_at(const Boundary& place) {
  range_->set({place, place});
  if (from_selection_) editor_.selection().collapse(place);
}

void TextRange::paste_html(std::u16string_view html) {
  replace_with([&](Node& parent) { return parse_in(parent, html); });
}

void TextRange::paste_nodes(const Ref<dom::DocumentFragment>& content) {
  replace_with([&](Node&) { return content; });
}

void TextRange::replace_with(const std::function<Ref<dom::DocumentFragment>(Node& parent)>& content) {
  const dom::Range seen = extent();
  if (!seen.start) throw RuntimeError(errors::object_not_set, u"The document has no content");
  const HeldSelection held(editor_.selection());
  const dom::UndoStep step(editor_.document().journal(), u"Insert");
  Replacement replacement(editor_, seen);
  Element* whole = covered_element();
  if (whole && whole->parent_element()) {
    finish_at(replacement.run_for(*whole, content(*whole->parent())));
  } else {
    finish_at(replacement.run(content(replacement.context())));
  }
}

void TextRange::set_text(std::u16string_view text) {
  const dom::Range seen = extent();
  if (!seen.start) throw RuntimeError(errors::object_not_set, u"The document has no content");
  const HeldSelection held(editor_.selection());
  const dom::UndoStep step(editor_.document().journal(), u"Text");
  auto* data = dom::as<dom::Text>(seen.start.node);
  const std::u16string units = data && !collapses(*data) ? std::u16string(text) : with_visible_spaces(text);
  const bool one_line = units.find_first_of(u"\r\n") == units.npos;
  if (data && data == seen.end.node && one_line && !units.empty()) {
    dom::replace_data(*data, seen.start.offset, seen.end.offset - seen.start.offset, units);
    return finish_at({data, seen.start.offset + units.size()});
  }
  finish_at(Replacement(editor_, seen).run(dom::lines_of(editor_.document(), units)));
}

}  // namespace tvx::editing
