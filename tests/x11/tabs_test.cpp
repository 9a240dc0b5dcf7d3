#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <optional>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "tvx/qt/web/web_view.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Several documents in a window, by the mouse: tabs that are dragged and closed, and files that another
/// program brings.
namespace tvx::x11 {
namespace {

/// Counts the keys that reach the program while the page in front is on its way.
class EarlyKeyCount final : public QObject {
 public:
  explicit EarlyKeyCount(htmled::Window& window) : window_(window) { qApp->installEventFilter(this); }
  int count() const { return count_; }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched->isWindowType() && event->type() == QEvent::KeyPress && window_.front().is_coming()) ++count_;
    return false;
  }
  htmled::Window& window_;
  int count_ = 0;
};

class TabsOnScreen : public EditorOnScreen {
 protected:
  ~TabsOnScreen() override {
    if (!source_) return;
    source_->kill();
    source_->waitForFinished();
  }
  void start_with_three() {
    start("<!DOCTYPE html><p>page</p>");
    for (const char* name : {"two.html", "three.html"}) {
      ASSERT_TRUE(window_->open_in_tab(write(name)));
      wait_for_caret();
    }
    ASSERT_TRUE(names_are("page.html two.html three.html")) << names().toStdString();
  }
  QString write(const char* name) {
    QFile out(path_of(QString::fromLatin1(name)));
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(QByteArray("<!DOCTYPE html><p>") + name + "</p>");
    return out.fileName();
  }
  /// Keys that are pressed while the page in front is on its way, which takes a while.
  void press_while_coming(const QStringList& keys) {
    auto* watch = new QTimer(window_.get());
    QObject::connect(watch, &QTimer::timeout, watch, [this, watch, keys] {
      if (!window_->front().is_coming()) return;
      watch->deleteLater();
      watch->stop();
      // Without this program's loop: the server has them before anybody here runs.
      QProcess::execute(
          QStringLiteral("xdotool"),
          QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("0")} + keys);
      const EarlyKeyCount early(*window_);
      for (int turn = 0; turn < 10 && window_->front().is_coming(); ++turn) loop_.pump(20);
      pressed_while_coming_ = window_->front().is_coming();
      EXPECT_EQ(early.count(), 0) << "keys that are for the page";
    });
    watch->start(0);
  }
  QTabBar& bar() { return *window_->findChild<QTabBar*>(QStringLiteral("documents")); }
  QString names() {
    QStringList all;
    for (int i = 0; i < bar().count(); ++i) all << bar().tabText(i);
    return all.join(u' ');
  }
  bool names_are(const char* wanted) {
    return wait_for([&] { return names() == QString::fromLatin1(wanted); });
  }
  /// The page in front takes nothing for a while.
  void keep_page_busy() {
    window_->editor().view().page()->runJavaScript(
        QStringLiteral("const end = Date.now() + 1000; while (Date.now() < end);"),
        QWebEngineScript::ApplicationWorld);
  }
  QPoint tab(int index) { return bar().mapToGlobal(bar().tabRect(index).center()); }
  /// Files of another program, dragged from its window into ours, where they are let go.
  void drag_files_to(QPoint to, const QStringList& files) {
    const QPoint from = window_->mapToGlobal(QPoint(window_->width() + 30, 30));
    QProcess& source = source_.emplace();
    source.setProgram(QStringLiteral(TVX_BIN_DIR "/drag_source"));
    source.setArguments(QStringList{QString::number(from.x() - 30), QString::number(from.y() - 30)} + files);
    source.start();
    QByteArray said;
    const auto says = [&](const char* word) {
      return wait_for([&] { return (said += source.readAllStandardOutput()).contains(word); });
    };
    ASSERT_TRUE(says("ready"));
    hands::drag(from, to, [&] { return says("taken"); });
    EXPECT_TRUE(says("dropped"));
  }
  bool pressed_while_coming_ = false;

 private:
  /// Stays to the test's end: what it has let go is asked of it only then.
  std::optional<QProcess> source_;
};

TEST_F(TabsOnScreen, ATabIsDraggedToAnotherPlace) {
  start_with_three();
  hands::drag(tab(2), tab(0) - QPoint(20, 0));
  EXPECT_TRUE(names_are("three.html page.html two.html")) << names().toStdString();
  EXPECT_EQ(window_->front().name(), QStringLiteral("three.html"));
  EXPECT_EQ(text(), "three.html") << "its page goes along";
}

TEST_F(TabsOnScreen, AMiddlePressClosesATabAndAKeyBringsItBack) {
  start_with_three();
  hands::click(tab(1), 2);
  EXPECT_TRUE(names_are("page.html three.html")) << names().toStdString();
  EXPECT_EQ(window_->front().name(), QStringLiteral("three.html")) << "another than that in front";
  hands::press(QStringLiteral("ctrl+shift+t"));
  EXPECT_TRUE(wait_for([&] { return window_->front().name() == QStringLiteral("two.html"); }));
  EXPECT_TRUE(wait_for([&] { return text() == "two.html"; })) << text();
}

TEST_F(TabsOnScreen, APressBringsATabToTheFrontWithTheKeys) {
  start_with_three();
  hands::click(tab(0));
  ASSERT_TRUE(wait_for([&] { return window_->front().name() == QStringLiteral("page.html"); }));
  wait_for_caret();
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(wait_for([&] { return text() == "xpage"; })) << text();
}

// Saving waits for what was typed before, which the page has yet to take. Nothing that follows overtakes it.
TEST_F(TabsOnScreen, APageIsSavedBeforeItIsClosedByTheNextKey) {
  start_with_three();
  const QPointer<htmled::DocumentPage> page = &window_->front();
  bool asked = false;
  answer_dialog([&](QDialog&) {
    asked = true;
    hands::press(QStringLiteral("Escape"));
  });
  keep_page_busy();
  hands::press({QStringLiteral("x"), QStringLiteral("ctrl+s"), QStringLiteral("ctrl+w")});
  EXPECT_TRUE(names_are("page.html two.html")) << names().toStdString();
  EXPECT_FALSE(asked);
  EXPECT_TRUE(file(QStringLiteral("three.html")).contains("x"));
  EXPECT_TRUE(wait_for([&] { return !page; }));
}

TEST_F(TabsOnScreen, EachPressOfAKeyClosesOneTab) {
  start_with_three();
  keep_page_busy();
  hands::press({QStringLiteral("ctrl+w"), QStringLiteral("ctrl+w")});
  EXPECT_TRUE(names_are("page.html")) << names().toStdString();
  EXPECT_TRUE(settle());
  EXPECT_EQ(text(), "page");
}

TEST_F(TabsOnScreen, KeysThatArePressedWhileAPageComesAreForThatPage) {
  start("<!DOCTYPE html><p>page</p>");
  const QString path = write("two.html");
  press_while_coming({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("ctrl+s")});
  ASSERT_TRUE(window_->open_in_tab(path));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("two.html")).contains("<p>xytwo.html</p>"); }))
      << text();
  EXPECT_TRUE(pressed_while_coming_);
  hands::click(tab(0));
  ASSERT_TRUE(wait_for([&] { return window_->front().name() == QStringLiteral("page.html"); }));
  EXPECT_EQ(text(), "page");
  EXPECT_EQ(file(QStringLiteral("page.html")), "<!DOCTYPE html><p>page</p>");
}

TEST_F(TabsOnScreen, KeysThatArePressedWhileAFileComesIntoANewPageAreForTheFile) {
  start("<!DOCTYPE html><p>page</p>");
  ASSERT_TRUE(window_->close_page(window_->front()));
  wait_for_caret();
  press_while_coming({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("ctrl+s")});
  ASSERT_TRUE(window_->open_in_tab(write("two.html")));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("two.html")).contains("<p>xytwo.html</p>"); }))
      << text();
  EXPECT_TRUE(pressed_while_coming_);
  EXPECT_EQ(bar().count(), 1);
}

TEST_F(TabsOnScreen, KeysThatArePressedAtTheStartAreForTheFile) {
  window_ = std::make_unique<htmled::Window>(loop_);
  window_->show();
  hands::give_focus(*window_);
  press_while_coming({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("ctrl+s")});
  ASSERT_TRUE(window_->start(write("two.html")));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("two.html")).contains("<p>xytwo.html</p>"); }))
      << text();
  EXPECT_TRUE(pressed_while_coming_);
}

TEST_F(TabsOnScreen, KeysAfterANewTabAreForItsPage) {
  start("<!DOCTYPE html><p>page</p>");
  hands::press({QStringLiteral("ctrl+n"), QStringLiteral("x"), QStringLiteral("y")});
  EXPECT_TRUE(wait_for([&] { return bar().count() == 2 && text().find("xy") != std::string::npos; }))
      << text();
  hands::press({QStringLiteral("ctrl+Tab"), QStringLiteral("z")});
  EXPECT_TRUE(wait_for([&] { return text() == "zpage"; })) << text();
}

TEST_F(TabsOnScreen, PagesThatAnotherProgramBringsAreOpenedEachInATab) {
  start("<!DOCTYPE html><p>page</p>");
  drag_files_to(place_of(QStringLiteral("p"), 0.5, 0.5) + QPoint(0, 100),
                {write("two.html"), write("three.html")});
  EXPECT_TRUE(names_are("page.html two.html three.html")) << names().toStdString();
  EXPECT_TRUE(wait_for([&] { return text() == "three.html"; })) << text();
  EXPECT_EQ(file(QStringLiteral("page.html")), "<!DOCTYPE html><p>page</p>");
}

TEST_F(TabsOnScreen, APageIsOpenedWhateverIsDraggedBesideIt) {
  start("<!DOCTYPE html><p>page</p>");
  const QString note = path_of(QStringLiteral("note.txt"));
  QFile out(note);
  ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write("note") > 0);
  out.close();
  drag_files_to(middle_of(window_->editor()), {note, write("two.html")});
  EXPECT_TRUE(names_are("page.html two.html")) << names().toStdString();
  EXPECT_TRUE(wait_for([&] {
    return window_->statusBar()->currentMessage() == QStringLiteral("Not a page: note.txt");
  })) << window_->statusBar()->currentMessage().toStdString();
  EXPECT_EQ(text(), "two.html");
}

TEST_F(TabsOnScreen, APageThatIsOpenAlreadyComesToTheFront) {
  start_with_three();
  drag_files_to(middle_of(window_->editor()), {path_of(QStringLiteral("page.html"))});
  EXPECT_TRUE(wait_for([&] { return window_->front().name() == QStringLiteral("page.html"); }));
  EXPECT_EQ(bar().count(), 3);
}

}  // namespace
}  // namespace tvx::x11
