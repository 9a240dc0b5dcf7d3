#include "tvx/qt/widget/split_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "tvx/core/views/side_source.h"
#include "tvx/qt/source/code_assistance.h"
#include "tvx/qt/source/code_view_face.h"

namespace tvx::qt {
namespace {

/// Where less room is side by side, the two stand one above the other.
constexpr int narrow = 680;
constexpr int thickness = 7, least = 100;

}  // namespace

/// Between the two: drags, and a double press halves the room.
class SplitView::Handle final : public QWidget {
 public:
  Handle(SplitView& view, QWidget* parent) : QWidget(parent), view_(view) { hide(); }

 protected:
  void mousePressEvent(QMouseEvent* event) override { grabbed_ = event->position().toPoint(); }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (event->buttons() & Qt::LeftButton) view_.drag_to(mapToParent(event->position().toPoint() - grabbed_));
  }
  void mouseDoubleClickEvent(QMouseEvent*) override {
    view_.set_share(0.5);
    view_.ways_.share_changed(0.5);
  }
  // A line at each side, and some grip in the middle.
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const bool lies = width() > height();
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    if (lies) {
      painter.drawLine(0, 0, width(), 0);
      painter.drawLine(0, height() - 1, width(), height() - 1);
    } else {
      painter.drawLine(0, 0, 0, height());
      painter.drawLine(width() - 1, 0, width() - 1, height());
    }
    const QPoint middle = rect().center();
    for (int step = -2; step <= 2; ++step) {
      const QPoint dot = middle + (lies ? QPoint(6 * step, 0) : QPoint(0, 6 * step));
      painter.fillRect(QRect(dot - QPoint(1, 1), QSize(2, 2)), palette().color(QPalette::Dark));
    }
  }

 private:
  SplitView& view_;
  QPoint grabbed_;
};

SplitView::SplitView(QWidget& widget, core::SideSource& side, Ways ways)
    : side_(side),
      ways_(std::move(ways)),
      face_(new CodeViewFace(side.box(), &widget)),
      handle_(new Handle(*this, &widget)) {
  // The code view's own have these names without the first word.
  face_->setObjectName(QStringLiteral("sideSource"));
  face_->text_box()->setObjectName(QStringLiteral("sideTextBox"));
  face_->pane()->setObjectName(QStringLiteral("sideLines"));
  handle_->setObjectName(QStringLiteral("splitHandle"));
  face_->box().assistance().set_line_marked(true);
  side_.box().add_observer(*this);
}

SplitView::~SplitView() {
  side_.box().remove_observer(*this);
  delete handle_;
  delete face_;
}

void SplitView::set_share(double share) {
  share_ = std::clamp(share, 0.0, 1.0);
  ways_.arrange();
}

bool SplitView::is_stacked() const { return room_.width() < narrow; }

QRect SplitView::page_of(const QRect& room) const {
  const int length = (is_stacked() ? room.height() : room.width()) - thickness;
  const int most = std::max(length - least, length / 2);
  const int page = std::clamp(int(share_ * length), length - most, most);
  return is_stacked() ? QRect(room.topLeft(), QSize(room.width(), page))
                      : QRect(room.topLeft(), QSize(page, room.height()));
}

QRect SplitView::arrange(const QRect& room) {
  room_ = room;
  const bool shows = side_.shows();
  handle_->setVisible(shows);
  if (!shows) return room;
  const QRect page = page_of(room);
  QRect handle = room, source = room;
  if (is_stacked()) {
    handle.setTop(page.bottom() + 1);
    handle.setHeight(thickness);
    source.setTop(handle.bottom() + 1);
  } else {
    handle.setLeft(page.right() + 1);
    handle.setWidth(thickness);
    source.setLeft(handle.right() + 1);
  }
  const auto place = [&](const QRect& area) {
    return QStyle::visualRect(face_->layoutDirection(), room, area);
  };
  handle_->setCursor(is_stacked() ? Qt::SplitVCursor : Qt::SplitHCursor);
  handle_->setGeometry(place(handle));
  face_->setGeometry(place(source));
  return place(page);
}

void SplitView::drag_to(const QPoint& place) {
  const int length = (is_stacked() ? room_.height() : room_.width()) - thickness;
  const bool mirrored = !is_stacked() && face_->layoutDirection() == Qt::RightToLeft;
  const int page = is_stacked() ? place.y() - room_.top()
                   : mirrored   ? room_.right() - place.x() - thickness
                                : place.x() - room_.left();
  set_share(double(page) / std::max(length, 1));
  ways_.share_changed(share_);
}

}  // namespace tvx::qt
