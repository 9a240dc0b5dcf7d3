#pragma once

#include <string>
#include <string_view>

#include "tvx/editing/editor.h"

/// The gestures of a person at the keyboard. Each is one undo step; typed text coalesces into runs.
namespace tvx::editing {

/// Types a text at the selection as a person would: replaces what is selected, takes the pending style.
/// A line break in it is Enter. False where nothing can be typed.
bool type_text(Editor& editor, std::u16string_view text);
bool press_enter(Editor& editor);        // a new paragraph, list item...
bool press_shift_enter(Editor& editor);  // a line break
bool delete_backward(Editor& editor);    // one character as the user sees it, or joins blocks
bool delete_forward(Editor& editor);
bool delete_word_backward(Editor& editor);
bool delete_word_forward(Editor& editor);
/// In a table: the next cell, a row more at the end. Else in a list: the items that are selected go one level
/// deeper, or backward one level out. Elsewhere it isn't the editor's.
bool press_tab(Editor& editor, bool backward);

}  // namespace tvx::editing
