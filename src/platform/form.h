#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/form_control.h"
#include "tvx/platform/list_view.h"
#include "tvx/platform/loaded_dialogs.h"
#include "tvx/platform/message_window.h"

/// Dialogs as models: named controls that a desktop draws, a script sets and a user fills. What a dialog does
/// is written once, in its subsystem; its style is a face's business. No widget in sight.
namespace tvx::platform {

/// Who acts on what happens in a form.
class FormHandler {
 public:
  virtual ~FormHandler() = default;
  /// The user pressed a button, turned a check box, or picked from a list that stays open, be it what was
  /// chosen already. What it throws ends the press; the form stays open.
  virtual void Click(FormControl&) {}
  /// In a list that stays open; a Click has come before.
  virtual void DblClick(FormControl&) {}
  /// The text, the choice or the tick is another one, whoever has changed it.
  virtual void Change(FormControl&) {}
  /// The user has stepped a number with the arrows beside it.
  virtual void Step(FormControl&) {}

  // Of boxes that report their keys. A code or a character set to 0 takes it away. `Shift`: 1 Shift, 2
  // Control, 4 Alt.
  virtual void KeyDown(FormControl&, std::int16_t& /*KeyCode*/, std::int16_t /*Shift*/) {}
  virtual void KeyPress(FormControl&, std::int16_t& /*KeyAscii*/) {}
  virtual void KeyUp(FormControl&, std::int16_t& /*KeyCode*/, std::int16_t /*Shift*/) {}

  /// The form has come to the front for the first time since it is shown. Work that takes its time is done
  /// here, with the message loop running.
  virtual void Activate(Form&) {}
  /// The form has been painted: when it is shown, and when what covered it has gone.
  virtual void Paint(Form&) {}
};

/// Who draws a form.
class FormObserver {
 public:
  virtual ~FormObserver() = default;
  /// Some member of the control is another one.
  virtual void control_changed(FormControl& control) = 0;
  /// The form's caption is another one.
  virtual void caption_changed(Form& form) = 0;
  virtual void form_hidden(Form& form) = 0;
  /// The form wants another control to have the keyboard.
  virtual void focus_wanted(FormControl&) {}
};

/// A row of controls, side by side: labels stand before what they name, buttons after the box that they
/// serve. Rows stand below each other in their frame.
struct FormRow {
  FormControl* frame;  // null: on the form itself
  std::vector<FormControl*> controls;
};

/// A dialog. It is loaded from its making to its end, and is shown in between (`Forms`). Controls are made
/// in the order in which the Tab key goes through them, and stay as long as the form.
class Form final : public MessageWindow {
 public:
  Form(std::u16string name, std::u16string caption);
  ~Form() override;

  const std::u16string& Name() const { return loaded_.Name(); }
  const std::u16string& Caption() const { return caption_; }
  void set_Caption(std::u16string_view caption);

  // --- its making ---
  /// A group with a title; rows go into it. Frames may stand in frames.
  FormControl& add_frame(std::u16string name, std::u16string caption, FormControl* container = nullptr);
  /// Begins a new row; what is added from now on stands in it.
  void begin_row(FormControl* frame = nullptr);
  FormControl& add_label(std::u16string name, std::u16string caption);
  FormControl& add_text_box(std::u16string name, std::u16string_view text = {});
  /// A list that opens, from which the user picks; it takes no typed text.
  FormControl& add_list(std::u16string name, std::initializer_list<std::u16string_view> items = {});
  /// The same, but it takes typed text too.
  FormControl& add_combo_box(std::u16string name, std::initializer_list<std::u16string_view> items = {});
  /// A list that stays open.
  FormControl& add_list_box(std::u16string name, std::initializer_list<std::u16string_view> items = {});
  /// A list with columns; it takes all the room that there is.
  FormControl& add_list_view(std::u16string name, std::vector<ListColumn> columns);
  FormControl& add_check_box(std::u16string name, std::u16string caption);
  FormControl& add_button(std::u16string name, std::u16string caption);
  FormControl& add_picture(std::u16string name);
  /// A button of the form as a whole, below everything. The face brings them into the desktop's order.
  FormControl& add_closing_button(std::u16string name, std::u16string caption);
  /// What the Return key presses, and what the Escape key and the window's own closing press.
  void set_default_button(FormControl& button) { default_button_ = &button; }
  void set_cancel_button(FormControl& button) { cancel_button_ = &button; }
  void set_handler(FormHandler* handler) { handler_ = handler; }
  /// The user can make it larger, and no smaller than this; in twips.
  void set_least_size(int width, int height) {
    least_width_ = width;
    least_height_ = height;
  }
  /// Its size in twips where nobody draws it, which has to be enough for its rows and no less than the least
  /// one; a desktop's dialog has its own. See form_places.h for where its controls stand.
  float Width() const;
  float Height() const;
  void set_Width(float width) { width_ = width; }
  void set_Height(float height) { height_ = height; }
  int least_width() const { return least_width_; }
  int least_height() const { return least_height_; }
  /// The user goes on reading what is selected in the document: it isn't to stand under the form.
  void leave_selection_in_sight() { leaves_selection_in_sight_ = true; }
  bool leaves_selection_in_sight() const { return leaves_selection_in_sight_; }
  /// Shown beside the work, it takes the user's input from the window meanwhile.
  void take_input() { takes_input_ = true; }
  bool takes_input() const { return takes_input_; }

  // --- its controls ---
  const std::vector<std::unique_ptr<FormControl>>& controls() const { return controls_; }
  /// Null if there is none of that name; names compare without regard to case.
  FormControl* find(std::u16string_view name) const;
  /// Throws RuntimeError(730) if there is none.
  FormControl& Controls(std::u16string_view name) const;
  const std::vector<FormRow>& rows() const { return rows_; }
  const std::vector<FormControl*>& closing_buttons() const { return closing_buttons_; }
  FormControl* default_button() const { return default_button_; }
  FormControl* cancel_button() const { return cancel_button_; }

  // --- showing ---
  /// Whether it is on the screen; a script's screen counts.
  bool Visible() const { return visible_; }
  /// Takes it off the screen: showing it returns. It stays loaded.
  void Hide();
  /// Whoever shows it says so, once, from the loop.
  void activate();
  /// Whether the user has left it by its cancel button, or by giving up.
  bool given_up() const { return given_up_; }
  /// Paints it: whoever draws it does so when it has to.
  void paint();
  /// What has the keyboard; null: nothing yet.
  FormControl* ActiveControl() const { return active_; }
  /// Whoever draws it says what has the keyboard.
  void set_active(FormControl& control) { active_ = &control; }
  /// Gives the keyboard to a control that can be reached.
  void SetFocus(FormControl& control);
  /// The user gives up: presses the cancel button, and where there is none, or it can't be reached or
  /// fails, hides the form.
  void cancel();

  void add_observer(FormObserver& observer);
  void remove_observer(FormObserver& observer);

 private:
  friend class FormControl;
  friend class Forms;
  MessageResult handle_message(Message, Parameter, Parameter) override { return 0; }
  FormControl& add(ControlKind kind, std::u16string name, std::u16string caption);

  LoadedDialog loaded_;
  std::u16string caption_;
  std::vector<std::unique_ptr<FormControl>> controls_;
  std::vector<FormRow> rows_;
  std::vector<FormControl*> closing_buttons_;
  FormControl* default_button_ = nullptr;
  FormControl* cancel_button_ = nullptr;
  FormControl* active_ = nullptr;
  FormHandler* handler_ = nullptr;
  int least_width_ = 0, least_height_ = 0;
  float width_ = 0, height_ = 0;  // as set
  bool leaves_selection_in_sight_ = false, takes_input_ = false;
  std::vector<FormObserver*> observers_;
  bool visible_ = false, given_up_ = false;
};

/// Who shows forms.
class Forms {
 public:
  virtual ~Forms() = default;
  /// Shows the form, modal over its owner, a control or another form, and returns when it is hidden. The
  /// message loop runs meanwhile. A form that is shown already isn't shown once more: RuntimeError(400).
  void Show(Form& form, WindowHandle owner);
  /// Shows the form beside what goes on, and returns at once; nobody waits for it, and the control can be
  /// worked with. It stays until it is hidden. A form that is shown already stays as it is.
  void Open(Form& form, WindowHandle owner);
  /// The names of the fonts of its screen.
  virtual std::vector<std::u16string> fonts() const = 0;

 private:
  /// Returns when the form is hidden; a face that is left in another way hides it.
  virtual void run(Form& form, WindowHandle owner) = 0;
  /// The form may be hidden, and gone, at any time after this.
  virtual void open(Form& form, WindowHandle owner) = 0;
};

}  // namespace tvx::platform
