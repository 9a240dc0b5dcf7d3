#pragma once

#include <algorithm>
#include <string>

#include "fuzz_input.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/range.h"
#include "tvx/dom/tree.h"

/// What holds of every tree, whatever was done to it.
namespace tvx::fuzz {

/// Links between nodes agree in both directions, and counts are right.
inline void require_sound_links(const dom::Node& root) {
  for (const dom::Node* node = &root; node; node = dom::next_in_order(*node, &root)) {
    std::size_t count = 0;
    const dom::Node* last = nullptr;
    for (const dom::Node* child = node->first_child(); child; child = child->next_sibling()) {
      require(child->parent() == node, "a child knows its parent");
      require(child->previous_sibling() == last, "siblings know each other");
      last = child;
      ++count;
    }
    require(node->last_child() == last, "the last child is the last");
    require(node->child_count() == count, "children are counted");
  }
}

/// The order of elements, and the collections made of it, are what a walk finds.
inline void require_sound_order(dom::Document& document) {
  std::size_t at = 0;
  const auto& all = document.all();
  const dom::Collection paragraphs(document, dom::CollectionKind::Tag, u"p");
  std::size_t found = 0;
  for (const dom::Node* node = &document; node; node = dom::next_in_order(*node)) {
    if (!node->is_element()) continue;
    require(at < all.size() && all[at] == node, "all elements are in document order");
    require(document.source_index(*all[at]) == at, "an element knows its place");
    if (node->is(dom::Tag::P)) {
      require(paragraphs.item(found) == node, "a collection is live");
      ++found;
    }
    ++at;
  }
  require(at == all.size(), "no element is left over");
  require(found == paragraphs.length(), "a collection holds no more than there is");
}

inline void require_place(const dom::Boundary& place) {
  require(place.node != nullptr, "a range stands somewhere");
  require(place.offset <= dom::length_of(*place.node), "a range stands within its node");
}

/// A live range stands within the tree, its start not after its end.
inline void require_sound_range(const dom::LiveRange& range) {
  require_place(range.start());
  require_place(range.end());
  if (&dom::root_of(*range.start().node) == &dom::root_of(*range.end().node))
    require(dom::compare(range.start(), range.end()) <= 0, "a range keeps its direction");
}

}  // namespace tvx::fuzz
