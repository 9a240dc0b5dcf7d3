#include "tvx/dom/changed_content.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace tvx::dom {
namespace {

/// A child, or several texts in a row: in a markup these are one.
struct Unit {
  Node* first;
  Node* last;
};

bool same_attributes(const Element& a, const Element& b) {
  return std::ranges::equal(a.attributes(), b.attributes(), [](const Attribute& x, const Attribute& y) {
    return x.name == y.name && x.name_space == y.name_space && x.value == y.value;
  });
}

bool same_node(const Node& a, const Node& b) {
  if (a.type() != b.type()) return false;
  if (const auto* text = as<CharacterData>(&a)) return text->data() == as<CharacterData>(&b)->data();
  const auto *one = as<Element>(&a), *other = as<Element>(&b);
  if (!one) return true;
  return one->name() == other->name() && one->name_space() == other->name_space() &&
         same_attributes(*one, *other) &&
         (!one->template_content() || !other->template_content() ||
          serialise_children(*one->template_content()) == serialise_children(*other->template_content()));
}

/// Both trees are gone through side by side.
bool same_tree(const Node& a, const Node& b) {
  const Node *x = &a, *y = &b;
  for (;;) {
    if (!same_node(*x, *y)) return false;
    const Node *next_x = x->first_child(), *next_y = y->first_child();
    while (!next_x && !next_y) {
      if (x == &a) return true;
      next_x = x->next_sibling();
      next_y = y->next_sibling();
      x = x->parent();
      y = y->parent();
    }
    if (!next_x || !next_y) return false;
    x = next_x;
    y = next_y;
  }
}

std::vector<Unit> units_of(const Node& parent) {
  std::vector<Unit> units;
  bool in_text = false;
  for (Node* child = parent.first_child(); child; child = child->next_sibling()) {
    const auto* text = as<Text>(child);
    if (text && text->length() == 0) continue;
    if (text && in_text)
      units.back().last = child;
    else
      units.push_back({child, child});
    in_text = text != nullptr;
  }
  return units;
}

bool same_unit(const Unit& a, const Unit& b) {
  return a.first == a.last && b.first == b.last && same_tree(*a.first, *b.first);
}

/// Whether one can be made the other by changing what is in it.
bool can_become(const Unit& a, const Unit& b) {
  if (a.first != a.last || b.first != b.last || a.first->type() != b.first->type()) return false;
  const auto *one = as<Element>(a.first), *other = as<Element>(b.first);
  if (!one) return as<CharacterData>(a.first) != nullptr;
  return one->name() == other->name() && one->name_space() == other->name_space();
}

void take_letters(CharacterData& text, const std::u16string& from) {
  const std::u16string& data = text.data();
  const std::size_t shorter = std::min(data.size(), from.size());
  std::size_t head = 0, tail = 0;
  while (head < shorter && data[head] == from[head]) ++head;
  while (tail < shorter - head && data[data.size() - 1 - tail] == from[from.size() - 1 - tail]) ++tail;
  replace_data(text, head, data.size() - head - tail,
               std::u16string_view(from).substr(head, from.size() - head - tail));
}

void take_attributes(Element& element, const Element& from) {
  if (same_attributes(element, from)) return;
  const auto remove_all = [&](const auto& goes) {
    std::vector<Name> names;
    for (const Attribute& each : element.attributes())
      if (goes(each)) names.push_back(each.name);
    for (const Name name : names) remove_attribute(element, name);
  };
  const auto set_all = [&] {
    for (const Attribute& each : from.attributes())
      set_attribute(element, each.name, each.value, each.name_space);
  };
  remove_all([&](const Attribute& each) { return !from.has_attribute(each.name); });
  set_all();
  if (same_attributes(element, from)) return;
  // They stand in another order.
  remove_all([](const Attribute&) { return true; });
  set_all();
}

Node& content_of(Node& node) {
  auto* element = as<Element>(&node);
  return element && element->template_content() ? *element->template_content() : node;
}

using Pairs = std::vector<std::pair<Ref<Node>, Ref<Node>>>;

/// Puts new children in the place of the old ones, all but `head` at the start and `tail` at the end.
void replace_units(Node& parent, const std::vector<Unit>& old, const std::vector<Unit>& fresh,
                   std::size_t head, std::size_t tail) {
  Node* const before = tail > 0      ? old[old.size() - tail].first
                       : old.empty() ? nullptr
                                     : old.back().last->next_sibling();
  for (std::size_t i = head; i < old.size() - tail; ++i)
    for (Node* node = old[i].first;;) {
      Node* const next = node == old[i].last ? nullptr : node->next_sibling();
      remove(*node);
      if (!next) break;
      node = next;
    }
  for (std::size_t i = head; i < fresh.size() - tail; ++i) insert(parent, fresh[i].first, before);
}

/// Makes the children of one those of the other; what has to be gone into is added to the pairs.
void change_children(Node& parent, Node& from, Pairs& pairs) {
  const std::vector<Unit> old = units_of(parent), fresh = units_of(from);
  const std::size_t shorter = std::min(old.size(), fresh.size());
  std::size_t head = 0, tail = 0;
  while (head < shorter && same_unit(old[head], fresh[head])) ++head;
  while (tail < shorter - head && same_unit(old[old.size() - 1 - tail], fresh[fresh.size() - 1 - tail]))
    ++tail;
  const std::size_t count = old.size() - head - tail;
  bool pairwise = count == fresh.size() - head - tail;
  for (std::size_t i = head; pairwise && i < head + count; ++i) pairwise = can_become(old[i], fresh[i]);
  if (!pairwise) return replace_units(parent, old, fresh, head, tail);
  for (std::size_t i = head; i < head + count; ++i) {
    Node &node = *old[i].first, &wanted = *fresh[i].first;
    if (auto* text = as<CharacterData>(&node)) {
      take_letters(*text, as<CharacterData>(&wanted)->data());
    } else if (auto* element = as<Element>(&node)) {
      take_attributes(*element, *as<Element>(&wanted));
      pairs.emplace_back(&content_of(node), &content_of(wanted));
    }
  }
}

}  // namespace

void change_content(Element& element, std::u16string_view html) {
  const Ref<Element> keep = &element;
  const Ref<DocumentFragment> fresh = parse_fragment(document_of(element), context_of(element), html);
  Pairs pairs{{&content_of(element), fresh.get()}};
  while (!pairs.empty()) {
    const auto [node, from] = std::move(pairs.back());
    pairs.pop_back();
    change_children(*node, *from, pairs);
  }
}

}  // namespace tvx::dom
