#pragma once

#include <QColor>
#include <QPushButton>
#include <QString>

namespace tvx::qt {

/// A square button that shows a colour: the one that a press lets the user change.
class ColourButton final : public QPushButton {
 public:
  explicit ColourButton(QWidget* parent = nullptr);

  /// What stands in the field beside it. A text that is no colour is shown as none: checkered.
  void show_colour(const QString& text);
  /// Invalid if there is none.
  const QColor& colour() const { return colour_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  void paintEvent(QPaintEvent* event) override;

  QColor colour_;
};

/// A colour as documents have it: a name, "#rgb", "#rrggbb", or the latter without its "#", as old pages
/// write it. Invalid for all else.
QColor document_colour(const QString& text);

}  // namespace tvx::qt
