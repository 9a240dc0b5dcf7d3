#include "tvx/qt/bars/toolbar_face.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>
#include <cstdlib>

#include "tvx/qt/bars/faint.h"
#include "tvx/qt/bars/icon_set.h"
#include "tvx/qt/support/accessible_words.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

// Two rows are 56 pixels, the height that the control gives a holder of about two rows.
constexpr int icon_side = 20, smallest_button = 26, row_gap = 2, edge = 4, separator_width = 9,
              caption_margin = 6;

}  // namespace

/// One button; it shows what the model holds and decides nothing itself.
class ToolbarButton final : public QToolButton {
 public:
  ToolbarButton(ToolbarFace* bar, int index) : QToolButton(bar), bar_(bar), index_(index) {
    setFocusPolicy(Qt::NoFocus);
    setIconSize({icon_side, icon_side});
    setAttribute(Qt::WA_Hover);
    connect(this, &QToolButton::clicked, bar_, [this] { bar_->press(index_); });
  }

  void show_state(const platform::Button& model) {
    if (image_ != model.Image()) setIcon(qt::icon(image_ = model.Image()));
    const QString caption = to_qt(model.Caption()), tip = to_qt(model.ToolTipText());
    const QString obstacle = translated(model.Obstacle());
    const bool can_act = model.Enabled() && obstacle.isEmpty();
    setText(caption);
    setToolTip(tip.isEmpty() || obstacle.isEmpty() ? tip + obstacle : tip + u'\n' + obstacle);
    describe_for_readers(*this, obstacle);
    name_for_readers(*this, !tip.isEmpty()                 ? tip
                            : !caption.trimmed().isEmpty() ? caption
                                                           : to_qt(model.Key()));
    if (hasFocus() && !can_act) bar_->pass_focus_on(index_);
    setEnabled(can_act);
    // Only those that have ever been pressed in present themselves as switches to assistive programs.
    if (model.Value() != 0) setCheckable(true);
    setChecked(model.Value() != 0);
  }

 private:
  // The model alone says what looks pressed in.
  void nextCheckState() override {}

  bool event(QEvent* event) override {
    if (event->type() != QEvent::ToolTip || toolTip().isEmpty()) return QToolButton::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), bar_->tip_with_keys(index_, toolTip()),
                       this);
    return true;
  }

  void keyPressEvent(QKeyEvent* event) override {
    using Step = ToolbarFace::Step;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    switch (event->key()) {
      case Qt::Key_Left: return bar_->walk(index_, mirrored ? Step::Next : Step::Previous);
      case Qt::Key_Right: return bar_->walk(index_, mirrored ? Step::Previous : Step::Next);
      case Qt::Key_Up: return bar_->walk(index_, Step::Up);
      case Qt::Key_Down: return bar_->walk(index_, Step::Down);
      case Qt::Key_Home: return bar_->walk(index_, Step::First);
      case Qt::Key_End: return bar_->walk(index_, Step::Last);
      case Qt::Key_Return:
      case Qt::Key_Enter: return event->isAutoRepeat() ? void() : click();
      case Qt::Key_Escape:
        if (bar_->leave_) return bar_->leave_();
        break;
      default: break;
    }
    QToolButton::keyPressEvent(event);
  }

  void focusInEvent(QFocusEvent* event) override {
    bar_->set_tab_stop(index_);
    QToolButton::focusInEvent(event);
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_ground(painter);
    const QIcon::Mode mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
    if (!icon().isNull()) {
      const QRect box(QPoint(), iconSize());
      icon().paint(&painter, box.translated(rect().center() - box.center()), Qt::AlignCenter, mode);
    } else {
      painter.setPen(
          palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
      painter.drawText(rect(), Qt::AlignCenter, text());
    }
  }

  void paint_ground(QPainter& painter) const {
    const QColor text = palette().color(QPalette::ButtonText), accent = palette().color(QPalette::Highlight);
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor ground = Qt::transparent;
    if (isEnabled() && isDown())
      ground = faint(text, 0.22F);
    else if (isChecked())
      ground = faint(accent, underMouse() ? 0.38F : 0.28F);
    else if (isEnabled() && underMouse())
      ground = faint(text, 0.10F);
    painter.setBrush(ground);
    painter.setPen(isChecked() ? QPen(faint(accent, 0.75F), 1) : QPen(Qt::NoPen));
    painter.drawRoundedRect(box, 4, 4);
    if (!hasFocus()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(accent, 2));
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
  }

  ToolbarFace* bar_;
  int index_;
  std::u16string image_;
};

ToolbarFace::ToolbarFace(platform::Toolbar& model, QWidget* parent) : QWidget(parent), model_(model) {
  setObjectName(to_qt(model.Name()));
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  model_.add_observer(*this);
  model_.set_measure([this](float width) { return to_twips(heightForWidth(to_pixels(width))); });
  model_.set_places([this](const platform::Button& button) { return place_of(button); });
  schedule();
}

ToolbarFace::~ToolbarFace() {
  model_.set_places(nullptr);
  model_.set_measure(nullptr);
  model_.remove_observer(*this);
}

// --- measuring ---

int ToolbarFace::button_height() const { return std::max(smallest_button, fontMetrics().height() + 8); }

int ToolbarFace::button_width(const platform::Button& button) const {
  if (button.Style() == platform::ButtonStyle::Separator) return separator_width;
  const QString caption = to_qt(button.Caption());
  if (caption.trimmed().isEmpty()) return smallest_button;
  return std::max(smallest_button, fontMetrics().horizontalAdvance(caption) + 2 * caption_margin);
}

ToolbarFace::Placement ToolbarFace::place(int width) const {
  Placement result;
  result.boxes.resize(std::size_t(model_.Count()));
  const int height = button_height();
  int x = edge, y = row_gap / 2;
  QRect* separator = nullptr;  // the last one that may turn out to end its row
  bool row_is_empty = true;
  for (int i = 1; i <= model_.Count(); ++i) {
    const platform::Button& button = model_.Item(i);
    if (!button.Visible()) continue;
    const bool separates = button.Style() == platform::ButtonStyle::Separator;
    if (separates && (row_is_empty || separator)) continue;
    const int needed = button_width(button);
    if (!row_is_empty && x + needed > width - edge) {
      if (separator) *separator = {};
      separator = nullptr;
      x = edge;
      y += height + row_gap;
      row_is_empty = true;
      if (separates) continue;
    }
    QRect& box = result.boxes[std::size_t(i - 1)];
    box = QRect(x, y, needed, height);
    separator = separates ? &box : nullptr;
    row_is_empty = false;
    x += needed;
  }
  if (separator) *separator = {};
  result.height = y + height + row_gap / 2;
  return result;
}

int ToolbarFace::heightForWidth(int width) const {
  if (measured_width_ != width) {
    measured_height_ = place(width).height;
    measured_width_ = width;
  }
  return measured_height_;
}

QSize ToolbarFace::sizeHint() const {
  int width = 2 * edge;
  for (int i = 1; i <= model_.Count(); ++i)
    if (model_.Item(i).Visible()) width += button_width(model_.Item(i));
  return {width, heightForWidth(width)};
}

QSize ToolbarFace::minimumSizeHint() const { return {2 * edge + smallest_button, button_height() + row_gap}; }

// --- following the model ---

// The branch toolbar is rebuilt on every move of the caret, a button at a time: drawn is once, at the end.
void ToolbarFace::schedule() {
  measured_width_ = -1;
  if (std::exchange(stale_, true)) return;
  QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

void ToolbarFace::buttons_replaced(platform::Toolbar&) { schedule(); }

void ToolbarFace::button_changed(platform::Toolbar&, platform::Button& button) {
  if (stale_) return schedule();
  const std::size_t place = std::size_t(button.Index() - 1);
  const bool shown = place < buttons_.size() && buttons_[place] && !buttons_[place]->isHidden();
  if (shown != button.Visible() || button.Style() == platform::ButtonStyle::Separator) return schedule();
  if (!shown) return;
  const bool wider = to_qt(button.Caption()) != buttons_[place]->text();
  buttons_[place]->show_state(button);
  set_tab_stop(tab_stop_);
  if (wider) schedule();
}

void ToolbarFace::refreshed(platform::Toolbar&) {
  if (stale_) bring_up_to_date();
}

bool ToolbarFace::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::LayoutRequest:
    case QEvent::Show:
      if (stale_) bring_up_to_date();
      break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::LayoutDirectionChange: schedule(); break;
    default: break;
  }
  return QWidget::event(event);
}

void ToolbarFace::resizeEvent(QResizeEvent*) { bring_up_to_date(); }

void ToolbarFace::bring_up_to_date() {
  stale_ = false;
  const Placement placement = place(width());
  const bool wanted = holder_visible_ && model_.Visible();
  if (isHidden() == wanted) setVisible(wanted);
  separators_.clear();
  for (int i = 1; i <= model_.Count(); ++i) show_button(model_.Item(i), placement.boxes[std::size_t(i - 1)]);
  for (std::size_t i = std::size_t(model_.Count()); i < buttons_.size(); ++i)
    if (buttons_[i]) buttons_[i]->hide();
  set_tab_stop(tab_stop_);
  updateGeometry();
  update();
}

void ToolbarFace::show_button(platform::Button& model, const QRect& box) {
  const QRect seen = layoutDirection() == Qt::RightToLeft && !box.isEmpty()
                         ? QRect(width() - box.x() - box.width(), box.y(), box.width(), box.height())
                         : box;
  const std::size_t place = std::size_t(model.Index() - 1);
  if (buttons_.size() <= place) buttons_.resize(place + 1);
  ToolbarButton*& button = buttons_[place];
  const bool separates = model.Style() == platform::ButtonStyle::Separator;
  if (separates || box.isEmpty()) {
    if (separates && !box.isEmpty()) separators_.push_back(seen);
    if (button) button->hide();
    return;
  }
  if (!button) button = new ToolbarButton(this, model.Index());
  button->show_state(model);
  button->setGeometry(seen);
  button->show();
}

void ToolbarFace::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor line = faint(palette().color(QPalette::WindowText), 0.25F);
  for (const QRect& box : separators_)
    painter.fillRect(QRect(box.center().x(), box.y() + 4, 1, box.height() - 8), line);
}

void ToolbarFace::show_in(const QRect& box, bool visible) {
  setGeometry(box);
  holder_visible_ = visible;
  setVisible(visible && model_.Visible());
}

platform::ButtonPlace ToolbarFace::place_of(const platform::Button& button) const {
  const QWidget* widget = button_widget(button.Index());
  return widget ? platform::ButtonPlace{to_twips(widget->x()), to_twips(widget->y())}
                : platform::ButtonPlace{};
}

// What keeps the button from acting has a line of its own.
QString ToolbarFace::tip_with_keys(int index, const QString& tip) const {
  if (!keys_ || index > model_.Count() || model_.Item(index).ToolTipText().empty()) return tip;
  const QKeySequence keys = keys_(model_.Item(index));
  if (keys.isEmpty()) return tip;
  const qsizetype line = tip.indexOf(u'\n'), end = line < 0 ? tip.size() : line;
  return QStringLiteral("%1 (%2)").arg(tip.first(end), keys.toString(QKeySequence::NativeText)) +
         tip.sliced(end);
}

// --- pressing and walking ---

QWidget* ToolbarFace::button_widget(int index) const {
  const std::size_t place = std::size_t(index - 1);
  return index >= 1 && place < buttons_.size() ? buttons_[place] : nullptr;
}

void ToolbarFace::press(int index) {
  const QPointer<ToolbarFace> alive(this);
  if (before_press_) before_press_();
  if (!alive) return;
  if (index <= model_.Count()) model_.press(model_.Item(index));
}

bool ToolbarFace::can_take_focus(int index) const {
  const QWidget* button = button_widget(index);
  return index <= model_.Count() && button && !button->isHidden() && button->isEnabled();
}

// Of all buttons one alone is reached from elsewhere: the one that had the focus last, else the first that
// can.
void ToolbarFace::set_tab_stop(int index) {
  if (!can_take_focus(index)) {
    index = 1;
    while (index <= model_.Count() && !can_take_focus(index)) ++index;
  }
  tab_stop_ = index;
}

bool ToolbarFace::take_focus() {
  if (isHidden() || !can_take_focus(tab_stop_)) return false;
  button_widget(tab_stop_)->setFocus(Qt::TabFocusReason);
  return true;
}

// To the next button that can take it; where there is none Qt finds a place of its own.
void ToolbarFace::pass_focus_on(int from) {
  for (const Step step : {Step::Next, Step::Previous})
    if (button_widget(from)->hasFocus()) walk(from, step);
}

void ToolbarFace::walk(int from, Step step) {
  int to = from, direction = 1;
  switch (step) {
    case Step::Up:
    case Step::Down: to = nearest_in_other_row(from, step == Step::Down); break;
    case Step::First: to = 1; break;
    case Step::Next: to = from + 1; break;
    case Step::Last:
      to = model_.Count();
      direction = -1;
      break;
    case Step::Previous:
      to = from - 1;
      direction = -1;
      break;
  }
  while (to >= 1 && to <= model_.Count() && !can_take_focus(to)) to += direction;
  if (can_take_focus(to)) button_widget(to)->setFocus(Qt::OtherFocusReason);
}

int ToolbarFace::nearest_in_other_row(int from, bool below) const {
  const QPoint here = button_widget(from)->geometry().center();
  int best = from, best_distance = 0;
  for (int i = 1; i <= model_.Count(); ++i) {
    if (!can_take_focus(i)) continue;
    const QPoint there = button_widget(i)->geometry().center();
    if (below ? there.y() <= here.y() : there.y() >= here.y()) continue;
    // A row away counts more than any distance along it.
    const int distance = std::abs(there.y() - here.y()) * width() + std::abs(there.x() - here.x());
    if (best != from && distance >= best_distance) continue;
    best = i;
    best_distance = distance;
  }
  return best;
}

}  // namespace tvx::qt
