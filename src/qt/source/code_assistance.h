#pragma once

#include <QObject>
#include <QPlainTextEdit>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "tvx/source/tag_structure.h"

class QCompleter;
class QKeyEvent;
class QStringListModel;

namespace tvx::qt {

class CodeText;

/// What helps whoever writes a source, where a program wants it: colours, the tag at the other end, tags that
/// don't fit and what becomes of them, names of elements, attributes and characters to choose from, end tags,
/// lines moved in and out or made comments. It changes nothing by itself.
class CodeAssistance final : public QObject {
  Q_OBJECT
 public:
  CodeAssistance(QPlainTextEdit& edit, CodeText& code);
  ~CodeAssistance() override;

  bool is_on() const { return on_; }
  void set_on(bool on);
  /// Another document stands in the box.
  void document_changed();

  /// What was found in the source, drawn with what is marked here.
  void show_hits(const QList<QTextEdit::ExtraSelection>& hits);
  /// Deals with a key before the box does. False: it is for the box.
  bool key(QKeyEvent& event);
  /// After the box has dealt with one.
  void key_done(const QKeyEvent& event);
  /// What is to be said of a position, if anything.
  QString tip_at(int place) const;
  /// Whether the line of the caret is marked, also without the rest of this. Off at first.
  void set_line_marked(bool marked);
  /// The colours of the desktop have changed.
  void colours_changed();

 private:
  void read_tags();
  void mark_later();
  void mark();
  void mark_line(QList<QTextEdit::ExtraSelection>& marks) const;
  void mark_tags(QList<QTextEdit::ExtraSelection>& marks) const;
  void mark_brackets(QList<QTextEdit::ExtraSelection>& marks) const;
  void mark_troubles(QList<QTextEdit::ExtraSelection>& marks) const;
  QTextEdit::ExtraSelection stretch(std::size_t from, std::size_t to, const QTextCharFormat& format) const;
  QString trouble_of(const source::SourceTag& tag) const;
  QString name_of(const source::SourceTag& tag) const;
  /// The lines that the selection touches: from the start of the first to the end of the last.
  std::pair<std::size_t, std::size_t> selected_lines() const;
  void replace_lines(std::size_t first, std::size_t end, const std::u16string& lines);
  void move_lines(bool in);
  void toggle_comment();
  bool step_over_quote();
  void offer(bool asked);
  void complete(const QString& name);
  bool close_element();
  void take_back_end_tag();
  bool is_dark() const;

  QPlainTextEdit& edit_;
  CodeText& code_;
  bool on_ = false, line_marked_ = false;
  QTimer read_later_, mark_later_;
  QString text_;  // as the tags were read from it
  std::optional<source::TagStructure> tags_;
  QList<QTextEdit::ExtraSelection> hits_;
  QCompleter* completer_;
  QStringListModel* names_;
  bool names_of_attributes_ = false;
  QTextCursor end_quote_;  // stands before the quote that was completed last
  QTextCursor end_tag_;    // stands after the end tag that was completed last
  QString end_tag_rest_;   // what was completed of it
};

}  // namespace tvx::qt
