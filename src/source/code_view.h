#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/text_box.h"
#include "tvx/services/subclass.h"
#include "tvx/source/line_numbers.h"
#include "tvx/source/plain_text_box.h"

namespace tvx::platform {
class PropertyBag;
}

namespace tvx::source {

/// Who shows the box.
class CodeViewObserver {
 public:
  virtual ~CodeViewObserver() = default;
  /// The box was enabled, locked, shown, hidden, or moved to the front or the back.
  virtual void code_view_changed() = 0;
  /// The text is another one: typed, or put in.
  virtual void text_changed() {}
  /// The line numbers are to be painted again.
  virtual void line_numbers_changed() {}
};

/// What the control that holds the box hears: the box's own events, and the names of properties that changed.
class CodeViewEvents : public platform::TextBoxHandler {
 public:
  virtual void PropertyChanged(std::u16string_view /*key*/) {}
};

struct BoxFont {
  std::u16string Name = u"Courier New";
  float Size = 9.75f;
  std::int16_t Weight = 400;
};

/// What a saved code view keeps, and what it reports without applying it.
struct CodeViewProperties {
  std::int32_t BackColor = 0, ForeColor = 0;
  BoxFont Font;
  std::int16_t BackStyle = 0, BorderStyle = 0;
  /// Where somebody would like the selection. The box's own stays where it is.
  std::int32_t SelStart = 0, SelLength = 0;
};

/// A place within the control, in twips.
struct CodeViewBox {
  float Left = 0, Top = 0, Width = 0, Height = 0;
};

/// The source box: plain text that doesn't wrap, with a pane of line numbers at its left. What goes to the
/// clipboard and comes from there is plain text, for which the box's messages are watched while it shows.
///
/// The text stands in a text box of its own, or of the view that shows it. Texts put in are shared, not
/// copied, until somebody looks into them.
class OrvelCV final : private services::ISubclass, private platform::TextBoxHandler {
 public:
  static constexpr float picLines_width = 480;

  OrvelCV();
  ~OrvelCV() override;
  OrvelCV(const OrvelCV&) = delete;
  OrvelCV& operator=(const OrvelCV&) = delete;

  /// Null: nobody listens.
  void set_events(CodeViewEvents* events) { events_ = events; }
  void add_observer(CodeViewObserver& observer);
  void remove_observer(CodeViewObserver& observer);
  void set_clipboard(platform::Clipboard* clipboard);
  /// The text box of a view that shows this one, which takes the text over; null: the own one again. The view
  /// says so before its box goes.
  void use(platform::TextBox* box);
  /// The text box, with the text in it.
  platform::TextBox& TextBox1();
  /// The own text box, in use or not.
  PlainTextBox& plain_box() { return plain_; }

  // --- operations ---
  void SetFocus();
  /// Watches the box's messages; nothing where it does already. A message that can't be watched is passed
  /// over.
  void attachMessages();
  void DetachAllMessages();
  bool attached() const { return attached_; }
  // Part of the interface, and empty: the box has keys of its own for these.
  void Cut() {}
  void Copy() {}
  void Paste() {}
  void Undo() {}
  void Redo() {}
  void Refresh();
  std::int32_t LineCount();
  std::int32_t LineForCharacterIndex(std::int32_t index);
  std::int32_t FirstVisibleLine();
  /// The colour after a number of the desktop's; -1 if there is none.
  static std::int32_t TranslateColor(std::uint32_t colour, std::int32_t palette = 0);
  platform::WindowHandle hwnd() { return box_->handle(); }

  // --- properties ---
  /// Line ends read as CR LF, whatever was put in.
  std::u16string Text() const;
  /// Raises no change event and begins a new undo history.
  void set_Text(std::u16string_view text);
  void set_Text(std::shared_ptr<const std::u16string> text);
  /// The text as put in, while nobody has edited it, and again after all of that was undone; else null.
  std::shared_ptr<const std::u16string> untouched_text() const;
  bool Enabled() const { return box_->Enabled(); }
  void set_Enabled(bool enabled);
  bool Locked() const { return box_->Locked(); }
  void set_Locked(bool locked);
  /// Stored and reported, and applied to nothing.
  const CodeViewProperties& properties() const { return properties_; }
  void set_BackColor(std::int32_t colour) { store(properties_.BackColor, colour, u"BackColor"); }
  void set_ForeColor(std::int32_t colour) { store(properties_.ForeColor, colour, u"ForeColor"); }
  void set_Font(const BoxFont& font) { store(properties_.Font, font, u"Font"); }
  void set_BackStyle(std::int16_t style) { store(properties_.BackStyle, style, u"BackStyle"); }
  void set_BorderStyle(std::int16_t style) { store(properties_.BorderStyle, style, u"BorderStyle"); }
  std::int32_t SelStart() const { return properties_.SelStart; }
  void set_SelStart(std::int32_t start) { store(properties_.SelStart, start, u"SelStart"); }
  std::int32_t SelLength() const { return properties_.SelLength; }
  void set_SelLength(std::int32_t length) { store(properties_.SelLength, length, u"SelLength"); }
  void InitProperties(const BoxFont& ambient);
  void ReadProperties(const platform::PropertyBag& bag);
  void WriteProperties(platform::PropertyBag& bag) const;

  // --- as a part of the control that holds it ---
  bool Visible() const { return visible_; }
  void set_Visible(bool visible);
  bool TabStop() const { return tab_stop_; }
  void set_TabStop(bool stop) { tab_stop_ = stop; }
  bool in_front() const { return in_front_; }
  void ZOrder(bool to_front);
  bool has_focus() const { return box_->has_focus(); }
  /// Its area, in twips.
  void resize(float width, float height);
  CodeViewBox picLines() const { return {0, 0, picLines_width, height_}; }
  CodeViewBox TextBox1_area() const;

  // --- the line numbers ---
  void set_pane(const LinePane& pane);
  const LinePane& pane() const { return pane_; }
  /// Has the numbers painted again.
  void DrawLineNumbers();
  LineMarks line_marks();
  std::vector<LineNumber> line_numbers() { return source::line_numbers(line_marks(), pane_); }

  /// What another side has made of a stretch of the text; see TextBox::follow.
  void follow(std::size_t start, std::size_t length, std::u16string_view text);
  /// What the user made of the text, with whatever line ends: one step of undo. Throws RuntimeError(5) where
  /// the box is locked.
  void edit(std::u16string_view text);

 private:
  template <class T>
  void store(T& member, const T& value, std::u16string_view key) {
    member = value;
    property_changed(key);
  }
  void property_changed(std::u16string_view key);
  void tell();
  void tell_of_text();
  void fill();

  // services::ISubclass
  services::EMsgResponse MsgResponse() const override { return response_; }
  void set_MsgResponse(services::EMsgResponse) override {}  // decided in WindowProc alone
  platform::MessageResult WindowProc(platform::WindowHandle hwnd, platform::Message iMsg,
                                     platform::Parameter wParam, platform::Parameter lParam) override;
  bool control_key(platform::Parameter key);
  void copy_plain_text();
  void cut_plain_text();
  bool ClipboardHasRichText() const;

  // platform::TextBoxHandler
  void Click() override;
  void DblClick() override;
  void KeyDown(std::int16_t& KeyCode, std::int16_t Shift) override;
  void KeyPress(std::int16_t& KeyAscii) override;
  void KeyUp(std::int16_t& KeyCode, std::int16_t Shift) override;
  void MouseDown(const platform::BoxMouse& mouse) override;
  void MouseMove(const platform::BoxMouse& mouse) override;
  void MouseUp(const platform::BoxMouse& mouse) override;
  void Change() override;
  void SelChange() override;
  void GotFocus() override;
  bool CanTakeBack(bool again) override { return events_ && events_->CanTakeBack(again); }
  bool TakeBack(bool again) override { return events_ && events_->TakeBack(again); }

  PlainTextBox plain_;
  platform::TextBox* box_ = &plain_;
  std::shared_ptr<const std::u16string> text_;  // as put in
  bool filled_ = true;                          // the box has it
  bool edited_ = false;                         // the box has something else by now
  CodeViewProperties properties_;
  services::EMsgResponse response_ = services::EMsgResponse::emrConsume;
  bool attached_ = false;
  bool visible_ = false, tab_stop_ = false, in_front_ = false;
  float width_ = 0, height_ = 0;
  LinePane pane_;
  CodeViewEvents* events_ = nullptr;
  platform::Clipboard* clipboard_ = nullptr;
  std::vector<CodeViewObserver*> observers_;
};

}  // namespace tvx::source
