#include <gtest/gtest.h>

#include <signal.h>

#include <QDir>
#include <QTest>

#include "x11/hands.h"
#include "x11/managed_screen.h"

/// What the user puts on paper, on a managed screen.
namespace tvx::x11 {
namespace {

constexpr const char* program_file = TVX_BIN_DIR "/htmled";

class PrintingOnScreen : public ManagedScreen {
 protected:
  void SetUp() override {
    // What an earlier test left unsaved would be asked about.
    QDir(QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME")) + QStringLiteral("/tvxHTML")).removeRecursively();
    ManagedScreen::SetUp();
  }
  /// A page that takes the engine a second or more to put on paper.
  void open_long_page() {
    QByteArray page = "<!DOCTYPE html>\n<title>t</title>\n";
    for (int i = 0; i < 8000; ++i) page += "<p>Paragraph " + QByteArray::number(i) + "</p>\n";
    write(QStringLiteral("long.html"), page);
    write(QStringLiteral("other.html"), "<!DOCTYPE html>\n<title>t</title>\n<p>Words</p>\n");
    start(QString::fromLatin1(program_file),
          {path_of(QStringLiteral("long.html")), path_of(QStringLiteral("other.html"))});
    ASSERT_TRUE(comes_to_front(QStringLiteral("long.html")));
    QTest::qWait(1500);
  }
  /// Asks for the PDF, which the program then writes.
  void export_pdf() {
    press(QStringLiteral("alt+f"));
    QTest::qWait(300);
    press(QStringLiteral("e"));
    ASSERT_TRUE(comes_to_front(QStringLiteral("Export as PDF"))) << active_title().toStdString();
    press(QStringLiteral("Return"));
    ASSERT_TRUE(comes_to_front(QStringLiteral("long.html")));
  }
  bool is_whole() {
    const QByteArray pdf = file(QStringLiteral("long.pdf"));
    return pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF");
  }
  /// Without a crash, and with the PDF whole.
  void expect_end(int code) {
    ASSERT_TRUE(wait_for([&] { return program().state() == QProcess::NotRunning; }));
    EXPECT_EQ(program().exitStatus(), QProcess::NormalExit) << "it crashes";
    EXPECT_EQ(program().exitCode(), code);
    EXPECT_TRUE(is_whole());
  }
};

TEST_F(PrintingOnScreen, ATabThatIsClosedWhileItsPdfIsWrittenGoesAndThePdfIsFinished) {
  open_long_page();
  export_pdf();
  press(QStringLiteral("ctrl+w"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("other.html")));
  EXPECT_FALSE(is_whole()) << "the tab doesn't wait for it";
  EXPECT_TRUE(wait_for([&] { return is_whole(); }));
  EXPECT_EQ(program().state(), QProcess::Running);
}

TEST_F(PrintingOnScreen, AWindowThatIsClosedWhileAPdfIsWrittenGoesAndThePdfIsFinished) {
  open_long_page();
  export_pdf();
  press(QStringLiteral("ctrl+q"));
  EXPECT_TRUE(wait_for([&] { return active_title().isEmpty(); }));
  EXPECT_FALSE(is_whole()) << "the window doesn't wait for it";
  expect_end(0);
}

TEST_F(PrintingOnScreen, AProgramThatTheSystemEndsFinishesThePdf) {
  open_long_page();
  export_pdf();
  ASSERT_EQ(::kill(pid_t(program().processId()), SIGTERM), 0);
  EXPECT_FALSE(is_whole());
  expect_end(128 + SIGTERM);
}

}  // namespace
}  // namespace tvx::x11
