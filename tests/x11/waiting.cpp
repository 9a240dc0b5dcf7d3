#include "x11/waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace tvx::x11 {

/// Each event is dealt with as it comes: the engine passes hundreds of them on while it loads a page, and a
/// pause after each would make seconds of that.
bool wait_for(const std::function<bool()>& condition) {
  const QDeadlineTimer end(30'000);
  QTimer wakes_up;  // where no event comes, the condition may still come true
  wakes_up.start(10);
  while (!condition()) {
    if (end.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

}  // namespace tvx::x11
