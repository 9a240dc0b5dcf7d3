#include "tvx/qt/support/message_loop.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>

#include "tvx/base/interruption.h"

namespace tvx::qt {
namespace {

QEvent::Type wake_event() {
  static const int type = QEvent::registerEventType();
  return static_cast<QEvent::Type>(type);
}

void run_events(QEventLoop::ProcessEventsFlags which, std::int64_t max_wait_milliseconds) {
  const Uninterrupted all;  // what runs in here is no part of the act that waits for it
  QCoreApplication::sendPostedEvents();
  if (max_wait_milliseconds <= 0) return QCoreApplication::processEvents(which);
  QTimer end;
  end.setSingleShot(true);
  end.start(static_cast<int>(std::min<std::int64_t>(max_wait_milliseconds, 1 << 30)));
  QCoreApplication::processEvents(which | QEventLoop::WaitForMoreEvents);
}

}  // namespace

// What was left stands in the queue already and announces itself no more.
MessageLoop::InputLater::~InputLater() {
  if (--input_later_ > 0) return;
  if (QAbstractEventDispatcher* events = QAbstractEventDispatcher::instance()) events->wakeUp();
}

MessageLoop::MessageLoop() : timer_(new QTimer(this)) {
  timer_->setSingleShot(true);
  timer_->setTimerType(Qt::PreciseTimer);
  connect(timer_, &QTimer::timeout, this, [this] { run_pending(); });
}

MessageLoop::~MessageLoop() = default;

std::int64_t MessageLoop::now() const {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void MessageLoop::post(Task task) {
  if (QThread::currentThread() != thread()) {
    // An event carries the task over; the queue belongs to this loop's thread alone.
    QMetaObject::invokeMethod(
        this, [this, task = std::move(task)]() mutable { post(std::move(task)); }, Qt::QueuedConnection);
    return;
  }
  tasks_.post(std::move(task));
  wake();
}

platform::TimerId MessageLoop::post_delayed(std::int64_t milliseconds, Task task) {
  const auto id = tasks_.post_at(now() + std::max<std::int64_t>(milliseconds, 0), std::move(task));
  set_timer();
  return id;
}

void MessageLoop::cancel(platform::TimerId timer) { tasks_.cancel(timer); }

void MessageLoop::pump(std::int64_t max_wait_milliseconds) {
  if (tasks_first_ > 0 && run_tasks_alone()) return;
  const bool leaves_input =
      input_later_ > 0 && !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
  run_events(leaves_input ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents,
             tasks_.has_pending() ? 0 : max_wait_milliseconds);
}

void MessageLoop::pump_without_input(std::int64_t max_wait_milliseconds) {
  run_events(QEventLoop::ExcludeUserInputEvents, max_wait_milliseconds);
}

/// False: no task has come for so long that what is waited for must be far away, and the program isn't to
/// stand still for it. Tasks of other threads come as events to this object, and so does the wake.
bool MessageLoop::run_tasks_alone() {
  constexpr std::int64_t patience = 250;
  const Uninterrupted all;
  tasks_.bring_due(now());
  if (tasks_.has_pending()) wake();
  const bool some = woken_;
  QCoreApplication::sendPostedEvents(this);
  if (some) last_task_ = now();
  if (some || now() - last_task_ > patience) return some;
  QThread::msleep(1);
  return true;
}

void MessageLoop::wake() {
  if (std::exchange(woken_, true)) return;
  QCoreApplication::postEvent(this, new QEvent(wake_event()));
}

bool MessageLoop::event(QEvent* event) {
  if (event->type() != wake_event()) return QObject::event(event);
  run_pending();
  return true;
}

/// Runs what is pending now. A task that spins a loop of its own finds the tasks after it runnable: the
/// wake mark is taken off first, and put back while any are left.
void MessageLoop::run_pending() {
  woken_ = false;
  tasks_.bring_due(now());
  const std::uint64_t end = tasks_.end();
  while (auto task = tasks_.take_before(end)) {
    if (tasks_.has_pending()) wake();
    (*task)();
  }
  set_timer();
}

void MessageLoop::set_timer() {
  if (const auto next = tasks_.next_time()) {
    timer_->start(static_cast<int>(std::clamp<std::int64_t>(*next - now(), 0, 1 << 30)));
  }
}

}  // namespace tvx::qt
