#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QTabBar>
#include <QWebEnginePage>
#include <QWebEngineScript>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "tvx/qt/web/web_view.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Several documents in a window, by the mouse: tabs that are dragged and closed, and files that another
/// program brings.
namespace tvx::x11 {
namespace {

class TabsOnScreen : public EditorOnScreen {
 protected:
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
    QProcess source;
    source.setProgram(QStringLiteral(TVX_BIN_DIR "/drag_source"));
    source.setArguments(QStringList{QString::number(from.x() - 30), QString::number(from.y() - 30)} + files);
    source.start();
    QByteArray said;
    const auto says = [&](const char* word) {
      return wait_for([&] { return (said += source.readAllStandardOutput()).contains(word); });
    };
    ASSERT_TRUE(says("ready"));
    hands::drag(from, to);
    EXPECT_TRUE(says("dropped"));
    source.kill();
    source.waitForFinished();
  }
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

TEST_F(TabsOnScreen, PagesThatAnotherProgramBringsAreOpenedEachInATab) {
  start("<!DOCTYPE html><p>page</p>");
  drag_files_to(place_of(QStringLiteral("p"), 0.5, 0.5) + QPoint(0, 100),
                {write("two.html"), write("three.html")});
  EXPECT_TRUE(names_are("page.html two.html three.html")) << names().toStdString();
  EXPECT_TRUE(wait_for([&] { return text() == "three.html"; })) << text();
  EXPECT_EQ(file(QStringLiteral("page.html")), "<!DOCTYPE html><p>page</p>");
}

TEST_F(TabsOnScreen, APageThatIsOpenAlreadyComesToTheFront) {
  start_with_three();
  drag_files_to(middle_of(window_->editor()), {path_of(QStringLiteral("page.html"))});
  EXPECT_TRUE(wait_for([&] { return window_->front().name() == QStringLiteral("page.html"); }));
  EXPECT_EQ(bar().count(), 3);
}

}  // namespace
}  // namespace tvx::x11
