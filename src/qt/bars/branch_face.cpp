#include "tvx/qt/bars/branch_face.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <algorithm>

#include "tvx/qt/bars/faint.h"
#include "tvx/qt/support/accessible_words.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"

namespace tvx::qt {
namespace {

constexpr int edge = 6, padding = 7, angle_width = 11, smallest_row = 26, gap = 3;

}  // namespace

/// One name of the path.
class Crumb final : public QAbstractButton {
 public:
  Crumb(BranchFace* bar, int place) : QAbstractButton(bar), bar_(bar), place_(place) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::clicked, bar_, [this] { bar_->press(place_); });
  }

  void show_state(const QString& caption, bool enabled, bool current) {
    setText(caption);
    setEnabled(enabled);
    name_for_readers(*this, place_ == BranchFace::overflow ? BranchFace::tr("Outer elements")
                                                           : BranchFace::tr("Element %1").arg(caption));
    setToolTip(place_ == BranchFace::overflow ? BranchFace::tr("Outer elements") : QString());
    current_ = current;
  }

 private:
  void keyPressEvent(QKeyEvent* event) override {
    const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
      case Qt::Key_Left: return bar_->walk(place_, -forward, false);
      case Qt::Key_Right: return bar_->walk(place_, forward, false);
      case Qt::Key_Home: return bar_->walk(place_, -1, true);
      case Qt::Key_End: return bar_->walk(place_, 1, true);
      case Qt::Key_Return:
      case Qt::Key_Enter: return event->isAutoRepeat() ? void() : click();
      case Qt::Key_Escape:
        if (bar_->leave_) return bar_->leave_();
        break;
      default: break;
    }
    QAbstractButton::keyPressEvent(event);
  }

  // The menu that a press opens is what a right press asks for, too.
  void contextMenuEvent(QContextMenuEvent*) override { click(); }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor text = palette().color(QPalette::WindowText), accent = palette().color(QPalette::Highlight);
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown()       ? faint(text, 0.22F)
                     : underMouse() ? faint(text, 0.10F)
                                    : QColor(Qt::transparent));
    painter.drawRoundedRect(box, 4, 4);
    if (hasFocus()) {
      painter.setBrush(Qt::NoBrush);
      painter.setPen(QPen(accent, 2));
      painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
    const bool strong = current_ || underMouse() || hasFocus();
    painter.setPen(faint(text, !isEnabled() ? 0.35F : strong ? 1.0F : 0.72F));
    painter.drawText(rect().adjusted(padding - 1, 0, 1 - padding, 0), Qt::AlignCenter,
                     fontMetrics().elidedText(text_in_row(), Qt::ElideRight, width() - 2 * padding + 2));
  }

  QString text_in_row() const { return text(); }

  BranchFace* bar_;
  int place_;
  bool current_ = false;
};

BranchFace::BranchFace(platform::Toolbar& model, QWidget* parent) : QWidget(parent), model_(model) {
  setObjectName(to_qt(model.Name()));
  model_.add_observer(*this);
  model_.set_measure([this](float) { return to_twips(row_height()); });
  model_.set_places([this](const platform::Button& button) { return place_of(button); });
  schedule();
}

BranchFace::~BranchFace() {
  model_.set_measure(nullptr);
  model_.set_places(nullptr);
  model_.remove_observer(*this);
}

int BranchFace::row_height() const { return std::max(smallest_row, fontMetrics().height() + 9); }
QSize BranchFace::sizeHint() const { return {300, row_height()}; }
QSize BranchFace::minimumSizeHint() const { return {60, row_height()}; }

int BranchFace::width_of(const QString& caption) const {
  return fontMetrics().horizontalAdvance(caption) + 2 * padding;
}

// --- following the model ---

// The path is built anew on every move of the caret, a button at a time: it is drawn once, at the end, and
// only if it reads otherwise than before.
void BranchFace::schedule() {
  if (std::exchange(stale_, true)) return;
  QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

void BranchFace::refreshed(platform::Toolbar&) {
  if (stale_) bring_up_to_date();
}

bool BranchFace::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::LayoutRequest:
      if (stale_) bring_up_to_date();
      break;
    case QEvent::FontChange:
    case QEvent::LanguageChange:
    case QEvent::StyleChange:
    case QEvent::LayoutDirectionChange:
      captions_.clear();
      schedule();
      break;
    default: break;
  }
  return QWidget::event(event);
}

void BranchFace::resizeEvent(QResizeEvent*) { place_crumbs(); }

void BranchFace::show_in(const QRect& box, bool visible) {
  setGeometry(box);
  holder_visible_ = visible;
  setVisible(visible && model_.Visible());
}

void BranchFace::bring_up_to_date() {
  stale_ = false;
  const bool wanted = holder_visible_ && model_.Visible();
  if (isHidden() == wanted) setVisible(wanted);
  std::vector<QString> captions;
  for (int i = 1; i <= model_.Count(); ++i) {
    const platform::Button& button = model_.Item(i);
    captions.push_back(button.Visible() ? to_qt(button.Caption()).trimmed() : QString());
  }
  if (captions == captions_) return;
  captions_ = std::move(captions);
  place_crumbs();
}

int BranchFace::first_shown(int available) const {
  int used = 0;
  const int overflow_width = width_of(QStringLiteral("…")) + angle_width;
  for (int place = int(captions_.size()); place >= 1; --place) {
    used += width_of(captions_[std::size_t(place - 1)]) + (place < int(captions_.size()) ? angle_width : 0);
    // Room for "…" is needed as long as something would go into its menu.
    if (used + (place > 1 ? overflow_width : 0) > available)
      return std::min(place + 1, int(captions_.size()));
  }
  return 1;
}

Crumb& BranchFace::crumb_at(int place) {
  if (crumbs_.size() <= std::size_t(place)) crumbs_.resize(std::size_t(place) + 1);
  Crumb*& crumb = crumbs_[std::size_t(place)];
  if (!crumb) crumb = new Crumb(this, place);
  return *crumb;
}

void BranchFace::place_crumbs() {
  const int count = int(captions_.size()), available = width() - 2 * edge;
  first_ = first_shown(available);
  angles_.clear();
  for (Crumb* crumb : crumbs_)
    if (crumb) crumb->hide();
  int x = edge;
  const auto put = [&](int place, const QString& caption) {
    Crumb& crumb = crumb_at(place);
    crumb.show_state(caption, place == overflow || model_.Item(place).Enabled(), place == count);
    const int wide = std::min(width_of(caption), width() - edge - x);
    const QRect box(x, gap, std::max(wide, 0), height() - 2 * gap);
    crumb.setGeometry(layoutDirection() == Qt::RightToLeft
                          ? QRect(width() - box.right() - 1, box.y(), box.width(), box.height())
                          : box);
    crumb.show();
    x += wide;
    if (place == count) return;
    angles_.push_back(x + angle_width / 2);
    x += angle_width;
  };
  if (first_ > 1) put(overflow, QStringLiteral("…"));
  for (int place = first_; place <= count; ++place)
    if (!captions_[std::size_t(place - 1)].isEmpty()) put(place, captions_[std::size_t(place - 1)]);
  look_for_mouse();
  update();
}

// A menu takes the mouse away without a word, and names move under it: only where it is now counts.
void BranchFace::look_for_mouse() {
  for (Crumb* crumb : crumbs_) {
    if (!crumb) continue;
    const bool over = crumb->isVisible() && crumb->rect().contains(crumb->mapFromGlobal(QCursor::pos()));
    crumb->setAttribute(Qt::WA_UnderMouse, over);
    crumb->update();
  }
}

void BranchFace::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(QRect(0, 0, width(), 1), faint(palette().color(QPalette::WindowText), 0.16F));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(faint(palette().color(QPalette::WindowText), 0.45F), 1.4, Qt::SolidLine, Qt::RoundCap,
                      Qt::RoundJoin));
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  const qreal point = mirrored ? -2 : 2, middle = height() / 2.0;
  for (const int angle : angles_) {
    const qreal x = mirrored ? width() - angle : angle;
    QPainterPath path(QPointF(x - point, middle - 4));
    path.lineTo(x + point, middle);
    path.lineTo(x - point, middle + 4);
    painter.drawPath(path);
  }
}

// --- pressing and walking ---

QWidget* BranchFace::button_widget(int index) const {
  return index >= first_ && std::size_t(index) < crumbs_.size() && index <= int(captions_.size())
             ? crumbs_[std::size_t(index)]
             : nullptr;
}

QWidget* BranchFace::overflow_widget() const { return first_ > 1 ? crumbs_[overflow] : nullptr; }

bool BranchFace::take_focus() {
  QWidget* last = button_widget(int(captions_.size()));
  if (!last || isHidden() || last->isHidden()) return false;
  last->setFocus(Qt::TabFocusReason);
  return true;
}

void BranchFace::press(int place) {
  if (place == overflow) return show_overflow();
  const QPointer<BranchFace> self(this);
  if (place <= model_.Count()) model_.press(model_.Item(place));
  if (self) look_for_mouse();
}

// The path may be another by the time that an element is chosen: its key says whether it is still there.
void BranchFace::show_overflow() {
  QMenu menu(this);
  for (int place = 1; place < first_; ++place)
    menu.addAction(captions_[std::size_t(place - 1)])->setObjectName(to_qt(model_.Item(place).Key()));
  const QPoint corner = crumbs_[overflow]->mapToGlobal(QPoint(0, -menu.sizeHint().height()));
  const QPointer<BranchFace> self(this);
  const QAction* chosen = menu.exec(corner);
  if (!self || !chosen) return;
  for (int place = 1; place <= model_.Count(); ++place)
    if (to_qt(model_.Item(place).Key()) == chosen->objectName()) return press(place);
}

void BranchFace::walk(int from, int direction, bool to_end) {
  const int last = int(captions_.size());
  int to = from;
  if (to_end)
    to = direction > 0 ? last : first_ > 1 ? overflow : first_;
  else if (from == overflow)
    to = direction > 0 ? first_ : overflow;
  else if (from + direction < first_)
    to = first_ > 1 ? overflow : from;
  else
    to = std::min(from + direction, last);
  if (std::size_t(to) < crumbs_.size() && crumbs_[std::size_t(to)] && !crumbs_[std::size_t(to)]->isHidden())
    crumbs_[std::size_t(to)]->setFocus(Qt::OtherFocusReason);
}

platform::ButtonPlace BranchFace::place_of(const platform::Button& button) const {
  const QWidget* widget = button_widget(button.Index());
  if (!widget) widget = overflow_widget();
  return widget ? platform::ButtonPlace{to_twips(widget->x()), 0} : platform::ButtonPlace{};
}

}  // namespace tvx::qt
