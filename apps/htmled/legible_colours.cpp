#include "htmled/legible_colours.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>
#include <cmath>

namespace tvx::htmled {
namespace {

/// How far from its ground something is seen, of 255.
double distance(const QColor& colour, const QColor& ground) {
  return std::abs(qGray(colour.rgb()) - qGray(ground.rgb())) * colour.alphaF();
}

void make_hints_legible() {
  constexpr double least = 70;
  const QPalette present = QApplication::palette();
  const QColor ground = present.color(QPalette::Base);
  if (distance(present.color(QPalette::PlaceholderText), ground) >= least) return;
  QColor hint = present.color(QPalette::Text);
  hint.setAlpha(150);
  if (distance(hint, ground) < least) return;  // nor can text be read
  QPalette mended;                             // of which only what is set here counts
  mended.setColor(QPalette::PlaceholderText, hint);
  QApplication::setPalette(mended);
}

}  // namespace

LegibleColours::LegibleColours(QWidget& window) : QObject(&window) {
  window.installEventFilter(this);
  make_hints_legible();
}

bool LegibleColours::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
    make_hints_legible();
  return false;
}

}  // namespace tvx::htmled
