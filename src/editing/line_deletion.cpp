#include "editing/line_deletion.h"

#include "dom/tree.h"
#include "editing/caret.h"
#include "editing/content_walk.h"
#include "editing/copied_content.h"
#include "editing/deletion.h"
#include "editing/editor.h"
#include "editing/paste_lines.h"
#include "editing/predicates.h"
#include "editing/surgery.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

bool begins_line(const Boundary& place) {
  const ContentKind before = content_beside(place, Direction::Backward).kind;
  return before != ContentKind::Text && before != ContentKind::Object && before != ContentKind::LineBreak;
}

bool has_visible_before(const Node& node) {
  for (const Node* before = node.previous_sibling(); before; before = before->previous_sibling())
    if (is_visible(*before)) return true;
  return false;
}

/// The outermost block that begins with this one and doesn't hold the line behind.
Node* outermost_beginning_with(Node* block, const Node& behind) {
  const Node* common = dom::common_ancestor(*block, behind);
  while (block->parent() != common && !has_visible_before(*block)) block = block->parent();
  return block;
}

}  // namespace

bool delete_selected_lines(Editor& editor) {
  Selection& selection = editor.selection();
  const dom::Range range = selection.range();
  if (selection.type() != SelectionType::Text || range.collapsed()) return false;
  const dom::Range seen = shrunk_to_characters(range);
  if (seen.collapsed() || !begins_line(seen.start) || !takes_line_end(range, seen)) return false;
  const auto next = next_caret_place(seen.end, Direction::Forward, Granularity::Character);
  Element* first = block_around(seen.start);
  const Ref<Element> behind(block_around(*next));
  if (!first || !behind || dom::is_inclusive_ancestor(*first, *behind) || dom::is_ancestor(*behind, *first) ||
      !is_editable(*first) || !is_editable(*behind))
    return false;
  selection.set(dom::before(*outermost_beginning_with(first, *behind)), {behind.get(), 0});
  delete_selection(editor, {.block_merging = false});
  if (behind->parent()) selection.collapse(normalized_caret_place({behind.get(), 0}));
  return true;
}

}  // namespace tvx::editing
