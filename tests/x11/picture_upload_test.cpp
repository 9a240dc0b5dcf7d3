#include <QDialog>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <QWidget>

#include "htmled/remote_content_bar.h"
#include "support/server_process.h"
#include "tvx/base/strings.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"
#include "x11/x_display.h"

/// Pictures that are dropped and pasted into the page, where they are uploaded at once.
namespace tvx::x11 {
namespace {

/// A file manager's window: what is dragged out of it are files.
class FileWindow : public QWidget {
 public:
  explicit FileWindow(QStringList files)
      : QWidget(nullptr, Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint), files_(std::move(files)) {
    setGeometry(0, 0, 60, 60);
    show();
    raise();
  }

 protected:
  void mousePressEvent(QMouseEvent*) override {}
  void mouseMoveEvent(QMouseEvent*) override {
    if (std::exchange(dragged_, true)) return;
    auto* drag = new QDrag(this);
    auto* data = new QMimeData;
    QList<QUrl> urls;
    for (const QString& file : files_) urls << QUrl::fromLocalFile(file);
    data->setUrls(urls);
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction);
    ended_ = true;
  }

 public:
  bool ended() const { return ended_; }

 private:
  const QStringList files_;
  bool dragged_ = false, ended_ = false;
};

class PicturesOnScreen : public EditorOnScreen {
 protected:
  void start_with_server(const std::string& oddity) {
    server_ = std::make_unique<ServerProcess>(
        std::vector<std::string>{"/usr/bin/python3", TVX_SOURCE_DIR "/tests/network/odd_ftpd.py", oddity});
    const std::string port = server_->line();
    ASSERT_FALSE(port.empty());
    start("<p id=a>text</p>");
    control().set_FTPHost(from_utf8("ftp://127.0.0.1:" + port));
    control().set_FTPPassive(true);
    control().set_FTPBlockSize(65536);
    control().set_FTPSaveToURL(u"https://example.org/");
    control().set_UploadImages(true);
    ASSERT_TRUE(server_->process() > 0);
  }
  /// A picture that is one, of so many bytes.
  QString picture(const QString& name, int size = 3000) {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    const QString path = path_of(name);
    EXPECT_TRUE(image.save(path, "PNG"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::Append));
    file.write(QByteArray(std::max<qsizetype>(size - file.size(), 0), '\0'));
    return path;
  }
  void drop(const QStringList& files) {
    FileWindow source(files);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&source));
    // Dragging has a loop of its own: the hand that goes on must not wait for this process.
    const QPoint from(30, 30), to = place_of(QStringLiteral("#a"), 0.02, 0.5);
    QStringList moves = {QStringLiteral("mousemove"), QStringLiteral("30"), QStringLiteral("30"),
                         QStringLiteral("mousedown"), QStringLiteral("1")};
    for (int step = 1; step <= 8; ++step) {
      const QPoint at = from + (to - from) * step / 8;
      moves << QStringLiteral("sleep") << QStringLiteral("0.1") << QStringLiteral("mousemove")
            << QString::number(at.x()) << QString::number(at.y());
    }
    moves << QStringLiteral("sleep") << QStringLiteral("0.3") << QStringLiteral("mouseup")
          << QStringLiteral("1");
    ASSERT_TRUE(QProcess::startDetached(QStringLiteral("xdotool"), moves));
    EXPECT_TRUE(wait_for([&] { return source.ended(); }));
  }
  /// Puts it on the clipboard as another program does.
  void offer(const QByteArray& data, const QString& type) {
    QFile file(path_of(QStringLiteral("offered")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
    file.close();
    output_of(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                                        QStringLiteral("-t"), type, QStringLiteral("-i"), file.fileName()});
  }
  bool has(const std::string& part) { return html().find(part) != std::string::npos; }
  int under_way() {
    return std::atoi(
        in_page(QStringLiteral("String(document.querySelectorAll('[tvx-under-way]').length)")).c_str());
  }
  static bool progress_is_seen() {
    for (QWidget* each : QApplication::topLevelWidgets())
      if (each->objectName() == "frmWait" && each->isVisible()) return true;
    return false;
  }
  void keep_picture(const QString& name) {
    const QByteArray folder = qgetenv("TVX_TEST_PICTURES");
    if (!folder.isEmpty())
      window_->screen()->grabWindow(0).save(QString::fromUtf8(folder) + "/" + name + ".png");
  }

  std::unique_ptr<ServerProcess> server_;
};

TEST_F(PicturesOnScreen, DroppedPicturesAreUploadedOneAfterTheOther) {
  start_with_server("none");
  drop({picture("one.png"), picture("two.png")});
  EXPECT_TRUE(wait_for([&] {
    return has("https://example.org/one.png") && has("https://example.org/two.png");
  })) << html();
  EXPECT_EQ(control().CountLocalImages(), 0);
  EXPECT_FALSE(progress_is_seen()) << "soon done";
  // The view asks for them at their new place; they are the user's own.
  bool asked = false;
  for (int turns = 0; turns < 20; ++turns) {
    QTest::qWait(50);
    asked = asked || window_->findChild<htmled::RemoteContentBar*>()->isVisible();
  }
  EXPECT_FALSE(asked);
}

TEST_F(PicturesOnScreen, ADroppedPictureIsSeenAtOnceWithAMarkUntilItIsOnTheServer) {
  start_with_server("slow");
  int marked = -1;
  // The transfer has a loop of its own, within which the user goes on.
  QTimer watch;
  watch.callOnTimeout([&] {
    if (!progress_is_seen()) return;
    watch.stop();
    EXPECT_TRUE(has("file://")) << html();
    marked = under_way();
    keep_picture("dropped");
    hands::press(QStringLiteral("End"));
    hands::type(QStringLiteral("xyz"));
  });
  watch.start(20);
  drop({picture("slow.png", 300'000)});
  EXPECT_TRUE(wait_for([&] { return has("https://example.org/slow.png"); })) << html();
  EXPECT_EQ(marked, 1);
  EXPECT_TRUE(wait_for([&] { return has("xyz"); })) << html();
  EXPECT_TRUE(wait_for([&] { return under_way() == 0; }));
  EXPECT_TRUE(wait_for([] { return !progress_is_seen(); }));
}

TEST_F(PicturesOnScreen, WhatFailsStaysLocalAndIsCounted) {
  start_with_server("full");
  drop({picture("one.png"), picture("two.png")});
  ASSERT_TRUE(wait_for([&] { return control().CountLocalImages() == 2; })) << html();
  const auto counted = [&] { return window_->findChild<QToolButton*>(QStringLiteral("local_images")); };
  EXPECT_TRUE(wait_for([&] { return counted() && counted()->isVisible(); }));
  EXPECT_TRUE(wait_for([&] { return counted()->text() == QStringLiteral("Local images: 2"); }));
  EXPECT_TRUE(wait_for([&] { return under_way() == 0; })) << "no mark stays";
  keep_picture("failed");
}

TEST_F(PicturesOnScreen, APastedPictureIsUploadedUnderANameOfItsOwn) {
  start_with_server("none");
  QFile file(picture("pasted.png"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  offer(file.readAll(), QStringLiteral("image/png"));
  hands::press(QStringLiteral("ctrl+v"));
  EXPECT_TRUE(wait_for([&] { return has("https://example.org/") && !has("file://"); })) << html();
  EXPECT_TRUE(has(".png")) << html();
}

TEST_F(PicturesOnScreen, PastedFilesAreUploaded) {
  start_with_server("none");
  offer(QUrl::fromLocalFile(picture("a b.png")).toEncoded() + "\r\n", QStringLiteral("text/uri-list"));
  hands::press(QStringLiteral("ctrl+v"));
  EXPECT_TRUE(wait_for([&] { return has("https://example.org/a%20b.png"); })) << html();
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return !has("<IMG"); })) << "one undo takes the picture away: " << html();
}

}  // namespace
}  // namespace tvx::x11
