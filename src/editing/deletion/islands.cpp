#include "tvx/editing/deletion/islands.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;

namespace {

/// What stands beside a caret, over the edges of blocks: an island, or nothing.
Node* island_beside(const Boundary& caret, bool forward) {
  const auto* text = dom::as<dom::Text>(caret.node);
  if (text && caret.offset != (forward ? text->length() : 0)) return nullptr;
  Gap gap = text ? (forward ? Gap::after(*caret.node) : Gap::before(*caret.node)) : Gap::at(caret);
  for (;;) {
    Node* child = forward ? gap.next : gap.previous();
    if (!child) {
      if (is_editing_host(*gap.node) || !gap.node->parent()) return nullptr;
      if (gap.node->is(dom::Tag::Td) || gap.node->is(dom::Tag::Th)) return nullptr;
      gap = forward ? Gap::after(*gap.node) : Gap::before(*gap.node);
    } else if (is_island(*child)) {
      return child;
    } else if (is_filling(*child) || (child->is(dom::Tag::Br) && forward && !child->next_sibling())) {
      gap = forward ? Gap::after(*child) : Gap::before(*child);
    } else if (child->is_element() && is_inline_node(*child) && child->has_children()) {
      gap = forward ? Gap::start_of(*child) : Gap::end_of(*child);
    } else {
      return nullptr;
    }
  }
}

}  // namespace

bool delete_island(Editor& editor, Direction direction) {
  if (!editor.selection().collapsed()) return false;
  Node* island = island_beside(editor.selection().focus(), direction == Direction::Forward);
  if (!island) return false;
  const Ref<Node> holder(island->parent());
  dom::remove(*island);
  if (is_block_node(*holder) && !has_visible_child(*holder)) append_line_break(*holder);
  editor.selection().collapse(normalized_caret_place(editor.selection().focus()));
  return true;
}

void remove_islands(Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (!range.start || editor.selection().type() != SelectionType::Text) return;
  NodeList islands;
  walk_contained(range, [&](Node& node) {
    if (!is_island(node)) return Visit::Children;
    islands.emplace_back(node);
    return Visit::Skip;
  });
  for (const Ref<Node>& island : islands) dom::remove(*island);
}

}  // namespace tvx::editing
