#include <gtest/gtest.h>

#include <QAction>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <set>
#include <string>

#include "htmled/menus/commands.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

/// What the window's own menus offer while a page of frames is in front.
class FramesPage : public testing::Test {
 protected:
  void open(const char* name, const char* text) {
    const QString path = folder_.filePath(QString::fromLatin1(name));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
    file.close();
    window_.show();
    ASSERT_TRUE(window_.open(path));
  }
  /// As a menu shows it that is opened now.
  const QAction* item(const std::string& name) {
    const QAction* found = nullptr;
    for (QMenu* menu : window_.findChildren<QMenu*>()) {
      for (const QAction* action : menu->actions()) {
        if (action->objectName().toStdString() != name &&
            !(action->menu() && action->menu()->objectName().toStdString() == name))
          continue;
        QMetaObject::invokeMethod(menu, "aboutToShow");
        found = action;
      }
    }
    return found;
  }

  QTemporaryDir folder_;
  qt::MessageLoop loop_;
  Window window_{loop_};
};

constexpr const char* works_on_text[] = {"find",     "replace",           "find-next", "find-previous",
                                         "bookmark", "special-character", "new-table", "class"};

TEST_F(FramesPage, HasNoItemsForText) {
  open("frames.html", "<frameset cols='50%,50%'><frame src=a.html><frame src=b.html></frameset>");
  for (const char* name : works_on_text) {
    const QAction* action = item(name);
    ASSERT_NE(action, nullptr) << name;
    EXPECT_FALSE(action->isEnabled()) << name;
    EXPECT_TRUE(action->toolTip().endsWith(
        QStringLiteral("\nThis page consists of frames. Its source can be edited.")))
        << name << ": " << action->toolTip().toStdString();
  }
  for (const char* name : {"save", "print-preview", "page-properties", "Source"})
    EXPECT_TRUE(item(name)->isEnabled()) << name;
}

TEST_F(FramesPage, HasThemInItsSource) {
  open("frames.html", "<frameset cols='50%,50%'><frame src=a.html><frame src=b.html></frameset>");
  window_.editor().show_Code();
  ASSERT_TRUE(window_.editor().InCodeView());
  for (const char* name : {"find", "replace", "find-next", "find-previous"})
    EXPECT_TRUE(item(name)->isEnabled()) << name;
}

TEST_F(FramesPage, LeavesThemToTheNextPage) {
  open("frames.html", "<frameset cols='50%,50%'><frame src=a.html><frame src=b.html></frameset>");
  EXPECT_FALSE(item("new-table")->isEnabled());
  open("page.html", "<p>text</p>");
  for (const char* name : works_on_text) EXPECT_TRUE(item(name)->isEnabled()) << name;
}

}  // namespace
}  // namespace tvx::htmled
