#include "tvx/embedded/application.h"

#include <xcb/xcb.h>
#include <QApplication>
#include <QThread>

#include <clocale>
#include <cstdlib>
#include <string>

#include "tvx/base/error.h"
#include "tvx/embedded/window_stage.h"
#include "tvx/web_engine.h"

namespace tvx::embedded {

namespace {

QApplication* own_application = nullptr;

/// Ends with the thread that the application was made in, which is the program's first as a rule. The
/// engine's threads must have ended before the libraries that they stand on are torn down, and this must come
/// before the toolkit forgets the thread: an exit handler would be too late. Hosts that end without having
/// released their controls are told nothing any more: they may be half gone themselves.
class EndOfThread {
 public:
  ~EndOfThread() {
    WindowStage::abandon_all();
    delete own_application;
    own_application = nullptr;
  }
  void expect() {}
};

/// A variable of the environment for the time in which the application is made, unless somebody has set it.
class Preset {
 public:
  Preset(const char* name, const char* value) : name_(name), is_ours_(!std::getenv(name)) {
    if (is_ours_) setenv(name, value, 0);
  }
  ~Preset() {
    if (is_ours_) unsetenv(name_);
  }
  Preset(const Preset&) = delete;
  Preset& operator=(const Preset&) = delete;

 private:
  const char* name_;
  bool is_ours_;
};

/// What a program has chosen for its own texts and numbers stays, whatever the toolkit prefers.
class KeptLocale {
 public:
  KeptLocale() : locale_(std::setlocale(LC_ALL, nullptr)) {}
  ~KeptLocale() { std::setlocale(LC_ALL, locale_.c_str()); }
  KeptLocale(const KeptLocale&) = delete;
  KeptLocale& operator=(const KeptLocale&) = delete;

 private:
  std::string locale_;
};

void make_application() {
  static char name[] = "tvxHTML";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  // X11 first: there a host can have the control in a window of its own. The first that works is taken.
  const Preset platform("QT_QPA_PLATFORM", "xcb;wayland;offscreen");
  const KeptLocale locale;
  qt::prepare_web_engine();
  own_application = new QApplication(count, arguments);
  own_application->setQuitOnLastWindowClosed(false);
  thread_local EndOfThread end;  // made after what the toolkit keeps of the thread, and so ended before it
  end.expect();
}

}  // namespace

bool is_window_on_x11(std::uint64_t number) {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return false;
  xcb_connection_t* connection = x11->connection();
  const xcb_get_geometry_cookie_t asked = xcb_get_geometry(connection, static_cast<xcb_drawable_t>(number));
  xcb_generic_error_t* error = nullptr;  // taken here, or the toolkit would write about it
  xcb_get_geometry_reply_t* geometry = xcb_get_geometry_reply(connection, asked, &error);
  std::free(error);
  std::free(geometry);
  return geometry != nullptr;
}

bool is_on_x11() { return QGuiApplication::platformName() == QStringLiteral("xcb"); }

void need_application(bool on_x11) {
  if (!QCoreApplication::instance()) make_application();
  const QCoreApplication* present = QCoreApplication::instance();
  if (!qobject_cast<const QApplication*>(present) || present->thread() != QThread::currentThread())
    throw RuntimeError(errors::invalid_call,
                       u"The program has an application object without widgets, or in another thread");
  if (on_x11 && !is_on_x11()) throw RuntimeError(errors::invalid_call, u"There is no X11 desktop");
}

}  // namespace tvx::embedded
