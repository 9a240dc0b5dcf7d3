#pragma once

namespace tvx::editing {

class Editor;

/// Deletes the selection if it is made of whole lines: from the start of one to the start of a later one.
/// They go with their blocks, and the line after it stays in its own. False, and nothing happens, if it is
/// not.
///
/// OURS: the standard joins that line to the block of the first, so that a paragraph after a heading that
/// was taken out whole would become the heading.
bool delete_selected_lines(Editor& editor);

/// What is typed over whole lines takes their place and leaves the end of the last one: a triple press on a
/// heading selects to the start of the next line, which is not meant to become a part of the heading.
void leave_line_end(Editor& editor);

/// Backspace and Delete beside an empty line, which goes with its block, so that the line on its other side
/// stays what it is: a heading after an empty paragraph stays a heading. An empty item goes without leaving
/// a line break in the one before. False where the caret isn't beside one.
bool delete_empty_line_backward(Editor& editor);
bool delete_empty_line_forward(Editor& editor);

}  // namespace tvx::editing
