#include "tvx/editing/tree/lines.h"

#include <algorithm>
#include <vector>

#include "tvx/dom/builder.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

HeldGap gap_at(Boundary place) {
  auto* data = dom::as<dom::CharacterData>(place.node);
  if (!data) return {place.node, dom::child_at(*place.node, place.offset)};
  if (place.offset == 0) return {data->parent(), data};
  auto* text = dom::as<dom::Text>(data);
  if (place.offset >= data->length() || !text) return {data->parent(), data->next_sibling()};
  const Ref<dom::Text> tail = dom::split_text(*text, place.offset);
  return {text->parent(), tail};
}

Boundary position_of(const HeldGap& gap) {
  if (gap.before) return dom::before(*gap.before);
  return {gap.parent.get(), dom::length_of(*gap.parent)};
}

void insert_all(const HeldGap& gap, const NodeList& nodes) {
  for (const Ref<Node>& node : nodes) dom::insert(*gap.parent, node, gap.before.get());
}

namespace {

/// Moves `first` and what follows it to the end of `to`.
void move_rest(Node* first, Node& to) {
  NodeList nodes;
  for (Node* node = first; node; node = node->next_sibling()) nodes.emplace_back(node);
  insert_all({Ref<Node>(to), {}}, nodes);
}

}  // namespace

Ref<Element> split_block(Element& block, Boundary place) {
  dom::Document& document = dom::document_of(block);
  HeldGap gap = gap_at(place);
  Ref<Node> tail;  // of the level below, on its way up
  for (Ref<Node> level = gap.parent;; level = gap.parent) {
    const Ref<Node> copy = dom::clone(*level, document, dom::Deep::No);
    dom::remove_attribute(*dom::as<Element>(copy), dom::names::id);
    if (tail && tail->has_children()) dom::insert(*copy, tail);
    move_rest(gap.before.get(), *copy);
    tail = copy;
    gap = {level->parent(), level->next_sibling()};
    if (level.get() == &block) break;
    if (!level->has_children() && is_look(*level)) dom::remove(*level);
  }
  const Ref<Element> result(dom::as<Element>(tail));
  dom::insert(*block.parent(), result, block.next_sibling());
  return result;
}

HeldGap split_up_to(Node& container, Boundary place) {
  HeldGap gap = gap_at(place);
  while (gap.parent.get() != &container) {
    auto* element = dom::as<Element>(gap.parent);
    if (!gap.before) {
      gap = {element->parent(), element->next_sibling()};
    } else if (!gap.before->previous_sibling()) {
      gap = {element->parent(), element};
    } else {
      const Ref<Element> tail = split_block(*element, position_of(gap));
      gap = {tail->parent(), tail};
    }
  }
  return gap;
}

Boundary without_empty_looks(Boundary place) {
  for (;;) {
    Node* node = place.node;
    const auto* text = dom::as<dom::Text>(node);
    const bool empty = text ? text->length() == 0 : !node->has_children() && is_look(*node);
    if (!empty || !node->parent() || !is_editable(*node)) return place;
    place = dom::before(*node);
    dom::remove(*node);
  }
}

void remove_with_empty_holders(Node& node, const Node& limit) {
  static const TagSet places{Tag::Td, Tag::Th, Tag::Caption, Tag::Body};
  Ref<Node> gone(node);
  while (Ref<Node> parent = gone->parent()) {
    dom::remove(*gone);
    if (parent.get() == &limit || places.has(*parent) || is_editing_host(*parent)) return;
    for (Node* child = parent->first_child(); child; child = child->next_sibling())
      if (!is_filling(*child)) return;
    gone = parent;
  }
}

void remove_keeping_comments(Node& element) {
  const Ref<Node> held(element);
  for (const Ref<Node>& child : children_of(element))
    if (child->type() == dom::NodeType::Comment) move_preserving_ranges(child, *element.parent(), &element);
  dom::remove(element);
}

Boundary join_texts_at(Boundary place) {
  if (!place.node || place.node->is_text()) {
    auto* text = dom::as<dom::Text>(place.node);
    if (!text || (place.offset != 0 && place.offset != text->length())) return place;
    if (place.offset == 0 && text->previous_sibling() && text->previous_sibling()->is_text()) {
      place = dom::before(*text);
    } else if (place.offset == text->length() && text->next_sibling() && text->next_sibling()->is_text()) {
      place = dom::after(*text);
    } else {
      return place;
    }
  }
  auto* second = dom::as<dom::Text>(dom::child_at(*place.node, place.offset));
  auto* first = second ? dom::as<dom::Text>(second->previous_sibling()) : nullptr;
  if (!first) return place;
  const Boundary seam{first, first->length()};
  const Ref<Node> gone(second);
  dom::replace_data(*first, first->length(), 0, second->data());
  dom::remove(*gone);
  return seam;
}

Boundary HeldPosition::place() const {
  switch (at) {
    case At::InText: return {node.get(), offset};
    case At::Inside: return {node.get(), 0};
    case At::Before: return dom::before(*node);
    case At::Behind: return dom::after(*node);
    case At::Nowhere: break;
  }
  return {};
}

HeldPosition end_of_lines(Node& node, bool in_cells) {
  static const TagSet holders{Tag::Ul, Tag::Ol, Tag::Dl, Tag::Blockquote, Tag::Div, Tag::Center};
  static const TagSet table_parts{Tag::Table, Tag::Tbody, Tag::Thead, Tag::Tfoot, Tag::Tr, Tag::Td, Tag::Th};
  Node* at = &node;
  for (;;) {
    if (at->is_text()) return {HeldPosition::At::InText, at, dom::length_of(*at)};
    if (is_island(*at)) return {HeldPosition::At::Behind, at};
    Node* last = at->last_child();
    while (last && is_filling(*last) && last->previous_sibling() && is_block_piece(*last->previous_sibling()))
      last = last->previous_sibling();
    if (!is_text_block(*at) && !is_look(*at) && !holders.has(*at) && !(in_cells && table_parts.has(*at)))
      return {HeldPosition::At::Behind, at};
    if (!last) return {HeldPosition::At::Inside, at};
    if (last->is(Tag::Br) && is_text_block(*at)) return {HeldPosition::At::Before, last};
    at = last;
  }
}

bool same_attributes(const Element& a, const Element& b) {
  if (a.attributes().size() != b.attributes().size()) return false;
  return std::ranges::all_of(a.attributes(), [&](const dom::Attribute& attribute) {
    const std::u16string* other = b.attribute(attribute.name);
    return other && *other == attribute.value;
  });
}

bool same_look(const Node* node, const Element& look) {
  const auto* element = dom::as<Element>(node);
  return element && is_look(*element) && element->name() == look.name() && same_attributes(*element, look);
}

std::vector<Element*> looks_between(const Node& outside, Node* inside) {
  std::vector<Element*> looks;
  for (Node* node = inside; node && node != &outside; node = node->parent())
    if (is_look(*node)) looks.push_back(static_cast<Element*>(node));
  std::ranges::reverse(looks);
  return looks;
}

namespace {

/// How many of the styles the content at that edge of `from` is in, one in the other; these, the outermost
/// first.
NodeList shared_looks(const std::vector<Element*>& looks, const Node& from, Node* (Node::*edge)() const) {
  NodeList shared;
  const Node* at = &from;
  for (const Element* look : looks) {
    Node* next = (at->*edge)();
    if (!same_look(next, *look)) break;
    shared.emplace_back(next);
    at = next;
  }
  return shared;
}

}  // namespace

HeldPosition zip_left(const std::vector<Element*>& looks, Node& from) {
  const NodeList shared = shared_looks(looks, from, &Node::first_child);
  HeldPosition end;
  for (std::size_t i = shared.size(); i-- > 0;) {
    const NodeList nodes = children_of(*shared[i]);
    insert_all({Ref<Node>(looks[i]), {}}, nodes);
    if (!nodes.empty()) end = end_of_lines(*nodes.back());
    dom::remove(*shared[i]);
  }
  return end;
}

HeldPosition zip_right(const std::vector<Element*>& looks, Node& from) {
  const NodeList shared = shared_looks(looks, from, &Node::last_child);
  HeldPosition end;
  for (std::size_t i = shared.size(); i-- > 0;) {
    const NodeList nodes = children_of(*shared[i]);
    insert_all({Ref<Node>(looks[i]), looks[i]->first_child()}, nodes);
    if (!nodes.empty() && !end) end = end_of_lines(*nodes.back());
    dom::remove(*shared[i]);
  }
  return end;
}

void append_line(Node& line, Boundary end, Node& from) {
  const std::vector<Element*> looks = looks_between(line, end.node);
  zip_left(looks, from);
  insert_all(gap_at(looks.empty() ? end : dom::after(*looks.front())), children_of(from));
}

void prepend_line(Node& line, Boundary begin, Node& from) {
  const std::vector<Element*> looks = looks_between(line, begin.node);
  zip_right(looks, from);
  insert_all(gap_at(looks.empty() ? begin : dom::before(*looks.front())), children_of(from));
}

}  // namespace tvx::editing
