#pragma once

#include <optional>

#include "tvx/dom/range.h"
#include "tvx/editing/walk/caret.h"

/// Moves by a line. Where lines are the view knows; what a caret may stand in, the document.
namespace tvx::editing {

/// A position between blocks that a move by a line comes by, where nothing can be typed on either side: after
/// a table that ends the page or a cell, between two rules. `to` is where the next line is; `from` itself if
/// there is none.
std::optional<dom::Boundary> gap_between_lines(const dom::Boundary& from, const dom::Boundary& to,
                                               Direction direction);

/// Where a caret goes that would stand in what may not be edited: in the midst of a line beside it, else past
/// it, from where the next line is to be asked for.
struct Passed {
  dom::Boundary place;
  bool in_line = false;
};
std::optional<Passed> past_island(const dom::Boundary& place, Direction direction);

}  // namespace tvx::editing
