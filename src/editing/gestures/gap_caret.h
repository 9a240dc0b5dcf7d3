#pragma once

#include <optional>

#include "tvx/editing/editor.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/walk/caret.h"

/// Positions of a caret beside what it can't go into: before the first table, between two rules, at
/// the end of a link's text.
namespace tvx::editing {

/// A position between blocks where no line is: on each side a table, a rule or what may not be edited, or the
/// edge of what holds them.
bool is_gap_place(const dom::Boundary& place);
bool is_gap_place(const Gap& gap);
/// The first such position on the way from a caret to where it would go next.
std::optional<dom::Boundary> gap_on_the_way(const dom::Boundary& from, Direction direction);

/// Moves the caret to the gap beside it. False where its next position is in a text.
bool move_to_gap(Editor& editor, Direction direction, Extend extend);
/// Moves a caret at the edge of what was selected (a table, for instance) and where no line is to the line on
/// that side.
void leave_selected_block(Editor& editor, Direction direction);
/// Moves a caret that a gesture has left between two blocks to a line beside it, in the style chosen for it.
void leave_blocks_edge(Editor& editor);
/// Makes a paragraph where the caret stands in a gap, and puts the caret in it.
bool fill_gap(Editor& editor);
/// Backspace in a gap: removes the rule before it, or moves the caret into the table before it.
bool leave_gap_backward(Editor& editor);

/// Moves a caret at the start or end of a link's content out of the link, so that the next text is none.
/// False elsewhere.
bool leave_link(Editor& editor, Direction direction);

}  // namespace tvx::editing
