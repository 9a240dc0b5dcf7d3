#include "tvx/editing/search/replace_read.h"

#include <algorithm>
#include <string>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Tag;

namespace {

/// A link's target, or what a script knows by name.
bool may_be_pointed_at(const Node& node) {
  const auto* element = dom::as<dom::Element>(&node);
  return element && (element->attribute(dom::names::id) || element->attribute(dom::names::name));
}

/// Removes a text that has become empty, and the elements within the line that held nothing else; the
/// position where they stood.
Boundary take_out_empty(dom::Node& text) {
  dom::Ref<Node> empty(&text);
  for (;;) {
    const dom::Ref<Node> parent(empty->parent());
    const Boundary place = dom::before(*empty);
    dom::remove(*empty);
    const bool goes = !parent->first_child() && is_inline_node(*parent) && is_editable(*parent) &&
                      !is_editing_host(*parent) && parent->parent() && is_editable(*parent->parent()) &&
                      !may_be_pointed_at(*parent);
    if (!goes) return place;
    empty = parent;
  }
}

/// A line without content has no height.
void hold_line_open(const Boundary& place) {
  const Content before = content_beside(place, Direction::Backward),
                ahead = content_beside(place, Direction::Forward);
  if (ahead.kind != ContentKind::LeaveBlock || !is_editable(*place.node)) return;
  const bool block_is_empty = before.kind == ContentKind::LeaveBlock && before.node == ahead.node;
  if (!block_is_empty && before.kind != ContentKind::LineBreak) return;
  dom::insert(*place.node, dom::document_of(*place.node).create_element(Tag::Br),
              dom::child_at(*place.node, place.offset));
}

std::u16string as_written(std::u16string_view text, bool collapsing) {
  if (!collapsing) return std::u16string(text);
  std::u16string line(text);
  std::ranges::replace(line, u'\n', u' ');
  return with_visible_spaces(line);
}

}  // namespace

bool may_replace(std::span<const ReadText::Piece> pieces) {
  return std::ranges::all_of(pieces, [&](const ReadText::Piece& piece) {
    return is_editable(*piece.node) && in_same_editing_host(*pieces.front().node, *piece.node);
  });
}

dom::Boundary replace_read(std::span<const ReadText::Piece> pieces, std::u16string_view text) {
  const ReadText::Piece first = pieces.front();
  const dom::Ref<Node> held(first.node);
  const bool collapsing = collapses(*first.node);
  const std::u16string units = as_written(text, collapsing);
  // From the last one: what stands before stays where it is.
  for (std::size_t i = pieces.size(); --i > 0;) {
    dom::Text& node = *pieces[i].node;
    dom::replace_data(node, pieces[i].from, pieces[i].to - pieces[i].from, {});
    if (node.length() == 0) take_out_empty(node);
  }
  dom::replace_data(*first.node, first.from, first.to - first.from, units);
  if (first.node->length() == 0) {
    const Boundary place = take_out_empty(*first.node);
    if (collapsing) canonicalize_whitespace(place, false);
    hold_line_open(place);
    return place;
  }
  const bool blanks_meet =
      units.empty() || units.front() == u' ' || units.back() == u' ' || pieces.size() > 1;
  const Boundary end{first.node, first.from + units.size()};
  if (!collapsing || !blanks_meet) return end;
  canonicalize_whitespace(end, false);
  canonicalize_whitespace({first.node, first.from}, false);
  if (units.empty()) hold_line_open(dom::after(*first.node));
  return end;
}

}  // namespace tvx::editing
