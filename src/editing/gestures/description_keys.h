#pragma once

/// What Enter does in description lists beyond the command, by which a term follows a description and a
/// description a term. The undo step is the caller's.
namespace tvx::editing {

class Editor;

/// Enter in an empty part at a list's end: a paragraph after the list takes its place. The command would part
/// the list there and leave one that holds nothing but the white space of the source. False where the caret
/// isn't so.
bool leave_empty_description(Editor& editor);

}  // namespace tvx::editing
