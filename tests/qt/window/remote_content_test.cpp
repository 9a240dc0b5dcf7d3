#include <gtest/gtest.h>

#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "htmled/remote_content_bar.h"
#include "htmled/window.h"
#include "support/http_server.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

/// The editor's window and a server that counts who looks at its picture.
class RemoteContentInTheWindow : public testing::Test {
 protected:
  RemoteContentInTheWindow() {
    setenv("no_proxy", "*", 1);
    server_.serve("/picture.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>",
                  "image/svg+xml");
    server_.serve("/a.css", "p { background: url(/back.svg) }", "text/css");
  }
  /// A window, as after a new start of the program.
  void new_window() {
    window_.reset();
    window_ = std::make_unique<Window>(loop_);
    window_->show();
  }
  QString file(const QString& name, const std::string& markup) {
    const QString path = folder_.filePath(name);
    QFile written(path);
    EXPECT_TRUE(written.open(QIODevice::WriteOnly));
    written.write(QByteArray::fromStdString(markup));
    return path;
  }
  QString page_with_a_picture() {
    return file(QStringLiteral("page.html"), "<!DOCTYPE html><title>t</title><p>text<img src=\"" +
                                                 server_.url("/picture.svg") + "\"></p>");
  }
  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop_.now() + 10'000;
    while (!condition() && loop_.now() < end) loop_.pump(20);
    return condition();
  }
  void settle() {
    wait_for([&] { return window_->editor().document_view().settled(); });
    const std::int64_t end = loop_.now() + 300;  // what must not come has had its chance
    while (loop_.now() < end) loop_.pump(20);
  }
  RemoteContentBar* bar() { return window_->findChild<RemoteContentBar*>(); }
  void press(const char* button) {
    auto* found = bar()->findChild<QPushButton*>(QString::fromLatin1(button));
    ASSERT_NE(found, nullptr);
    found->click();
  }
  std::size_t looks() const { return server_.count("/picture.svg"); }

  qt::MessageLoop loop_;
  QTemporaryDir folder_;
  HttpServer server_;
  std::unique_ptr<Window> window_;
};

TEST_F(RemoteContentInTheWindow, IsAskedForOncePerFile) {
  new_window();
  const QString path = page_with_a_picture();
  ASSERT_TRUE(window_->start(path));
  ASSERT_TRUE(wait_for([&] { return bar()->isVisible(); }));
  settle();
  EXPECT_EQ(looks(), 0u) << "nobody has allowed it yet";
  press("load");
  EXPECT_TRUE(wait_for([&] { return looks() == 1; }));
  EXPECT_FALSE(bar()->isVisible());
  new_window();
  ASSERT_TRUE(window_->start(path));
  EXPECT_TRUE(wait_for([&] { return looks() >= 2; })) << "remembered";
  EXPECT_FALSE(bar()->isVisible());
}

TEST_F(RemoteContentInTheWindow, IsNotAskedForAgainWhereItWasRefused) {
  new_window();
  const QString path = page_with_a_picture();
  ASSERT_TRUE(window_->start(path));
  ASSERT_TRUE(wait_for([&] { return bar()->isVisible(); }));
  press("leave");
  EXPECT_FALSE(bar()->isVisible());
  new_window();
  ASSERT_TRUE(window_->start(path));
  settle();
  EXPECT_FALSE(bar()->isVisible());
  EXPECT_EQ(looks(), 0u);
}

TEST_F(RemoteContentInTheWindow, AnAnswerForOneFileIsNoneForAnother) {
  new_window();
  ASSERT_TRUE(window_->start(page_with_a_picture()));
  ASSERT_TRUE(wait_for([&] { return bar()->isVisible(); }));
  press("load");
  ASSERT_TRUE(wait_for([&] { return looks() == 1; }));
  const QString other = file(QStringLiteral("other.html"), "<!DOCTYPE html><p>x<img src=\"" +
                                                               server_.url("/picture.svg?other") + "\"></p>");
  ASSERT_TRUE(window_->open(other));
  ASSERT_TRUE(wait_for([&] { return bar()->isVisible(); }));
  settle();
  EXPECT_EQ(server_.count("/picture.svg?other"), 0u);
}

TEST_F(RemoteContentInTheWindow, AFileThatWantsNothingIsNotAskedAbout) {
  new_window();
  ASSERT_TRUE(window_->start(
      file(QStringLiteral("plain.html"), "<!DOCTYPE html><p>x<a href=http://example.org>y</a>")));
  settle();
  EXPECT_FALSE(bar()->isVisible());
}

TEST_F(RemoteContentInTheWindow, SheetsAreAskedForToo) {
  new_window();
  ASSERT_TRUE(
      window_->start(file(QStringLiteral("sheet.html"), "<!DOCTYPE html><link rel=stylesheet href=\"" +
                                                            server_.url("/a.css") + "\"><p>x</p>")));
  ASSERT_TRUE(wait_for([&] { return bar()->isVisible(); }));
  settle();
  EXPECT_EQ(server_.requests().size(), 0u);
  press("load");
  EXPECT_TRUE(wait_for([&] { return server_.count("/a.css") >= 1 && server_.count("/back.svg") >= 1; }));
}

TEST_F(RemoteContentInTheWindow, FramesFontsAndScriptsAreFetchedByNobody) {
  new_window();
  const std::string at = server_.url("/");
  ASSERT_TRUE(window_->start(file(QStringLiteral("frames.html"),
                                  "<!DOCTYPE html><style>@font-face { font-family: f; src: url(" + at +
                                      "f.woff) } p { font-family: f }"
                                      "</style><p>x</p><iframe src=\"" +
                                      at + "frame\"></iframe><script src=\"" + at +
                                      "s.js\"></script>"
                                      "<object data=\"" +
                                      at + "o\"></object><video src=\"" + at +
                                      "v.mp4\" autoplay></video>"
                                      "<link rel=preload as=image href=\"" +
                                      at + "p.png\"><link rel=prefetch href=\"" + at +
                                      "q\">"
                                      "<meta http-equiv=refresh content=\"0; url=" +
                                      at + "r\">")));
  settle();
  window_->editor().ShowRemoteContent();
  settle();
  for (const auto& request : server_.requests()) ADD_FAILURE() << request.target;
}

}  // namespace
}  // namespace tvx::htmled
