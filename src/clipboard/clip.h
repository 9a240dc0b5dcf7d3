#pragma once

#include "tvx/platform/message_window.h"

namespace tvx::platform {
class Clipboard;
}

namespace tvx::clipboard {

/// The clipboard's and the edit commands of a text box, sent to its window as messages. Whoever watches that
/// window's messages has a word in it.
class clsClip {
 public:
  /// Null: there is no clipboard.
  explicit clsClip(platform::Clipboard* clipboard) : clipboard_(clipboard) {}

  void Cut(platform::WindowHandle hwnd) const;
  void Copy(platform::WindowHandle hwnd) const;
  void Paste(platform::WindowHandle hwnd) const;
  /// Asks first whether there is something to undo.
  void Undo(platform::WindowHandle hwnd) const;
  void Redo(platform::WindowHandle hwnd) const;
  bool CanUndo(platform::WindowHandle hwnd) const;
  /// Whether there is plain text to paste.
  bool CanPaste() const;
  /// Takes out what is selected.
  void Delete(platform::WindowHandle hwnd) const;

 private:
  platform::Clipboard* clipboard_;
};

}  // namespace tvx::clipboard
