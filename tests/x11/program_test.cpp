#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

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

  void start(const QByteArray& page) {
    QFile out(page_);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(page) == page.size());
    out.close();
    program_.setStandardOutputFile(QProcess::nullDevice());
    program_.setStandardErrorFile(QProcess::nullDevice());
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
  /// Keys before the caret is there go nowhere: letters until one has arrived. How many that were, the file
  /// says.
  void type_first_letter() {
    bool arrived = false;
    for (int i = 0; i < 60 && !arrived; ++i) {
      hands::type(QStringLiteral("a"));
      arrived = QTest::qWaitFor([&] { return modified(); }, 1000);
    }
    ASSERT_TRUE(arrived) << "no key arrives";
  }

  QTemporaryDir folder_;
  const QString page_ = folder_.filePath(QStringLiteral("page.html"));
  QProcess program_;
};

TEST_F(ProgramOnScreen, TypesSavesAndEnds) {
  start(
      "<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body>\n<p>A paragraph.</p>\n</body></html>\n");
  type_first_letter();
  hands::type(QStringLiteral("bc d"));
  // A letter that comes while the file is written is for the next time.
  ASSERT_TRUE(wait_for([&] {
    hands::press(QStringLiteral("ctrl+s"));
    return QTest::qWaitFor([&] { return file().contains("bc d") && !modified(); }, 1000);
  })) << file().toStdString();
  const QByteArray start = "<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body>\n<p>a",
                   end = "abc dA paragraph.</p>\n</body></html>\n";
  const QByteArray saved = file();
  EXPECT_TRUE(saved.startsWith(start)) << saved.toStdString();
  EXPECT_TRUE(saved.endsWith(end.mid(1))) << saved.toStdString();
  EXPECT_EQ(saved.mid(start.size()).replace(end.mid(1), "").replace("a", ""), "") << saved.toStdString();
  hands::press(QStringLiteral("ctrl+q"));
  ASSERT_TRUE(wait_for([&] { return program_.state() == QProcess::NotRunning; }));
  EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program_.exitCode(), 0);
}

}  // namespace
}  // namespace tvx::x11
