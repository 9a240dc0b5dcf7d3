#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "htmled/format/format_bar.h"
#include "htmled/menus/view_choices.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

/// The right mouse button on the window's bars.
class BarsMenu : public testing::Test {
 protected:
  BarsMenu() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path());
    window_.show();
  }
  void press(QWidget& on) {
    const QPoint at = on.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, on.mapToGlobal(at));
    QCoreApplication::sendEvent(&on, &event);
  }
  std::vector<std::string> offered() {
    std::vector<std::string> texts;
    if (const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
      for (const QAction* action : menu->actions())
        texts.push_back((action->isChecked() ? "+" : "-") + action->text().remove(u'&').toStdString());
    return texts;
  }

  QTemporaryDir settings_;
  qt::MessageLoop loop_;
  Window window_{loop_};
};

TEST_F(BarsMenu, HasAllThatCanBeShownAndHidden) {
  press(window_.format_bar());
  EXPECT_THAT(offered(), testing::ElementsAre("+Format bar", "+Formatting tools", "+Insertion tools",
                                              "-Form tools", "+Element path"));
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  menu->actions().back()->trigger();
  menu->close();
  EXPECT_FALSE(view_choices::is_on(view_choices::Choice::ElementPath));
  press(window_.format_bar());
  ASSERT_EQ(offered().size(), 5u);
  EXPECT_EQ(offered().back(), "-Element path");
  QApplication::activePopupWidget()->close();
}

TEST_F(BarsMenu, IsNotThatOfTheToolkit) {
  press(*window_.menuBar());
  EXPECT_THAT(offered(), testing::IsEmpty());
}

}  // namespace
}  // namespace tvx::htmled
