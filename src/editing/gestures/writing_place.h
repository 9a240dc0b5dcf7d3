#pragma once

#include "tvx/editing/editor.h"

/// Where what a writer types goes: into a line that stands in a paragraph, an item, a heading or a cell by
/// itself, never bare between blocks.
namespace tvx::editing {

/// Whether elements of a line that nothing is left in stay for what is typed next.
enum class Wrappers : bool { Strip, Keep };
/// Takes out what is selected: cells are emptied, islands go, lines leave their last line's end. Nothing at a
/// caret.
void take_out_selection(Editor& editor, Wrappers wrappers);

/// A selection that starts between blocks and ends in a line starts in the first line of the block after its
/// start, which is where it is seen to start.
void start_in_line(Editor& editor);

/// Whether what is left of the selection's first and last line is one line after it is deleted: the text of a
/// cell stays in its cell, and beside a table or rule there is no line.
bool ends_in_lines_that_join(Editor& editor);

/// After a deletion a caret between two blocks wants a line of its own; else it goes to the line after it.
enum class BetweenBlocks : bool { GoToNextLine, MakeParagraph };
/// Brings a caret that stands between blocks, items or cells into a line; makes a paragraph where there is
/// none, and then the answer is true.
bool stand_in_line(Editor& editor, BetweenBlocks between = BetweenBlocks::GoToNextLine);

/// Whether a selection starts in a line, and not between blocks.
bool starts_in_line(Editor& editor);

/// Gives the line of a caret a break that holds it open, where a deletion has taken all that was in it.
void hold_emptied_line(Editor& editor, Wrappers wrappers);

/// A line that stands beside blocks in a box, a cell or an item gets a paragraph, and so does an empty one in
/// the body.
void wrap_line_beside_blocks(Editor& editor);

/// Gives the bare line at a position among what `holder` holds a paragraph, if one may stand there; a caret
/// in the line stays in it.
void wrap_line_at(Editor& editor, dom::Element& holder, const dom::Boundary& place);

/// A line that stands in no block and has a break in an element of the line, so that the element reaches over
/// lines, gets a paragraph of its own: else a new one would stand in that element.
void wrap_line_parted_in_style(Editor& editor);

void collapse_keeping_style(Editor& editor, dom::Boundary place);

}  // namespace tvx::editing
