#include "tvx/exported/window_part.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "tvx/embedded/application.h"
#include "tvx/embedded/window_stage.h"

namespace tvx::embedded {

namespace {

/// A turn of the toolkit's loop deals with what is most urgent alone; the engine draws in what comes after
/// that. Where something is always there, as in an animation, it ends all the same.
void deal_with_what_is_there() {
  const QDeadlineTimer end(10);
  QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
  while (dispatcher && dispatcher->processEvents(QEventLoop::AllEvents) && !end.hasExpired()) {
  }
}

class QtWindows final : public exported::WindowPart {
 public:
  std::unique_ptr<exported::Stage> make_stage(exported::StageOwner& owner,
                                              const exported::Position& position) override {
    need_application(position.where == TVX_IN_WINDOW);
    return std::make_unique<WindowStage>(owner, position);
  }

  void pump(std::int64_t milliseconds) override {
    if (!QCoreApplication::instance()) return;
    // Outside of an event loop of Qt's own nobody else does this.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (milliseconds <= 0) return deal_with_what_is_there();
    QTimer end;
    end.setSingleShot(true);
    end.start(static_cast<int>(std::min<std::int64_t>(milliseconds, 1 << 30)));
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }

  void post(std::function<void()> task) override {
    if (QCoreApplication* application = QCoreApplication::instance())
      QMetaObject::invokeMethod(application, std::move(task), Qt::QueuedConnection);
  }
};

}  // namespace

}  // namespace tvx::embedded

extern "C" tvx::exported::WindowPart* tvx_window_part() {
  static tvx::embedded::QtWindows part;
  return &part;
}
