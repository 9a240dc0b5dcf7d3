#pragma once

#include "tvx/editing/editor.h"
#include "tvx/editing/inline/recorded_values.h"

/// What Enter and Shift+Enter do beyond the commands: the way out of quotations and preformatted text, lines
/// that stand beside blocks, and the style that goes on. The undo step is the caller's.
namespace tvx::editing {

/// Enter at a caret: a new line with the caret at its start, in the style that was typed in.
void start_line(Editor& editor);
/// Shift+Enter: a line break, and none too many.
void break_line(Editor& editor);

/// A break at the end of a line that holds nothing open any more, in the block of the caret.
void drop_spare_break(Editor& editor);
/// The line before had come to its end by a break, which ends nothing where a block of its own comes after
/// it.
void drop_end_break_before(const dom::Element* line);
/// The style of the next letter, which goes on when the caret comes to another line: all but the link, which
/// ends with its text.
RecordedLook style_that_goes_on(Editor& editor);
/// From here on typing has that style, whatever stands around the caret, but for what the line that it was
/// typed in gives all its text.
void go_on_in_style(Editor& editor, const RecordedLook& style, const dom::Element* line_before = nullptr);
/// The next text is no link, whatever was deleted here.
void forget_link(Editor& editor);

}  // namespace tvx::editing
