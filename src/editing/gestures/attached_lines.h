#pragma once

#include "tvx/dom/range.h"
#include "tvx/editing/walk/caret.h"

/// Lines that belong to something and have a place there: the caption of a table, the legend of a group, the
/// summary of details. They aren't parted in two, and no line from elsewhere comes into them.
namespace tvx::editing {

/// The one that a caret stands in; not where it stands in a paragraph or a list of one. A heading within a
/// summary is its line.
dom::Element* attached_line(const dom::Boundary& caret);

/// Enter in such a line: a break, and at the end of a legend or a summary a paragraph after it. After the
/// summary of closed details that is one after these, since nobody would see it in them. False elsewhere.
bool start_line_in_attached(Editor& editor);
/// Backspace or Delete at an edge between such a line and another: true where they stay two. An empty caption
/// or legend goes.
bool keep_attached_line(Editor& editor, Direction direction);

}  // namespace tvx::editing
