#include "tvx/qt/forms/page_sight.h"

#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <algorithm>

namespace tvx::qt {

namespace {

constexpr int gap = 12;
/// What must be left of the page, a few lines.
constexpr int least_open = 100;
/// Nearer than this the dialog stands where it was put: window managers count their frames in different ways.
constexpr int moved_by_user = 40;
constexpr int until_uncovered = 300;  // milliseconds

QRect on_screen(const QWidget& widget) { return {widget.mapToGlobal(QPoint(0, 0)), widget.size()}; }

/// With the frame that the window manager will draw: that of the window below.
QSize size_with_frame(const QDialog& dialog) {
  const QWidget* below = dialog.parentWidget() ? dialog.parentWidget()->window() : nullptr;
  const QSize frame = below ? below->frameGeometry().size() - below->geometry().size() : QSize(0, 0);
  return dialog.size() + frame;
}

}  // namespace

PageSight::PageSight(QWidget& page, Cover cover) : page_(&page), cover_(std::move(cover)) {
  uncovered_.setSingleShot(true);
  uncovered_.setInterval(until_uncovered);
  connect(&uncovered_, &QTimer::timeout, this, [this] {
    if (page_) cover_(0, 0);
  });
}

void PageSight::attend(QDialog& dialog) {
  if (!page_ || !page_->isVisible()) return;
  uncovered_.stop();
  dialog.adjustSize();
  place(dialog);
  dialog.installEventFilter(this);
}

QPoint PageSight::usual_place(QSize size) const {
  const QRect page = on_screen(*page_), screen = page_->screen()->availableGeometry();
  int bottom = page.bottom() - gap;
  // A low window: the dialog goes out of it downwards, as far as the screen reaches.
  if (bottom - size.height() - page.top() < least_open)
    bottom = std::min(page.top() + least_open + size.height(), screen.bottom());
  bottom = std::min(bottom, screen.bottom());
  const int left = page.center().x() - size.width() / 2;
  return {std::clamp(left, screen.left(), std::max(screen.left(), screen.right() - size.width())), bottom};
}

void PageSight::place(QDialog& dialog) {
  const QSize size = size_with_frame(dialog);
  const QRect screen = page_->screen()->availableGeometry();
  placed_ = usual_place(size);
  QPoint corner = placed_;
  if (chosen_) {
    const QPoint wanted = on_screen(*page_).topLeft() + *chosen_;
    if (screen.contains(QRect(wanted - QPoint(0, size.height()), size).center())) corner = wanted;
  }
  dialog.move(corner.x(), std::max(screen.top(), corner.y() - size.height()));
  tell_covered(dialog);
}

void PageSight::tell_covered(const QDialog& dialog) const {
  const QRect page = on_screen(*page_);
  const QRect shown =
      dialog.isVisible() ? dialog.frameGeometry() : QRect(dialog.pos(), size_with_frame(dialog));
  const QRect covered = shown.intersected(page);
  if (covered.isEmpty()) return cover_(0, 0);
  const int above = covered.top() - page.top(), below = page.bottom() - covered.bottom();
  above >= below ? cover_(0, page.height() - above) : cover_(page.height() - below, 0);
}

void PageSight::note_place(const QDialog& dialog) {
  const QPoint corner = dialog.frameGeometry().bottomLeft();
  if ((corner - placed_).manhattanLength() > moved_by_user) chosen_ = corner - on_screen(*page_).topLeft();
}

bool PageSight::eventFilter(QObject* watched, QEvent* event) {
  const auto& dialog = static_cast<const QDialog&>(*watched);
  if (!page_) return false;
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
      if (dialog.isVisible()) tell_covered(dialog);
      break;
    case QEvent::Hide:
      note_place(dialog);
      uncovered_.start();
      break;
    default: break;
  }
  return false;
}

}  // namespace tvx::qt
