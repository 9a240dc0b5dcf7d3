#pragma once

#include <QStatusBar>
#include <string>

#include "htmled/status/text_counts.h"
#include "tvx/files/file_form.h"

class QLabel;
class QMenu;
class QToolButton;

namespace tvx::htmled {

/// The line below the page: what the program says, and how the document in front stands. It is there from the
/// start, so that nothing moves the page; a press on what can be changed offers the others.
class StatusBar final : public QStatusBar {
  Q_OBJECT
 public:
  explicit StatusBar(QWidget* parent = nullptr);

  void set_editor(qt::HTMLedWidget* editor);
  /// Of the document in front. The language is a tag; empty: the page names none, and it is checked in
  /// `spelling`.
  void show_form(const files::FileForm& form, const QString& language, const QString& spelling);
  void show_local_images(int count);
  /// Another language may be spoken by now.
  void show_words();

 signals:
  void language_chosen(const QString& tag);
  void charset_chosen(const QString& name);
  void line_end_chosen(tvx::files::LineEnd end);
  void zoom_chosen(double factor);
  void upload_asked();
  /// The document has been changed since show_form(), and the user has paused.
  void outdated();

 private:
  QToolButton* add_button(const char* name);
  void fill_languages(QMenu& menu);
  void fill_charsets(QMenu& menu);
  void fill_line_ends(QMenu& menu);
  void fill_zooms(QMenu& menu);
  void show_counts();
  void show_zoom(double factor);

  TextCounts counts_;
  QLabel* text_;
  QToolButton *local_images_, *language_, *charset_, *line_end_, *zoom_;
  int local_images_count_ = 0;
  files::FileForm form_;
  QString language_tag_, spelling_tag_;
  double zoom_factor_ = 1;
};

}  // namespace tvx::htmled
