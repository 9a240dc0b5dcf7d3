#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>
#include <QSettings>
#include <QTabBar>
#include <QTemporaryDir>
#include <string>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

/// The right mouse button on the tab of a document.
class TabsMenu : public testing::Test {
 protected:
  TabsMenu() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
    window_.show();
    for (const char* name : {"a.html", "b.html", "c.html"}) {
      QFile file(folder_.filePath(QString::fromLatin1(name)));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("<p>text</p>") > 0);
      file.close();
      window_.open_in_tab(file.fileName());
    }
  }
  QMenu* press(int tab) {
    QTabBar& bar = *window_.tabs().tabBar();
    const QPoint at = tab < bar.count() ? bar.tabRect(tab).center()
                                        : bar.tabRect(bar.count() - 1).topRight() + QPoint(40, 5);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, bar.mapToGlobal(at));
    QCoreApplication::sendEvent(&bar, &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  void choose(int tab, const char* text) {
    QMenu* menu = press(tab);
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
      if (action->text().remove(u'&') == QLatin1String(text)) action->trigger();
    menu->close();
    loop_.pump(20);
  }
  std::string names() {
    std::string all;
    for (const DocumentPage* page : window_.tabs().pages()) all += page->name().toStdString() + ' ';
    return all;
  }

  QTemporaryDir folder_;
  qt::MessageLoop loop_;
  Window window_{loop_};
};

TEST_F(TabsMenu, ClosesTheOneThatWasPressedAndNotTheOneInFront) {
  ASSERT_EQ(names(), "a.html b.html c.html ");
  choose(1, "Close");
  EXPECT_EQ(names(), "a.html c.html ");
}

TEST_F(TabsMenu, ClosesTheOthers) {
  choose(1, "Close the others");
  EXPECT_EQ(names(), "b.html ");
}

TEST_F(TabsMenu, IsNoneBesideTheTabs) { EXPECT_EQ(press(3), nullptr); }

}  // namespace
}  // namespace tvx::htmled
