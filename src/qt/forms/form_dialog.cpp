#include "tvx/qt/forms/form_dialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/qt/forms/form_widgets.h"
#include "tvx/qt/support/modal.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"

namespace tvx::qt {

using platform::ControlKind;
using platform::Form;
using platform::FormControl;

/// Holds everything but the closing buttons. It scrolls only where the screen is too small for the form, so
/// that those buttons are always in reach.
class FormDialog::Area final : public QScrollArea {
 public:
  explicit Area(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setWidgetResizable(true);
  }

  QSize sizeHint() const override { return fitting(widget()->sizeHint()); }
  QSize minimumSizeHint() const override { return fitting(widget()->minimumSizeHint()); }

 private:
  static constexpr int gap_to_bar = 6;

  QSize most() const {
    constexpr int room_for_the_rest = 150;  // the closing buttons, the window's frame, the desktop's bars
    constexpr int room_beside = 60;
    const QSize screen_size = screen()->availableGeometry().size();
    return {std::max(room_for_the_rest, screen_size.width() - room_beside),
            std::max(room_for_the_rest, screen_size.height() - room_for_the_rest)};
  }
  // A bar takes room from the other direction.
  QSize fitting(const QSize& wanted) const {
    QSize size = wanted;
    if (wanted.height() > most().height())
      size.rwidth() += gap_to_bar + verticalScrollBar()->sizeHint().width();
    if (size.width() > most().width())
      size.rheight() += gap_to_bar + horizontalScrollBar()->sizeHint().height();
    return size.boundedTo(most());
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
      const QSize wanted = widget()->sizeHint();
      setViewportMargins(0, 0, wanted.height() > most().height() ? gap_to_bar : 0,
                         wanted.width() > most().width() ? gap_to_bar : 0);
      updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
  }
};

FormDialog::FormDialog(Form& form, QWidget* owner)
    : QDialog(owner), form_(form), area_(new Area(this)), closing_(new QDialogButtonBox(this)) {
  setObjectName(to_qt(form.Name()));
  auto* content = new QWidget;
  make_widgets(*content);
  make_closing_buttons();
  layout_ = std::make_unique<FormLayout>(form, widgets_, *content);
  area_->setWidget(content);
  auto* outline = new QVBoxLayout(this);
  outline->addWidget(area_);
  outline->addWidget(closing_);
  outline->setSpacing(outline->spacing() + style()->pixelMetric(QStyle::PM_LayoutBottomMargin) / 2);
  show_caption();
  if (form.least_width() > 0)
    setMinimumSize(to_pixels(float(form.least_width())), to_pixels(float(form.least_height())));
  form_.add_observer(*this);
  qApp->installEventFilter(this);
}

FormDialog::~FormDialog() {
  qApp->removeEventFilter(this);
  form_.remove_observer(*this);
}

// --- making ---

void FormDialog::make_widgets(QWidget& content) {
  const UserAct run = [this](const std::function<void()>& deed) { act(deed); };
  for (const auto& control : form_.controls()) {
    QWidget* frame = control->container() ? widgets_.value(control->container()) : nullptr;
    QWidget* widget = make_widget(*control, frame ? frame : &content, run);
    widgets_.insert(control.get(), widget);
  }
}

// The desktop decides about their order by what they are for.
void FormDialog::make_closing_buttons() {
  for (const FormControl* control : form_.closing_buttons()) {
    const auto role = control == form_.default_button()  ? QDialogButtonBox::AcceptRole
                      : control == form_.cancel_button() ? QDialogButtonBox::RejectRole
                                                         : QDialogButtonBox::ActionRole;
    auto* button = static_cast<QPushButton*>(widgets_.value(control));
    // Fonts of several scripts differ in height; buttons side by side don't.
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    closing_->addButton(button, role);
  }
  for (const auto& control : form_.controls())
    if (control->kind() == ControlKind::CommandButton)
      static_cast<QPushButton*>(widgets_.value(control.get()))->setAutoDefault(form_.default_button());
  if (QWidget* button = widgets_.value(form_.default_button()))
    static_cast<QPushButton*>(button)->setDefault(true);
}

// The closing buttons come last, as the desktop has put them. It does so when they are shown, and takes
// others out of the way that the keyboard goes: the order is set then.
void FormDialog::set_tab_order() {
  QWidgetList order;
  for (const auto& control : form_.controls())
    if (std::ranges::find(form_.closing_buttons(), control.get()) == form_.closing_buttons().end())
      order << widgets_.value(control.get());
  for (int i = 0; i < closing_->layout()->count(); ++i)
    if (QWidget* button = closing_->layout()->itemAt(i)->widget()) order << button;
  order.removeIf([](const QWidget* widget) { return widget->focusPolicy() == Qt::NoFocus; });
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

// --- following the model ---

void FormDialog::control_changed(FormControl& control) {
  if (QWidget* widget = widgets_.value(&control)) show_state(control, *widget);
  for (const auto& other : form_.controls())
    if (other->colour_field() == &control) show_state(*other, *widgets_.value(other.get()));
  layout_->reach_changed();
  layout_->fault_changed(control);
  if (control.has_caption()) captions_changed();
}

void FormDialog::caption_changed(Form&) { captions_changed(); }

void FormDialog::captions_changed() {
  show_caption();
  layout_->captions_changed();
}

void FormDialog::form_hidden(Form&) { done(QDialog::Accepted); }

// The words decide on the direction: a host that reads from the left may have given an Arabic language file.
void FormDialog::show_caption() {
  const QString caption = to_qt(form_.Caption());
  setWindowTitle(QString(caption).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
  const bool leftwards = (parentWidget() && parentWidget()->layoutDirection() == Qt::RightToLeft) ||
                         caption.isRightToLeft() ||
                         std::ranges::any_of(form_.controls(), [](const auto& control) {
                           return control->has_caption() && to_qt(control->Caption()).isRightToLeft();
                         });
  setLayoutDirection(leftwards ? Qt::RightToLeft : Qt::LeftToRight);
}

void FormDialog::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (!layout_) return;
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
    layout_->captions_changed();
  if (event->type() == QEvent::PaletteChange) {
    for (const auto& control : form_.controls()) show_state(*control, *widgets_.value(control.get()));
    layout_->reach_changed();
  }
}

// The user begins in the first field, and types over what stands there.
void FormDialog::showEvent(QShowEvent* event) {
  set_tab_order();
  for (const auto& control : form_.controls()) {
    QWidget* widget = widgets_.value(control.get());
    if (widget->focusPolicy() == Qt::NoFocus || !control->reachable()) continue;
    widget->setFocus(Qt::TabFocusReason);
    break;
  }
  QDialog::showEvent(event);
  act([this] { form_.paint(); });
  // Work that takes its time begins when the window is there.
  if (!std::exchange(activated_, true))
    QTimer::singleShot(0, this, [this] { act([this] { form_.activate(); }); });
}

// What the window system wants painted anew, as where another window has gone; what Qt paints by itself, a
// caret that blinks, is nobody's news. Nor is the room under the dialog's own lists, menus and tips: who
// picks from a list means it.
bool FormDialog::eventFilter(QObject* watched, QEvent* event) {
  constexpr int time_to_uncover = 500;
  if (event->type() == QEvent::Hide && watched->isWidgetType()) {
    const Qt::WindowType type = static_cast<QWidget*>(watched)->windowType();
    if (type == Qt::Popup || type == Qt::ToolTip) popup_closed_.start();
  }
  if (watched == windowHandle() && event->type() == QEvent::Expose && windowHandle()->isExposed()) {
    const bool under_popup = QApplication::activePopupWidget() ||
                             (popup_closed_.isValid() && popup_closed_.elapsed() < time_to_uncover);
    if (!under_popup) act([this] { form_.paint(); });
  }
  if (event->type() == QEvent::FocusIn)
    for (const auto& control : form_.controls())
      if (widgets_.value(control.get()) == watched) form_.set_active(*control);
  return QDialog::eventFilter(watched, event);
}

void FormDialog::focus_wanted(FormControl& control) { widgets_.value(&control)->setFocus(); }

// --- the user ---

void FormDialog::reject() {
  act([this] { form_.cancel(); });
}

// The model's work may close the owner, and this with it.
void FormDialog::act(const std::function<void()>& deed) {
  const QPointer<FormDialog> alive(this);
  try {
    deed();
  } catch (const RuntimeError& failure) {
    if (alive) tell(failure);
  }
}

void FormDialog::tell(const RuntimeError& failure) {
  Modal<QMessageBox> box(QMessageBox::Warning, windowTitle(), to_qt(failure.text()), QMessageBox::Ok, this);
  box->setTextFormat(Qt::PlainText);
  box->setLayoutDirection(layoutDirection());
  box.run();
}

}  // namespace tvx::qt
