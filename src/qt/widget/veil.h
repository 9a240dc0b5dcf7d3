#pragma once

#include <QWidget>

namespace tvx::qt {

/// Lies over a widget while that is disabled, and makes it pale: a page that a browser engine draws looks the
/// same by itself.
class Veil final : public QWidget {
 public:
  explicit Veil(QWidget& covered);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void cover();

  QWidget& covered_;
};

}  // namespace tvx::qt
