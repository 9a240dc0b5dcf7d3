#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "tvx/editing/search/read_text.h"
#include "tvx/editing/search/text_count.h"

namespace tvx::qt {
class HTMLedWidget;
}

namespace tvx::htmled {

/// Counts the words and characters of an editor's document, and of what is selected in it: when the user has
/// paused, and a long text in small portions, so that typing waits for nothing.
class TextCounts final : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// Null: none.
  void set_editor(qt::HTMLedWidget* editor);
  const editing::TextCount& of_document() const { return of_document_; }
  /// Nothing where nothing is selected.
  const std::optional<editing::TextCount>& of_selection() const { return of_selection_; }

 signals:
  void counted();
  /// The user has paused after changes.
  void paused();

 private:
  void begin();
  void go_on();
  bool read_on();
  void count_selection();

  QPointer<qt::HTMLedWidget> editor_;
  QTimer pause_, turn_, selection_pause_;
  std::unique_ptr<editing::ReadInTurns> reading_;  // until its end
  std::u16string text_;
  editing::TextCounter counter_;
  editing::TextCount of_document_;
  std::optional<editing::TextCount> of_selection_;
};

}  // namespace tvx::htmled
