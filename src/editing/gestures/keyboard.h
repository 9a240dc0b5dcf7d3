#pragma once

#include <cstdint>
#include <string>

namespace tvx::editing {

class Editor;

/// A key going down, as the DOM names it.
struct KeyPress {
  std::u16string key;   // UI Events standard: "Enter", "ArrowLeft", "Backspace", or the character
  std::u16string text;  // what it types, empty for keys that type nothing
  bool control = false, shift = false, alt = false;
};

enum class KeyResult : std::uint8_t {
  Done,     // handled here
  AskView,  // a caret move that needs the layout: Up, Down, Home, End, page keys
  AskLink,  // the user wants a link: somebody must ask for its address
  NotMine   // a key with no meaning in a document
};

/// What a key does in an editable document when nobody has taken it away: typing, deletion, caret moves
/// without layout, and the shortcuts Ctrl+B, I, U, K, A, Z, Y, Shift+Ctrl+Z, and Shift+Ctrl+V
/// for pasting as plain text, Shift+Ctrl+Space for a space that no line is broken at.
KeyResult press_key(Editor& editor, const KeyPress& key);

}  // namespace tvx::editing
