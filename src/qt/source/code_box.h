#pragma once

#include <QPlainTextEdit>

#include "tvx/platform/text_box.h"

class QKeyEvent;

namespace tvx::qt {

class CodeAssistance;

/// Qt's plain text edit as a text box whose messages can be watched: keys and the clipboard's messages go
/// through the window's procedures before the widget acts on them. Lines don't wrap and are laid out when
/// they are seen.
///
/// U+2029 is how Qt ends a line: one that stands in the text comes back as a line break once the text was
/// edited.
class CodeBox final : public platform::TextBox {
 public:
  class Edit;

  explicit CodeBox(QWidget* parent);
  ~CodeBox() override;

  /// Belongs to its parent.
  QPlainTextEdit* widget() const;
  /// Off at first.
  CodeAssistance& assistance();
  /// Whether lines go on below where they reach the box's edge.
  void set_wrapped(bool wrapped);
  void set_font(const QFont& font);
  /// In letters.
  void set_tab_width(int letters);
  int tab_width() const;
  /// Brings a line to the middle of the box, with the caret at its start; the first one is 0.
  void go_to_line(std::size_t line);
  /// How far down a line begins in the widget; nothing is known of lines out of sight.
  int top_of_line(std::size_t line) const;
  /// Runs when the lines in sight have moved or grown.
  void set_on_lines_moved(std::function<void()> moved);

  std::u16string Text() const override;
  void set_Text(std::u16string_view text) override;
  std::size_t length() const override;
  std::size_t SelStart() const override;
  std::size_t SelLength() const override;
  void select(std::size_t start, std::size_t length) override;
  std::u16string SelText() const override;
  void set_SelText(std::u16string_view text) override;
  void replace(const std::vector<Replacement>& replacements) override;
  void follow(std::size_t start, std::size_t length, std::u16string_view text) override;
  void show_hits(const std::vector<Stretch>& hits, std::size_t present) override;
  bool can_undo() const override;
  bool can_redo() const override;
  void Undo() override;
  void Redo() override;
  std::size_t line_count() const override;
  std::size_t line_of(std::size_t place) const override;
  std::size_t first_visible_line() const override;
  bool Enabled() const override;
  void set_Enabled(bool enabled) override;
  bool Locked() const override;
  void set_Locked(bool locked) override;
  bool has_focus() const override;
  void SetFocus() override;
  void Refresh() override;

 private:
  void on_key(std::int16_t key_code, std::int16_t shift) override;
  void key_pressed(QKeyEvent& event);
  void key_released(QKeyEvent& event);
  bool edit_key(const QKeyEvent& event);

  Edit* edit_;
  QKeyEvent* key_ = nullptr;  // the one on its way
  bool quiet_ = false;        // what changes now is not the user's
};

}  // namespace tvx::qt
