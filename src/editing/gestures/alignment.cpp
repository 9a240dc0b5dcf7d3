#include "tvx/editing/gestures/alignment.h"

#include <algorithm>
#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/justification.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool holds_blocks(const Element& block) {
  for (const Node* node = block.first_child(); node; node = node->next_sibling())
    if (is_block_piece(*node)) return true;
  return false;
}

bool can_say_it(const Element& block) {
  return is_editable(block) && (is_text_block(block) || is_cell(block)) && !is_editing_host(block) &&
         !holds_blocks(block);
}

/// The blocks of the selected lines, in order; nothing if one of them has none.
std::vector<Ref<Element>> lines_of(const dom::Range& range) {
  std::vector<Ref<Element>> lines;
  const auto take = [&](const dom::Boundary& place) {
    Element* block = block_around(place);
    if (!block || !can_say_it(*block)) return false;
    if (lines.empty() || lines.back().get() != block) lines.emplace_back(block);
    return true;
  };
  if (!take(range.start)) return {};
  for (Node* node = range.start.node; node; node = dom::next_in_order(*node)) {
    if (dom::compare(dom::before(*node), range.end) >= 0) break;
    if (dom::compare(dom::before(*node), range.start) < 0) continue;
    const bool stands_in_line =
        node->is(Tag::Br) || is_object(*node) || (node->is_text() && !is_filling(*node));
    if (stands_in_line && !take(dom::before(*node))) return {};
  }
  return take(range.end) ? lines : std::vector<Ref<Element>>();
}

}  // namespace

bool align_block(Element& block, std::u16string_view alignment) {
  if (holds_blocks(block)) return false;
  dom::remove_attribute(block, dom::names::align);
  dom::style::remove_inline_value(block, u"text-align");
  if (alignment_of(block) != alignment) dom::style::set_inline_value(block, u"text-align", alignment);
  return true;
}

bool align_lines(Editor& editor, std::u16string_view alignment) {
  // A picture that is selected is aligned by the line it stands in.
  const Selection& selection = editor.selection();
  if (selection.type() == SelectionType::None) return false;
  dom::Range range = selection.range();
  if (!range.collapsed())
    if (const dom::Range seen = shrunk_to_characters(range); seen.start) range = seen;
  const std::vector<Ref<Element>> lines = lines_of(range);
  for (const Ref<Element>& line : lines) align_block(*line, alignment);
  return !lines.empty();
}

}  // namespace tvx::editing
