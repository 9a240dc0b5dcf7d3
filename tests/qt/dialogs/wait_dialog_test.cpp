#include "tvx/qt/dialogs/wait_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "tvx/platform/form.h"
#include "tvx/qt/forms/form_face.h"
#include "tvx/transfer/wait_dialog.h"

namespace tvx::qt {
namespace {

QDialog* seen() {
  for (QWidget* each : QApplication::topLevelWidgets())
    if (auto* dialog = qobject_cast<QDialog*>(each);
        dialog && dialog->objectName() == "frmWait" && dialog->isVisible())
      return dialog;
  return nullptr;
}

class WaitDialogTest : public testing::Test {
 protected:
  WaitDialogTest() { window.show(); }
  void open() { forms.Open(wait->form(), platform::WindowHandle::none); }

  QLineEdit window;
  Forms forms{window};
  std::unique_ptr<transfer::frmWait> wait = std::make_unique<transfer::frmWait>();
};

TEST_F(WaitDialogTest, WorkThatEndsSoonShowsNothing) {
  open();
  QTest::qWait(100);
  EXPECT_EQ(seen(), nullptr);
  wait.reset();
  for (int i = 0; i < 10; ++i) {
    QTest::qWait(50);
    EXPECT_EQ(seen(), nullptr);
  }
}

TEST_F(WaitDialogTest, WhatHasAppearedStaysLongEnoughToBeRead) {
  QElapsedTimer time;
  time.start();
  open();
  ASSERT_TRUE(QTest::qWaitFor([] { return seen() != nullptr; }, 5000));
  EXPECT_GE(time.elapsed(), 290);
  time.restart();
  wait.reset();
  ASSERT_NE(seen(), nullptr);
  EXPECT_FALSE(seen()->findChild<QPushButton*>("cmdCancel")->isEnabled())
      << "nothing is left to be cancelled";
  ASSERT_TRUE(QTest::qWaitFor([] { return seen() == nullptr; }, 5000));
  EXPECT_GE(time.elapsed(), 450);
}

TEST_F(WaitDialogTest, ItSaysWhatIsDoneWithWhichFileAndHowFar) {
  wait->show_action(transfer::frmWait::Action::Uploading);
  wait->show_file(u"photo.jpg");
  wait->show_count(2, 5);
  open();
  ASSERT_TRUE(QTest::qWaitFor([] { return seen() != nullptr; }, 5000));
  EXPECT_EQ(seen()->windowTitle(), "Please Wait");
  EXPECT_EQ(seen()->findChild<QLabel*>("what")->text(), "Uploading  photo.jpg  2 / 5");
  auto* bar = seen()->findChild<QProgressBar*>("progress");
  EXPECT_EQ(bar->maximum(), 0) << "nobody knows yet";
  wait->show_bytes(0, 4000, 0);
  wait->show_bytes(1000, 4000, 1000);
  EXPECT_EQ(bar->maximum(), 100);
  EXPECT_EQ(bar->value(), 25);
  EXPECT_EQ(seen()->findChild<QLabel*>("lblBytes")->text(), "1.0 KB / 4.0 KB");
  EXPECT_EQ(seen()->findChild<QLabel*>("lblSpeed")->text(), "1.0 KB/s");
  EXPECT_EQ(seen()->findChild<QLabel*>("lblTime")->text(), "0:03");
}

TEST_F(WaitDialogTest, WhoTypesGoesOnTyping) {
  window.setFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  open();
  ASSERT_TRUE(QTest::qWaitFor([] { return seen() != nullptr; }, 5000));
  EXPECT_FALSE(seen()->isModal());
  EXPECT_TRUE(seen()->testAttribute(Qt::WA_ShowWithoutActivating));
  QTest::keyClicks(&window, "text");
  EXPECT_EQ(window.text(), "text");
}

TEST_F(WaitDialogTest, AWindowThatGoesTakesItAlong) {
  auto* other = new QWidget;
  other->show();
  {
    Forms others(*other);
    others.Open(wait->form(), platform::WindowHandle::none);
  }
  ASSERT_TRUE(QTest::qWaitFor([] { return seen() != nullptr; }, 5000));
  delete other;
  EXPECT_EQ(seen(), nullptr);
  wait->set_lblMessage(u"still there");
  wait.reset();
}

}  // namespace
}  // namespace tvx::qt
