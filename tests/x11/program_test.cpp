#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include "tvx/qt/web/way_to_draw.h"
#include "x11/hands.h"
#include "x11/x_display.h"

/// The program as a user starts it, seen from without: what its window's title says, and what is in the file.
namespace tvx::x11 {
namespace {

class ProgramOnScreen : public testing::Test {
 protected:
  void SetUp() override {
    if (!XDisplay::skip_reason.isEmpty()) GTEST_SKIP() << "SKIPPED: " << XDisplay::skip_reason.toStdString();
  }
  void TearDown() override {
    if (program_.state() == QProcess::NotRunning) return;
    program_.kill();
    program_.waitForFinished();
  }

  void start(const QByteArray& page, const QString& errors = QProcess::nullDevice()) {
    QFile out(page_);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(page) == page.size());
    out.close();
    program_.setStandardOutputFile(QProcess::nullDevice());
    program_.setStandardErrorFile(errors);
    program_.start(QStringLiteral(TVX_BIN_DIR "/htmled"), {page_});
    ASSERT_TRUE(wait_for([&] { return !window().isEmpty(); })) << "no window came";
    give_focus();
  }
  QString ask(const QStringList& question) {
    return QString::fromUtf8(output_of(QStringLiteral("xdotool"), question)).trimmed();
  }
  QString window() {
    return ask({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                QStringLiteral("page.html")})
        .section(u'\n', 0, 0);
  }
  void give_focus() {
    ask({QStringLiteral("windowfocus"), window()});
    EXPECT_TRUE(wait_for([&] { return ask({QStringLiteral("getwindowfocus")}) == window(); }));
  }
  bool modified() { return ask({QStringLiteral("getwindowname"), window()}).contains(u'*'); }
  QByteArray file() const {
    QFile in(page_);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }
  QTemporaryDir folder_;
  const QString page_ = folder_.filePath(QStringLiteral("page.html")),
                errors_ = folder_.filePath(QStringLiteral("errors"));
  QProcess program_;
};

TEST_F(ProgramOnScreen, TypesSavesAndEnds) {
  start(
      "<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body>\n<p>A paragraph.</p>\n</body></html>\n");
  hands::type(QStringLiteral("abc d"));
  EXPECT_TRUE(wait_for([&] { return modified(); }));
  hands::press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file().contains("abc d") && !modified(); }));
  EXPECT_EQ(file(),
            "<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body>\n<p>abc dA "
            "paragraph.</p>\n</body></html>\n");
  hands::press(QStringLiteral("ctrl+q"));
  ASSERT_TRUE(wait_for([&] { return program_.state() == QProcess::NotRunning; }));
  EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program_.exitCode(), 0);
}

// Without a graphics card OpenGL is the processor's work, too, in a round-about way whose search takes half
// of the start: no library of it is there then, and the page is shown all the same.
TEST_F(ProgramOnScreen, LooksForOpenGLOnlyWhereACardIs) {
  if (qt::has_graphics_card()) GTEST_SKIP() << "SKIPPED: this machine has a graphics card";
  start(
      "<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body bgcolor=\"#00ff00\">\n<p>A "
      "paragraph.</p>\n</body></html>\n");
  hands::type(QStringLiteral("abc"));
  EXPECT_TRUE(wait_for([&] { return modified(); }));
  const auto green = [&] {
    const QImage image = QGuiApplication::primaryScreen()->grabWindow(window().toULongLong()).toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2) == QColor(0, 255, 0);
  };
  EXPECT_TRUE(wait_for(green));
  QFile maps(QStringLiteral("/proc/%1/maps").arg(program_.processId()));
  ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
  const QByteArray loaded = maps.readAll();
  EXPECT_TRUE(loaded.contains("libQt6WebEngineCore"));
  EXPECT_FALSE(loaded.contains("libGLX_mesa"));
  EXPECT_FALSE(loaded.contains("_dri.so"));
}

// Whoever starts it in a terminal sees what concerns him, and nothing of how engine and toolkit start.
TEST_F(ProgramOnScreen, SaysNothingOfItsStartInATerminal) {
  if (qt::has_graphics_card()) GTEST_SKIP() << "SKIPPED: what a driver says is its own";
  QProcessEnvironment desktop = QProcessEnvironment::systemEnvironment();
  desktop.remove(QStringLiteral("QTWEBENGINE_CHROMIUM_FLAGS"));
  program_.setProcessEnvironment(desktop);
  start("<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body>\n<p>A paragraph.</p>\n</body></html>\n",
        errors_);
  hands::type(QStringLiteral("abc"));
  EXPECT_TRUE(wait_for([&] { return modified(); }));
  hands::press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return !modified(); }));
  hands::press(QStringLiteral("ctrl+q"));
  ASSERT_TRUE(wait_for([&] { return program_.state() == QProcess::NotRunning; }));
  QFile errors(errors_);
  ASSERT_TRUE(errors.open(QIODevice::ReadOnly));
  QByteArray said = errors.readAll();
  said.replace("htmled: running as root: the view's sandbox is off\n", "");
  EXPECT_EQ(said.toStdString(), "");
}

TEST_F(ProgramOnScreen, WithoutAScreenItSaysSoAndEnds) {
  QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM"})
    bare.remove(QString::fromLatin1(name));
  program_.setProcessEnvironment(bare);
  program_.start(QStringLiteral(TVX_BIN_DIR "/htmled"), {QStringLiteral("--new-window"), page_});
  ASSERT_TRUE(program_.waitForFinished());
  EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program_.exitCode(), 1);
  EXPECT_EQ(program_.readAllStandardError(), "htmled: there is no display; htmled-cli edits without one\n");
}

}  // namespace
}  // namespace tvx::x11
