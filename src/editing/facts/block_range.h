#pragma once

#include "tvx/dom/range.h"
#include "tvx/editing/facts/gap.h"

/// Editing commands standard, section "Block-extending a range".
namespace tvx::editing {

/// The range stretched to whole blocks and lines. A `br` ends a line and belongs to it.
dom::Range block_extend(dom::Range range);
/// The same where an item is no whole: what stands in it beside the lines, such as a list of its own, isn't
/// taken in.
dom::Range line_extend(dom::Range range);

bool is_block_start(const Gap& gap);
bool is_block_end(const Gap& gap);
bool follows_line_break(dom::Node& node);
bool precedes_line_break(dom::Node& node);
/// What is seen next to a node in its line, on the way out of it; null: the line begins or ends there.
dom::Node* seen_before_in_line(dom::Node& node);
dom::Node* seen_after_in_line(dom::Node& node);

/// Section "Assorted block formatting command algorithms": other boundaries that look the same to a person.
dom::Boundary first_equivalent_point(dom::Boundary place);
dom::Boundary last_equivalent_point(dom::Boundary place);
/// Nothing where there is none (a boundary without a node).
dom::Boundary previous_equivalent_point(dom::Boundary place);
dom::Boundary next_equivalent_point(dom::Boundary place);

}  // namespace tvx::editing
