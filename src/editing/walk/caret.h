#pragma once

#include <cstdint>
#include <optional>

#include "tvx/dom/range.h"

/// Where a caret can stand, and the moves that need no layout. Up, Down, Home and End are asked of the view.
namespace tvx::editing {

class Editor;

enum class Direction : std::uint8_t { Backward, Forward };
enum class Granularity : std::uint8_t { Character, Word, Document };

/// The next position for a caret: one grapheme or one word on, one step over a block's edge or a line break.
/// Nothing that is not seen makes a step: collapsed white space, comments, hidden elements. Images, form
/// fields and what is not editable are stepped over as a whole. None at the end of the editing host.
std::optional<dom::Boundary> next_caret_place(dom::Boundary from, Direction direction,
                                              Granularity granularity);

enum class Extend : bool { No, Yes };
/// Moves the selection's focus, or the caret. A selection that is not extended collapses to its end first.
/// Ends a run of typing. False where there is nowhere to go.
bool move_caret(Editor& editor, Direction direction, Granularity granularity, Extend extend);

/// The nearest position where a caret can stand: into the text beside it if there is one, out of what holds
/// no text (a table between its cells). The position itself if there is no other.
dom::Boundary normalized_caret_place(dom::Boundary place);

}  // namespace tvx::editing
