#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::source {

class CodeViewObserver {
 public:
  virtual ~CodeViewObserver() = default;
  /// The text was put in from outside, or the box was enabled, shown or hidden.
  virtual void code_view_changed() = 0;
};

/// The source box. Texts put in are shared, not copied, until somebody reads or edits them.
class OrvelCV {
 public:
  OrvelCV();
  ~OrvelCV();
  OrvelCV(const OrvelCV&) = delete;
  OrvelCV& operator=(const OrvelCV&) = delete;

  /// Line ends read as CR LF, whatever was put in.
  std::u16string Text() const;
  /// Raises no change event and begins a new undo history.
  void set_Text(std::u16string_view text);
  void set_Text(std::shared_ptr<const std::u16string> text);
  /// The text as put in, while nobody has edited it; else null.
  std::shared_ptr<const std::u16string> untouched_text() const;

  bool Enabled() const { return enabled_; }
  void set_Enabled(bool enabled);
  bool Visible() const { return visible_; }
  void set_Visible(bool visible);

  /// What the user made of the text, with whatever line ends: one step of undo.
  void edit(std::u16string_view text);
  bool Undo();
  bool Redo();

  void SetFocus();
  bool has_focus() const { return focused_; }
  /// Gives up the hooks on its window's messages.
  void DetachAllMessages();

  void add_observer(CodeViewObserver& observer);
  void remove_observer(CodeViewObserver& observer);

 private:
  void tell();
  std::shared_ptr<const std::u16string> text_;
  bool edited_ = false;
  bool enabled_ = true, visible_ = false, focused_ = false;
  std::vector<std::shared_ptr<const std::u16string>> undo_, redo_;
  std::vector<CodeViewObserver*> observers_;
};

}  // namespace tvx::source
