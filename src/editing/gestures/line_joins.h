#pragma once

#include "tvx/editing/editor.h"
#include "tvx/editing/walk/caret.h"

/// Lines that Backspace and Delete join: what is joined comes into the line before it as it is, and brings no
/// style of the block that it stood in.
namespace tvx::editing {

/// Joins the line of a caret with the one before or after it, where the caret stands at that edge of it and
/// both are blocks of text. Lines of preformatted text stay lines. False where that isn't so.
bool join_lines(Editor& editor, Direction direction);

/// An empty line beside a table goes, and the caret into the cell that is nearest. False elsewhere.
bool leave_empty_line_beside_table(Editor& editor, Direction direction);

}  // namespace tvx::editing
