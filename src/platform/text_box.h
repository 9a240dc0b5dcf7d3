#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/message_window.h"

namespace tvx::platform {

class Clipboard;

// The messages that edit a box.
inline constexpr Message EM_REPLACESEL = 0x00C2, EM_CANUNDO = 0x00C6, EM_UNDO = 0x00C7, EM_REDO = 1108;

/// A press or a move of the mouse in a box: buttons and keys as hosts number them, positions in twips.
struct BoxMouse {
  std::int16_t Button = 0, Shift = 0;  // 1 left, 2 right, 4 middle; 1 Shift, 2 Control, 4 Alt
  float X = 0, Y = 0;
};

/// What a box raises.
class TextBoxHandler {
 public:
  virtual ~TextBoxHandler() = default;
  virtual void Click() {}
  virtual void DblClick() {}
  /// A key code set to 0 takes the key away from the box.
  virtual void KeyDown(std::int16_t& /*KeyCode*/, std::int16_t /*Shift*/) {}
  virtual void KeyPress(std::int16_t& /*KeyAscii*/) {}
  virtual void KeyUp(std::int16_t& /*KeyCode*/, std::int16_t /*Shift*/) {}
  virtual void MouseDown(const BoxMouse&) {}
  virtual void MouseMove(const BoxMouse&) {}
  virtual void MouseUp(const BoxMouse&) {}
  /// The user changed the text. A text that is put in from outside is no change.
  virtual void Change() {}
  virtual void SelChange() {}
  virtual void GotFocus() {}
  /// Whether TakeBack() would find something, and taking an edit back (`again`: doing it again) in the place
  /// of the box. False: the box does it by its own history.
  virtual bool CanTakeBack(bool /*again*/) { return false; }
  virtual bool TakeBack(bool /*again*/) { return false; }
};

/// A box of plain text in lines that don't wrap, with an undo stack of its own: what a source editor wants of
/// a window system. Positions count 16-bit units, a line break counts as one; texts go in with whatever line
/// ends and come out with CR LF.
class TextBox : public MessageWindow {
 public:
  void set_handler(TextBoxHandler* handler) { handler_ = handler; }
  /// Where the box copies to and pastes from; null: nowhere.
  void set_clipboard(Clipboard* clipboard) { clipboard_ = clipboard; }

  virtual std::u16string Text() const = 0;
  /// Begins a new undo history and raises nothing.
  virtual void set_Text(std::u16string_view text) = 0;
  virtual std::size_t length() const = 0;
  virtual std::size_t SelStart() const = 0;
  virtual std::size_t SelLength() const = 0;
  /// Selects; what lies after the text is cut off.
  virtual void select(std::size_t start, std::size_t length) = 0;
  virtual std::u16string SelText() const = 0;
  /// Replaces the selection, as the user's edit; the caret stands after it.
  virtual void set_SelText(std::u16string_view text) = 0;
  /// A stretch and what is to stand there.
  struct Replacement {
    std::size_t start = 0, length = 0;
    std::u16string text;
  };
  /// Replaces stretches, which are in order, as one edit of the user's; the caret stands after the last one.
  virtual void replace(const std::vector<Replacement>& replacements) = 0;
  /// Replaces a stretch as no edit of the user's: nobody is told, the caret and the lines in sight stay on
  /// what they are on, and the history of edits begins anew.
  virtual void follow(std::size_t start, std::size_t length, std::u16string_view text) = 0;
  struct Stretch {
    std::size_t start = 0, length = 0;
    friend bool operator==(const Stretch&, const Stretch&) = default;
  };
  /// Marks stretches as hits of a search, and one of them, by its number, as the one in hand. They go with
  /// the text that they mark, and away with another text.
  virtual void show_hits(const std::vector<Stretch>& hits, std::size_t present) = 0;
  virtual bool can_undo() const = 0;
  virtual bool can_redo() const = 0;
  virtual void Undo() = 0;
  virtual void Redo() = 0;

  virtual std::size_t line_count() const = 0;
  virtual std::size_t line_of(std::size_t place) const = 0;
  virtual std::size_t first_visible_line() const = 0;

  virtual bool Enabled() const = 0;
  virtual void set_Enabled(bool enabled) = 0;
  /// A locked box shows, and takes no edits of the user's.
  virtual bool Locked() const = 0;
  virtual void set_Locked(bool locked) = 0;
  virtual bool has_focus() const = 0;
  virtual void SetFocus() = 0;
  virtual void Refresh() = 0;

  /// Whether the Control key is down, as of the key being delivered (GetAsyncKeyState of VK_CONTROL).
  bool control_key_down() const { return control_down_; }

 protected:
  MessageResult handle_message(Message message, Parameter wParam, Parameter lParam) override;
  /// A key goes down: through the chain of the window's procedures, to on_key() if nobody takes it.
  void send_key_down(std::int16_t key_code, std::int16_t shift);
  /// What the box does with a key that has come through.
  virtual void on_key(std::int16_t key_code, std::int16_t shift) = 0;

  TextBoxHandler* handler() const { return handler_; }
  Clipboard* clipboard() const { return clipboard_; }

 private:
  void copy();
  TextBoxHandler* handler_ = nullptr;
  Clipboard* clipboard_ = nullptr;
  std::int16_t shift_ = 0;
  bool control_down_ = false;
};

}  // namespace tvx::platform
