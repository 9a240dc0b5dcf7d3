#pragma once

#include <QWidget>

namespace tvx::qt {

/// The line around the control.
class Frame final : public QWidget {
 public:
  explicit Frame(QWidget* parent);

  /// How far it goes into the control, in pixels; 0: none is drawn.
  int thickness() const { return thickness_; }
  /// Lays itself around an area of this size, and tells what is left within.
  QSize lay_around(QSize size, bool solid);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int thickness_ = 0;
};

}  // namespace tvx::qt
