#include "tvx/embedded/window_stage.h"

#include <QApplication>
#include <QEvent>
#include <QResizeEvent>
#include <QTimer>
#include <QWindow>
#include <set>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/embedded/application.h"
#include "tvx/platform/window.h"

namespace tvx::embedded {

namespace {

std::set<WindowStage*>& living() {
  static std::set<WindowStage*> stages;
  return stages;
}

/// A new widget whose control has this number, by which hosts know it already.
qt::HTMLedWidget* widget_numbered(std::int32_t handle) {
  if (handle != 0) platform::set_next_window_handle(platform::WindowHandle{handle});
  auto* widget = new qt::HTMLedWidget;
  platform::set_next_window_handle(std::nullopt);
  return widget;
}

void expect_window(std::uint64_t number) {
  if (!is_window_on_x11(number)) throw RuntimeError(errors::invalid_call, u"There is no such window");
}

/// The number of the host's window, which is there; 0 for a window of the control's own.
std::uint64_t host_window_of(const exported::Position& position) {
  if (position.where != TVX_IN_WINDOW) return 0;
  expect_window(position.window);
  return position.window;
}

}  // namespace

WindowStage::WindowStage(exported::StageOwner& owner, const exported::Position& position)
    : owner_(&owner), host_window_(host_window_of(position)), widget_(widget_numbered(position.handle)) {
  connect(widget_, &qt::HTMLedWidget::property_changed, this, [this](const QString& key) {
    if (owner_) owner_->property_changed(key.toStdU16String());
  });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow_focus(now); });
  qApp->installEventFilter(this);
  living().insert(this);
}

WindowStage::~WindowStage() {
  living().erase(this);
  end();
}

void WindowStage::abandon_all() {
  for (WindowStage* stage : living()) stage->end();
}

void WindowStage::enter_host_window() {
  expect_window(host_window_);  // the start has taken a while
  widget_->setWindowFlags(Qt::FramelessWindowHint);
  widget_->winId();
  QWindow* host = QWindow::fromWinId(static_cast<WId>(host_window_));
  host->QObject::setParent(this);
  widget_->windowHandle()->setParent(host);
}

core::HTMLed& WindowStage::control() {
  if (!widget_) throw RuntimeError(errors::object_not_set, u"The control's window is gone");
  return widget_->control();
}

// The engine's view makes the toolkit create the window anew, on the desktop: so it comes first.
void WindowStage::start(bool user_mode) {
  widget_->set_design_mode(!user_mode);
  widget_->start();
  if (widget_ && host_window_ != 0) enter_host_window();
  if (widget_) widget_->show();
}

void WindowStage::show() {
  if (widget_) widget_->show();
}

void WindowStage::hide() {
  if (widget_) widget_->hide();
}

void WindowStage::resize(const tvx_box& box) {
  if (!widget_) return;
  const bool has_position = box.left != exported::anywhere && box.top != exported::anywhere;
  const QPoint position = has_position ? QPoint(box.left, box.top) : QPoint();
  // Without a frame: the toolkit would take that around the host's window for the control's.
  if (host_window_ != 0) return widget_->setGeometry(QRect(position, QSize(box.width, box.height)));
  if (has_position) widget_->move(position);
  widget_->resize(box.width, box.height);
}

void WindowStage::take_focus() {
  if (!widget_) return;
  if (QWindow* window = widget_->windowHandle()) window->requestActivate();
  widget_->setFocus(Qt::OtherFocusReason);
}

void WindowStage::set_title(std::u16string_view title) {
  if (widget_)
    widget_->setWindowTitle(QString::fromUtf16(title.data(), static_cast<qsizetype>(title.size())));
}

std::uint64_t WindowStage::window() {
  if (!widget_ || !is_on_x11()) return 0;
  const std::uint64_t number = widget_->winId();
  // The host asks for it by a connection of its own: ours has told the server of it by then.
  is_window_on_x11(number);
  return number;
}

void WindowStage::end() {
  if (!owner_) return;
  owner_ = nullptr;
  qApp->removeEventFilter(this);
  disconnect(widget_, nullptr, this, nullptr);
  widget_->control().set_events(nullptr);
  delete widget_;
}

bool WindowStage::eventFilter(QObject* object, QEvent* event) {
  if (object == widget_ && event->type() == QEvent::Close) {
    if (owner_ && host_window_ == 0 && !owner_->may_close()) {
      event->ignore();
      return true;
    }
    QTimer::singleShot(0, this, [this] {
      if (owner_) owner_->window_closed();
    });
  }
  if (object == widget_ && event->type() == QEvent::Resize && owner_) {
    const QSize size = static_cast<QResizeEvent*>(event)->size();
    owner_->resized(size.width(), size.height());
  }
  if (host_window_ != 0 && event->type() == QEvent::MouseButtonPress) follow_press(object);
  return false;
}

void WindowStage::follow_focus(const QWidget* now) {
  const bool is_inside = now && widget_ && (now == widget_ || widget_->isAncestorOf(now));
  if (is_inside == has_focus_) return;
  has_focus_ = is_inside;
  if (owner_) owner_->focus_changed(has_focus_);
}

// A window manager hands the keyboard to windows of its own alone, and ours is within the host's.
void WindowStage::follow_press(QObject* pressed) {
  const auto* widget = qobject_cast<QWidget*>(pressed);
  if (!widget_ || !widget || (widget != widget_ && !widget_->isAncestorOf(widget))) return;
  QWindow* window = widget_->windowHandle();
  if (window && QGuiApplication::focusWindow() != window) window->requestActivate();
}

}  // namespace tvx::embedded
