#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "support/server_process.h"
#include "tvx/base/strings.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Pictures on their way to a server, in the window: what the user sees and does meanwhile.
namespace tvx::x11 {
namespace {

class TransferOnScreen : public EditorOnScreen {
 protected:
  /// A page with pictures, and a server that misbehaves in one chosen way.
  void start_with_server(const std::string& oddity, int pictures, int size) {
    server_ = std::make_unique<ServerProcess>(
        std::vector<std::string>{"/usr/bin/python3", TVX_SOURCE_DIR "/tests/network/odd_ftpd.py", oddity});
    const std::string port = server_->line();
    ASSERT_FALSE(port.empty());
    QByteArray page = "<p>text</p>";
    for (int i = 0; i < pictures; ++i) {
      const QString picture = path_of(QString("picture %1.gif").arg(i));
      QFile file(picture);
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
      file.write(QByteArray(size, 'x'));
      page += "<img src=\"file://" + picture.toUtf8().replace(' ', "%20") + "\" width=40 height=20>";
    }
    start(page);
    control().set_FTPHost(from_utf8("ftp://127.0.0.1:" + port));
    control().set_FTPUser(u"ada");
    control().set_FTPPassive(true);
    control().set_FTPBlockSize(65536);
    control().set_FTPInitDir(u"/");
    control().set_FTPSaveToURL(u"https://example.org/");
  }

  static QDialog* progress() {
    for (QWidget* each : QApplication::topLevelWidgets())
      if (each->objectName() == "frmWait" && each->isVisible()) return qobject_cast<QDialog*>(each);
    return nullptr;
  }

  /// Once the dialog is on the screen and the window has painted it, within the transfer's own loop.
  void when_seen(std::function<void(QDialog&)> act) {
    auto* watch = new QTimer(&watcher_);
    watch->callOnTimeout([watch, act = std::move(act)] {
      QDialog* dialog = progress();
      if (!dialog) return;
      watch->stop();
      QTest::qWait(200);
      if (progress()) act(*dialog);
    });
    watch->start(20);
  }

  void keep_picture(const QString& name) {
    const QByteArray folder = qgetenv("TVX_TEST_PICTURES");
    if (!folder.isEmpty())
      window_->screen()->grabWindow(0).save(QString::fromUtf8(folder) + "/" + name + ".png");
  }

  std::unique_ptr<ServerProcess> server_;
  QObject watcher_;
};

TEST_F(TransferOnScreen, TheProgressIsSeenAndTheUserEndsIt) {
  start_with_server("slow", 3, 3'000'000);
  bool pressed = false;
  when_seen([&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("what")->text(), "Uploading  picture 0.gif  1 / 3");
    keep_picture("progress");
    hands::click(middle_of(*dialog.findChild<QPushButton*>("cmdCancel")));
    pressed = true;
  });
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(control().UploadAllImages(), 0);
  EXPECT_TRUE(pressed);
  EXPECT_LT(time.elapsed(), 20'000) << "three such pictures take minutes";
  EXPECT_EQ(control().CountLocalImages(), 3);
  EXPECT_TRUE(wait_for([] { return progress() == nullptr; }));
}

TEST_F(TransferOnScreen, TheUserTypesOnWhileAPictureIsOnItsWay) {
  start_with_server("slow", 1, 300'000);
  when_seen([&](QDialog&) { hands::type("abc"); });
  EXPECT_EQ(control().UploadAllImages(), 1);
  EXPECT_TRUE(wait_for([&] { return html().find("abc") != std::string::npos; })) << html();
  EXPECT_NE(html().find("https://example.org/picture 0.gif"), std::string::npos) << html();
}

TEST_F(TransferOnScreen, AServerThatGoesInTheMiddleLosesNothing) {
  start_with_server("slow", 2, 3'000'000);
  const std::string before = html();
  when_seen([&](QDialog&) { server_->end(); });
  EXPECT_EQ(control().UploadAllImages(), 0);
  EXPECT_EQ(html(), before);
  EXPECT_EQ(control().CountLocalImages(), 2);
}

TEST_F(TransferOnScreen, OneUndoGivesTheLocalAddressesBack) {
  start_with_server("none", 3, 1000);
  const std::string before = html();
  EXPECT_EQ(control().UploadAllImages(), 3);
  EXPECT_NE(html(), before);
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return html() == before; })) << html();
  EXPECT_EQ(control().CountLocalImages(), 3);
}

TEST_F(TransferOnScreen, ATransferThatIsSoonDoneShowsNothing) {
  start_with_server("none", 1, 1000);
  bool seen = false;
  when_seen([&](QDialog&) { seen = true; });
  EXPECT_EQ(control().UploadAllImages(), 1);
  QTest::qWait(600);
  EXPECT_FALSE(seen);
}

}  // namespace
}  // namespace tvx::x11
