#pragma once

#include <QObject>
#include <QPlainTextEdit>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::qt {

/// The text of a code box as its user knows it, beside the toolkit's document that shows it, and the steps
/// that take edits back.
///
/// The toolkit lays a line out as a whole, which for a line of a megabyte takes more than a second at each
/// key. So a line that is very long stands in the document in pieces, with breaks between them that are no
/// part of the text. Positions here are those of the text, where a line's end counts as one; `shown` ones are
/// the document's.
class CodeText final : public QObject {
 public:
  explicit CodeText(QPlainTextEdit& edit) : edit_(edit) {}

  /// Another text, whose lines end with LF; what a fresh document is to hold.
  QString put(std::u16string text);
  /// The document with that is in the box from now on.
  void follow(QTextDocument& document);

  const std::u16string& text() const { return text_; }
  std::size_t to_text(int shown) const;
  /// Beside a break the position after it, or before it.
  int to_shown(std::size_t place, bool after_break = true) const;
  bool is_break(int shown) const;
  bool has_breaks() const { return !breaks_.empty(); }
  /// What is being changed is how the text is shown, and no edit.
  bool is_breaking() const { return breaking_; }

  std::size_t line_count() const;
  std::size_t line_of(int shown) const;
  QTextBlock block_of_line(std::size_t line) const;

  /// As an edit of the user's; the caret stands after it.
  void replace(std::size_t start, std::size_t length, std::u16string_view with);
  /// In the place of what the cursor has selected.
  void insert(QTextCursor cursor, const QString& text);
  bool can_undo() const { return !done_.empty(); }
  bool can_redo() const { return !undone_.empty(); }
  void undo() { replay(done_, undone_); }
  void redo() { replay(undone_, done_); }
  void forget_edits();

 private:
  struct Edit {
    std::size_t place;
    std::u16string removed, inserted;
  };
  void changed(int at, int removed, int added);
  void put_shown(int from, int to, std::u16string_view with);
  void break_later(int from, int to);
  void record(Edit edit);
  void replay(std::vector<Edit>& from, std::vector<Edit>& to);
  std::vector<int> wanted_breaks(int from, int to) const;
  void break_blocks(int from, int to);
  std::size_t breaks_before(int shown) const;

  QPlainTextEdit& edit_;
  std::u16string text_, shown_;  // line ends are LF
  std::vector<int> breaks_;      // positions in what is shown
  std::vector<Edit> done_, undone_;
  bool breaking_ = false, replaying_ = false;
  bool known_ = false;  // what the document tells of is in the text already
};

}  // namespace tvx::qt
