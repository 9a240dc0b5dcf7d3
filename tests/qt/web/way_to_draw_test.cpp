#include "tvx/qt/web/way_to_draw.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <map>
#include <optional>

namespace tvx::qt {
namespace {

/// An environment of its own, and a folder of devices to which nodes are added.
class WaysToDraw : public testing::Test {
 protected:
  WaysToDraw() {
    for (const char* name :
         {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "QT_XCB_GL_INTEGRATION", "QT_QUICK_BACKEND",
          "QSG_RHI_BACKEND", "LIBGL_ALWAYS_SOFTWARE", "GALLIUM_DRIVER", "QTWEBENGINE_CHROMIUM_FLAGS"}) {
      if (qEnvironmentVariableIsSet(name))
        before_[name] = qgetenv(name);
      else
        before_[name] = std::nullopt;
      qunsetenv(name);
    }
    qputenv("DISPLAY", ":1");
  }
  ~WaysToDraw() override {
    for (const auto& [name, value] : before_) value ? qputenv(name, *value) : qunsetenv(name);
  }
  void add_device(const QString& path) {
    const QFileInfo info(folder_.filePath(path));
    ASSERT_TRUE(QDir().mkpath(info.absolutePath()));
    QFile file(info.filePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  std::filesystem::path devices() const { return folder_.path().toStdString(); }
  bool by_processor() const { return WayToDraw(devices()).by_processor(); }

 private:
  QTemporaryDir folder_;
  std::map<const char*, std::optional<QByteArray>> before_;
};

TEST_F(WaysToDraw, WithoutACardIsTheProcessor) {
  const WayToDraw way(devices());
  EXPECT_TRUE(way.by_processor());
  EXPECT_EQ(qgetenv("QT_XCB_GL_INTEGRATION"), "none");
  EXPECT_EQ(qgetenv("QT_QUICK_BACKEND"), "software");
  EXPECT_EQ(qgetenv("QTWEBENGINE_CHROMIUM_FLAGS"), "--disable-gpu");
}

TEST_F(WaysToDraw, OtherFlagsOfTheEngineStay) {
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--no-sandbox");
  const WayToDraw way(devices());
  EXPECT_EQ(qgetenv("QTWEBENGINE_CHROMIUM_FLAGS"), "--no-sandbox --disable-gpu");
}

TEST_F(WaysToDraw, ProgramsStartedLaterMayUseOpenGL) {
  { const WayToDraw way(devices()); }
  EXPECT_FALSE(qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"));
}

TEST_F(WaysToDraw, WhatWasForbiddenIsNotMissedAloud) {
  static QStringList said;
  said.clear();
  const QtMessageHandler before =
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { said << text; });
  const auto complain = [] {
    qWarning("QXcbIntegration: Cannot create platform OpenGL context, neither GLX nor EGL are enabled");
    qWarning("No suitable graphics backend found\n");
    qWarning("another");
  };
  complain();
  EXPECT_EQ(said.size(), 3);
  said.clear();
  { const WayToDraw way(devices()); }
  complain();
  { const WayToDraw again(devices()); }
  complain();
  qInstallMessageHandler(before);
  EXPECT_EQ(said, QStringList({QStringLiteral("another"), QStringLiteral("another")}));
}

TEST_F(WaysToDraw, WithACardNothingIsSet) {
  add_device(QStringLiteral("dri/renderD128"));
  const WayToDraw way(devices());
  EXPECT_FALSE(way.by_processor());
  EXPECT_FALSE(qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"));
  EXPECT_FALSE(qEnvironmentVariableIsSet("QT_QUICK_BACKEND"));
  EXPECT_FALSE(qEnvironmentVariableIsSet("QTWEBENGINE_CHROMIUM_FLAGS"));
}

TEST_F(WaysToDraw, ACardThatOnlyShowsDoesNotDraw) {
  add_device(QStringLiteral("dri/card0"));
  EXPECT_TRUE(by_processor());
}

TEST_F(WaysToDraw, ACardWithADriverOfItsOwnDraws) {
  add_device(QStringLiteral("nvidiactl"));
  EXPECT_FALSE(by_processor());
}

TEST_F(WaysToDraw, WhatSomebodyHasChosenStays) {
  qputenv("QT_QUICK_BACKEND", "rhi");
  EXPECT_FALSE(by_processor());
  EXPECT_EQ(qgetenv("QT_QUICK_BACKEND"), "rhi");
  qunsetenv("QT_QUICK_BACKEND");
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--use-gl=egl");
  EXPECT_FALSE(by_processor());
  EXPECT_EQ(qgetenv("QTWEBENGINE_CHROMIUM_FLAGS"), "--use-gl=egl");
}

TEST_F(WaysToDraw, OnlyOnX11) {
  qputenv("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_FALSE(by_processor());
  qputenv("QT_QPA_PLATFORM", "xcb");
  EXPECT_TRUE(by_processor());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  EXPECT_FALSE(by_processor());
}

}  // namespace
}  // namespace tvx::qt
