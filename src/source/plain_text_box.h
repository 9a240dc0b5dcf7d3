#pragma once

#include <vector>

#include "tvx/platform/text_box.h"

namespace tvx::source {

/// A text box without a screen: keys and calls reach it, and it shows a window of lines that is as high as it
/// is told. Lines are found in an index that is made again after an edit.
class PlainTextBox final : public platform::TextBox {
 public:
  PlainTextBox() = default;
  ~PlainTextBox() override;

  std::u16string Text() const override;
  void set_Text(std::u16string_view text) override;
  std::size_t length() const override { return text_.size(); }
  std::size_t SelStart() const override;
  std::size_t SelLength() const override;
  void select(std::size_t start, std::size_t length) override;
  std::u16string SelText() const override;
  void set_SelText(std::u16string_view text) override;
  void replace(const std::vector<Replacement>& replacements) override;
  void follow(std::size_t start, std::size_t length, std::u16string_view text) override;
  void show_hits(const std::vector<Stretch>& hits, std::size_t present) override;
  bool can_undo() const override { return !done_.empty(); }
  bool can_redo() const override { return !undone_.empty(); }
  void Undo() override { replay(done_, undone_); }
  void Redo() override { replay(undone_, done_); }
  std::size_t line_count() const override;
  std::size_t line_of(std::size_t place) const override;
  std::size_t first_visible_line() const override { return first_visible_; }
  bool Enabled() const override { return enabled_; }
  void set_Enabled(bool enabled) override;
  bool Locked() const override { return locked_; }
  void set_Locked(bool locked) override { locked_ = locked; }
  bool has_focus() const override { return focused_; }
  void SetFocus() override;
  void Refresh() override {}

  /// One that isn't shown can't have the keyboard.
  void set_shown(bool shown);
  /// Lines that the box shows at once.
  void set_visible_lines(std::size_t count) { visible_lines_ = count > 0 ? count : 1; }
  /// Scrolls as by the scroll bar.
  void scroll_to(std::size_t line);
  /// A key of the user's goes down, or up.
  void key(std::int16_t key_code, std::int16_t shift, std::u16string_view text, bool down);
  /// What was last marked, as it was told.
  const std::vector<Stretch>& hits() const { return hits_; }
  std::size_t present_hit() const { return present_hit_; }

 private:
  struct Edit {
    std::size_t place;
    std::u16string removed, inserted;
  };

  void on_key(std::int16_t key_code, std::int16_t shift) override;
  bool command_key(std::int16_t key_code, std::int16_t shift);
  bool caret_key(std::int16_t key_code, std::int16_t shift);
  void type(std::u16string_view text);
  void erase(bool forward, bool word);
  void replace(std::size_t place, std::size_t removed, std::u16string_view inserted);
  void record(Edit edit);
  bool replay(std::vector<Edit>& from, std::vector<Edit>& to);
  void moved(std::size_t anchor, std::size_t focus);
  std::size_t by_one(std::size_t place, bool forward) const;
  std::size_t word_end(std::size_t place, bool forward) const;
  std::size_t vertical(std::ptrdiff_t lines) const;
  const std::vector<std::size_t>& line_starts() const;
  std::size_t line_end(std::size_t line) const;

  std::u16string text_;  // a line break is LF
  std::size_t anchor_ = 0, focus_ = 0;
  mutable std::vector<std::size_t> line_starts_;  // empty: to be made
  std::vector<Edit> done_, undone_;
  bool typing_run_ = false;
  std::vector<Stretch> hits_;
  std::size_t present_hit_ = 0;
  std::size_t first_visible_ = 0, visible_lines_ = 30;
  bool enabled_ = true, locked_ = false, shown_ = false, focused_ = false;
  std::u16string key_text_;  // of the key on its way
};

}  // namespace tvx::source
