#include "tvx/qt/widget/veil.h"

#include <QChildEvent>
#include <QPainter>

#include "tvx/qt/bars/faint.h"

namespace tvx::qt {
namespace {

constexpr float opacity = 0.6F;

}  // namespace

Veil::Veil(QWidget& covered) : QWidget(&covered), covered_(covered) {
  setObjectName(QStringLiteral("veil"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  covered_.installEventFilter(this);
  cover();
}

void Veil::cover() {
  setVisible(!covered_.isEnabled());
  if (covered_.isEnabled()) return;
  setGeometry(covered_.rect());
  raise();
}

// What comes later into the widget comes over the veil.
bool Veil::eventFilter(QObject* watched, QEvent* event) {
  const bool child_came =
      event->type() == QEvent::ChildAdded && static_cast<QChildEvent*>(event)->child() != this;
  if (child_came || event->type() == QEvent::EnabledChange || event->type() == QEvent::Resize) cover();
  return QWidget::eventFilter(watched, event);
}

void Veil::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), faint(palette().color(QPalette::Window), opacity));
}

}  // namespace tvx::qt
