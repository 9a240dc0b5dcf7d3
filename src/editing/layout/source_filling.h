#pragma once

#include "tvx/editing/editor.h"
#include "tvx/editing/walk/caret.h"

/// White space that parts blocks and lines in the source, of which a reader sees nothing, or one blank.
namespace tvx::editing {

/// What was put around lines has taken in the white space beside them, which parts them from their neighbours
/// in the source: it goes back there. The caret stays in the line.
void give_back_filling(Editor& editor, dom::Element& made);

/// Takes out the white space that a line begins with, or ends with where the direction is backward.
void trim_filling(dom::Element& line, Direction direction);

/// Where the source goes on in another line beside a caret, all of the white space there is one blank, and
/// goes as one; true then. At the start of a line nobody sees it: it goes with the break before it, which is
/// left to be deleted.
bool delete_source_line_end(Editor& editor, Direction direction);

}  // namespace tvx::editing
