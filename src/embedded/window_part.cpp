#include "tvx/exported/window_part.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "tvx/embedded/application.h"
#include "tvx/embedded/window_stage.h"

namespace tvx::embedded {

namespace {

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
    if (milliseconds <= 0) return QCoreApplication::processEvents(QEventLoop::AllEvents);
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
