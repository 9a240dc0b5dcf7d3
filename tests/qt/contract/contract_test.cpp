#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "contract/clipboard_contract.h"
#include "contract/forms_contract.h"
#include "contract/menus_contract.h"
#include "contract/message_loop_contract.h"
#include "contract/view_contract.h"
#include "contract/wait_contract.h"
#include "qt/modal_user.h"
#include "tvx/qt/bars/menu_face.h"
#include "tvx/qt/forms/form_face.h"
#include "tvx/qt/support/clipboard.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"

/// The desktop's parts keep what those without a screen keep.
namespace tvx::contract {
namespace {

/// In front of a dialog on the screen, with keyboard and mouse.
class DialogUser final : public FormUser {
 public:
  explicit DialogUser(QWidget& dialog) : dialog_(&dialog) {}
  void type(std::u16string_view box, std::u16string_view text) override {
    auto* edit = dialog_->findChild<QLineEdit*>(qt::to_qt(box));
    ASSERT_NE(edit, nullptr);
    QTest::mouseClick(edit, Qt::LeftButton);
    if (QApplication::focusWidget() != edit) return;
    edit->selectAll();
    QTest::keyClicks(edit, qt::to_qt(text));
  }
  void key(std::u16string_view box, std::u16string_view name) override {
    auto* widget = dialog_->findChild<QWidget*>(qt::to_qt(box));
    ASSERT_NE(widget, nullptr);
    widget->setFocus(Qt::OtherFocusReason);
    static const QHash<QString, Qt::Key> keys = {
        {"Home", Qt::Key_Home},           {"End", Qt::Key_End},       {"ArrowLeft", Qt::Key_Left},
        {"ArrowRight", Qt::Key_Right},    {"Delete", Qt::Key_Delete}, {"ArrowDown", Qt::Key_Down},
        {"Backspace", Qt::Key_Backspace}, {"Tab", Qt::Key_Tab}};
    const auto found = keys.constFind(qt::to_qt(name));
    found == keys.cend() ? QTest::keyClicks(widget, qt::to_qt(name)) : QTest::keyClick(widget, *found);
  }
  void press(std::u16string_view button) override {
    auto* widget = dialog_->findChild<QWidget*>(qt::to_qt(button));
    ASSERT_NE(widget, nullptr);
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
  }
  void pick(std::u16string_view list, int item) override {
    auto* widget = dialog_->findChild<QListWidget*>(qt::to_qt(list));
    ASSERT_NE(widget, nullptr);
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, middle_of(*widget, item));
  }
  // As from a hand: the second press of two is the double click.
  void double_click(std::u16string_view list, int item) override {
    pick(list, item);
    auto* widget = dialog_->findChild<QListWidget*>(qt::to_qt(list));
    QTest::mouseDClick(widget->viewport(), Qt::LeftButton, {}, middle_of(*widget, item));
  }
  void give_up() override { QTest::keyClick(dialog_, Qt::Key_Escape); }

 private:
  static QPoint middle_of(const QListWidget& list, int item) {
    return list.visualItemRect(list.item(item)).center();
  }
  QPointer<QWidget> dialog_;
};

class Window {
 public:
  Window() {
    widget_.resize(500, 300);
    widget_.show();
    widget_.activateWindow();
  }

 protected:
  QWidget widget_;
};

class FormsRoom : Window {
 public:
  platform::Forms& forms() { return forms_; }
  void next(Form& form, std::function<void(FormUser&)> user) {
    qt::when_dialog_opens(nullptr, [user, &form](QWidget& front) {
      DialogUser in_front(front);
      user(in_front);
      if (form.Visible()) form.cancel();
    });
  }

 private:
  qt::Forms forms_{widget_};
};

/// The window comes by itself when the work lasts.
class WaitRoom : Window {
 public:
  platform::Forms& forms() { return forms_; }
  void act(Form& form, const std::function<void(FormUser&)>& user) {
    QWidget* window = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
      for (QWidget* each : QApplication::topLevelWidgets())
        if (each->objectName() == qt::to_qt(form.Name()) && each->isVisible()) window = each;
      return window != nullptr;
    }));
    DialogUser in_front(*window);
    user(in_front);
  }
  void wait(int milliseconds) { QTest::qWait(milliseconds); }

 private:
  qt::Forms forms_{widget_};
};

/// Walks to the item with the mouse, as a user does: one that can't be chosen keeps the menu open.
class MenusRoom : Window {
 public:
  MenusRoom() {
    watch_.callOnTimeout([this] {
      if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) act(*menu);
    });
  }
  platform::PopupMenus& menus() { return menus_; }
  int opened() const { return opened_; }
  void next(std::function<void()> while_open, std::u16string item) {
    while_open_ = std::move(while_open);
    item_ = qt::to_qt(item);
    watch_.start(5);
  }
  ~MenusRoom() { watch_.stop(); }

 private:
  void act(QMenu& menu) {
    watch_.stop();
    ++opened_;
    while_open_();
    for (QAction* action : menu.actions()) {
      if (action->objectName() != item_) continue;
      if (!action->isVisible()) break;
      const QPoint point = menu.actionGeometry(action).center();
      QTest::mouseMove(&menu, point);
      QTest::mouseClick(&menu, Qt::LeftButton, {}, point);
    }
    if (menu.isVisible()) QTest::keyClick(&menu, Qt::Key_Escape);
  }

  qt::PopupMenus menus_{widget_};
  QTimer watch_;
  std::function<void()> while_open_;
  QString item_;
  int opened_ = 0;
};

class ViewRoom {
 public:
  ViewRoom() : window_(std::make_unique<QWidget>()) {
    window_->resize(600, 400);
    view_ = std::make_unique<qt::WebView>(loop_, window_.get());
    view_->widget()->setGeometry(0, 0, 600, 400);
    window_->show();
  }
  ~ViewRoom() {
    view_.reset();
    window_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  View& view() { return *view_; }
  platform::MessageLoop& loop() { return loop_; }

 private:
  qt::MessageLoop loop_;
  std::unique_ptr<QWidget> window_;
  std::unique_ptr<qt::WebView> view_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MessageLoopContract, qt::MessageLoop);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, ClipboardContract, qt::Clipboard);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, FormsContract, FormsRoom);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MenusContract, MenusRoom);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WaitContract, WaitRoom);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, ViewContract, ViewRoom);

}  // namespace tvx::contract
