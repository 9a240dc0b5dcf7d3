#include "tvx/qt/widget/frame.h"

#include <QPainter>

namespace tvx::qt {

Frame::Frame(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

QSize Frame::lay_around(QSize size, bool solid) {
  thickness_ = solid ? 1 : 0;
  setGeometry(QRect({}, size));
  setVisible(solid);
  return size - QSize(2 * thickness_, 2 * thickness_);
}

void Frame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace tvx::qt
