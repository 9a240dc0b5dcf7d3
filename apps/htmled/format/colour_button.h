#pragma once

#include <QColor>
#include <QToolButton>

namespace tvx::htmled {

/// A button with a colour: its press gives the last one again, its arrow opens a palette.
class ColourButton final : public QToolButton {
  Q_OBJECT
 public:
  enum class Of { Text, Highlight };
  ColourButton(Of of, QWidget* parent);

  /// The colour of what is selected; not valid: none, or several.
  void show_colour(const QColor& colour);
  void show_words();

 signals:
  /// Not valid: none.
  void chosen(const QColor& colour);

 private:
  void changeEvent(QEvent* event) override;
  void fill_menu();
  void choose(const QColor& colour);
  void ask();
  QIcon drawn() const;

  const Of of_;
  QColor last_;
  QColor shown_;
};

}  // namespace tvx::htmled
