#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "tvx/web_engine.h"
#include "x11/x_display.h"

/// The tests bring a screen of their own, which no other test sees. The server picks a number that is free.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  tvx::x11::XDisplay display;
  if (!display.problem().isEmpty()) {
    tvx::x11::XDisplay::skip_reason = display.problem();
    return RUN_ALL_TESTS();
  }
  qputenv("DISPLAY", display.name());
  qputenv("QT_QPA_PLATFORM", "xcb");
  qunsetenv("WAYLAND_DISPLAY");
  // Where no desktop is, the toolkit draws its own dialogs; the user's settings are none of the tests'.
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
  qputenv("XDG_STATE_HOME", home.path().toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
  tvx::qt::prepare_web_engine();
  int result = 0;
  {
    QApplication application(argc, argv);
    result = RUN_ALL_TESTS();
  }
  return result;
}
