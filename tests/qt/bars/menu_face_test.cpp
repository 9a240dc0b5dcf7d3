#include "tvx/qt/bars/menu_face.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <memory>

#include "tvx/core/chrome/menus.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using platform::Menu;
using platform::WindowHandle;

struct Clicks : platform::MenuHandler {
  void MenuItemClick(Menu& item) override { names.push_back(platform::name_with_index(item)); }
  std::vector<std::u16string> names;
};

/// The control's menus over a window, off screen. While a popup is open a timer plays the user.
class MenuFaces : public testing::Test {
 protected:
  MenuFaces() {
    menus_.set_handler(&clicks_);
    window_->resize(400, 300);
    window_->show();
  }

  /// Opens the menu and lets the user act on it.
  void popup(Menu& menu, const std::function<void(QMenu&)>& user,
             const std::optional<platform::PopupPlace>& place = {}) {
    opened_ = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!open) return;
      timer.stop();
      opened_ = true;
      user(*open);
    });
    timer.start(5);
    faces_.PopupMenu(menu, WindowHandle::none, place);
  }

  static void key(Qt::Key key) {
    QWidget* target = QApplication::activePopupWidget();
    ASSERT_NE(target, nullptr);
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      if (!QApplication::activePopupWidget()) return;
      QKeyEvent event(type, key, Qt::NoModifier);
      QApplication::sendEvent(target, &event);
    }
  }
  static void click(QMenu& menu, QAction* action) {
    const QPointF place = menu.actionGeometry(action).center(), global = menu.mapToGlobal(place);
    QMouseEvent move(QEvent::MouseMove, place, global, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&menu, &move);
    QMouseEvent press(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&menu, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(&menu, &release);
  }
  static QAction* action(QMenu& menu, const char* name) {
    for (QAction* each : menu.actions()) {
      if (each->objectName() == QLatin1String(name)) return each;
      if (!each->menu()) continue;
      if (QAction* inner = action(*each->menu(), name)) return inner;
    }
    return nullptr;
  }

  core::ContextMenus menus_;
  Clicks clicks_;
  std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
  PopupMenus faces_{*window_};
  bool opened_ = false;
};

TEST_F(MenuFaces, ItemsLookAsTheModelSays) {
  menus_.item(u"mnuMiscPaste").set_Enabled(false);
  menus_.item(u"mnuMiscRevert").set_Visible(false);
  menus_.item(u"mnuMiscCopy").set_Checked(true);
  popup(menus_.mnuMisc, [&](QMenu& menu) {
    EXPECT_EQ(menu.actions().size(), qsizetype(menus_.mnuMisc.items().size()));
    EXPECT_EQ(action(menu, "mnuInsertLink")->text(), QStringLiteral("Insert / Edit Link"));
    EXPECT_FALSE(action(menu, "mnuMiscPaste")->isEnabled());
    EXPECT_FALSE(action(menu, "mnuMiscRevert")->isVisible());
    EXPECT_TRUE(action(menu, "mnuMiscCopy")->isChecked());
    EXPECT_TRUE(action(menu, "mnuSepM2")->isSeparator());
    EXPECT_NE(action(menu, "mnuMiscStyle")->menu(), nullptr);
    menu.close();
  });
  EXPECT_TRUE(opened_);
  EXPECT_TRUE(clicks_.names.empty());
}

TEST_F(MenuFaces, AnItemThatCantActIsGreyAndSaysWhy) {
  menus_.item(u"mnuMiscCopy").set_Obstacle(u"Nothing is selected");
  popup(menus_.mnuMisc, [&](QMenu& menu) {
    EXPECT_FALSE(action(menu, "mnuMiscCopy")->isEnabled());
    EXPECT_EQ(action(menu, "mnuMiscCopy")->toolTip(), QStringLiteral("Nothing is selected"));
    EXPECT_TRUE(menu.toolTipsVisible());
    EXPECT_TRUE(action(menu, "mnuMiscCut")->isEnabled());
    click(menu, action(menu, "mnuMiscCopy"));
    menu.close();
  });
  EXPECT_TRUE(clicks_.names.empty());
}

TEST_F(MenuFaces, AClickChooses) {
  popup(menus_.mnuMisc, [](QMenu& menu) { click(menu, action(menu, "mnuMiscCopy")); });
  EXPECT_EQ(clicks_.names, std::vector<std::u16string>{u"mnuMiscCopy"});
}

TEST_F(MenuFaces, TheKeyboardWalksAndChoosesAlsoInASubmenu) {
  popup(menus_.mnuMisc, [](QMenu&) {
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
  });
  popup(menus_.mnuMisc, [](QMenu&) {
    for (int i = 0; i < 4; ++i) key(Qt::Key_Down);
    key(Qt::Key_Right);
    key(Qt::Key_Return);
  });
  EXPECT_EQ(clicks_.names, (std::vector<std::u16string>{u"mnuMiscCopy", u"mnuMiscClass(0)"}));
}

TEST_F(MenuFaces, EscapeDismisses) {
  popup(menus_.mnuImg, [](QMenu&) { key(Qt::Key_Escape); });
  EXPECT_TRUE(opened_);
  EXPECT_TRUE(clicks_.names.empty());
}

TEST_F(MenuFaces, ItFollowsTheModelWhileItIsOpen) {
  popup(menus_.mnuMisc, [&](QMenu& menu) {
    menus_.item(u"mnuMiscCut").set_Caption(u"Ausschneiden");
    EXPECT_EQ(action(menu, "mnuMiscCut")->text(), QStringLiteral("Ausschneiden"));
    const core::StyleClass classes[] = {{3, u"a & b"}};
    menus_.show_classes(classes);
    ASSERT_NE(action(menu, "mnuMiscClass(3)"), nullptr);
    EXPECT_EQ(action(menu, "mnuMiscClass(3)")->text(), QStringLiteral("a && b"));
    click(menu, action(menu, "mnuMiscCut"));
  });
  EXPECT_EQ(clicks_.names, std::vector<std::u16string>{u"mnuMiscCut"});
}

TEST_F(MenuFaces, AnItemThatIsGoneWhenItIsChosenIsNotChosen) {
  const core::StyleClass classes[] = {{1, u"a"}};
  menus_.show_classes(classes);
  popup(menus_.mnuMisc, [&](QMenu& menu) {
    QAction* chosen = action(menu, "mnuMiscClass(1)");
    menus_.show_classes({});
    EXPECT_EQ(action(menu, "mnuMiscClass(1)"), nullptr) << "and " << static_cast<void*>(chosen) << " with it";
    menu.close();
  });
  EXPECT_TRUE(clicks_.names.empty());
}

TEST_F(MenuFaces, ItStandsAboveTheLineThatItMustNotCover) {
  const float line = 200 * 15;
  popup(
      menus_.mnuToolProp,
      [&](QMenu& menu) {
        EXPECT_LE(menu.geometry().bottom(), window_->mapToGlobal(QPoint(0, 200)).y());
        menu.close();
      },
      platform::PopupPlace{.x = 20 * 15, .y = line - 900, .stay_above = line});
  EXPECT_TRUE(opened_);
}

TEST_F(MenuFaces, WithNothingToChooseFromNothingOpens) {
  for (Menu* item : platform::all_items(menus_.mnuT))
    if (!item->is_separator()) item->set_Visible(false);
  popup(menus_.mnuT, [](QMenu& menu) { menu.close(); });
  EXPECT_FALSE(opened_);
}

TEST_F(MenuFaces, TheWindowMayBeClosedWhileItIsOpen) {
  popup(menus_.mnuMisc, [&](QMenu&) { window_.reset(); });
  EXPECT_TRUE(opened_);
  EXPECT_TRUE(clicks_.names.empty());
}

TEST_F(MenuFaces, RightToLeftWindowsHaveRightToLeftMenus) {
  window_->setLayoutDirection(Qt::RightToLeft);
  popup(menus_.mnuMisc, [](QMenu& menu) {
    EXPECT_EQ(menu.layoutDirection(), Qt::RightToLeft);
    menu.close();
  });
  EXPECT_TRUE(opened_);
}

}  // namespace
}  // namespace tvx::qt
