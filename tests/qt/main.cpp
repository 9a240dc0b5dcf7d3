#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include "tvx/web_engine.h"

/// The tests see the real engine, with no display.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  const QTemporaryDir settings;  // nothing is remembered for the user who runs them
  qputenv("XDG_STATE_HOME", settings.path().toLocal8Bit());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  return RUN_ALL_TESTS();
}
