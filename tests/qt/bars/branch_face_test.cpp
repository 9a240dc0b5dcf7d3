#include "tvx/qt/bars/branch_face.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>

#include "tvx/qt/support/twips.h"

namespace tvx::qt {
namespace {

using platform::Button;
using platform::ButtonStyle;
using platform::Toolbar;

struct Presses : platform::ToolbarHandler {
  void ButtonClick(Toolbar&, Button& button) override { keys.push_back(button.Key()); }
  std::vector<std::u16string> keys;
};

/// The element path under a line edit that plays the document.
class BranchFaces : public testing::Test {
 protected:
  BranchFaces() {
    model_.set_handler(&presses_);
    auto* layout = new QVBoxLayout(&window_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&document_);
    layout->addWidget(&bar_);
    window_.resize(500, 80);
    window_.show();
    window_.activateWindow();
    document_.setFocus();
    QApplication::processEvents();
  }
  ~BranchFaces() override {
    bar_.setParent(nullptr);
    document_.setParent(nullptr);
  }

  void show_path(std::initializer_list<const char16_t*> tags) {
    model_.Clear();
    int place = 4;
    for (const char16_t* tag : tags)
      model_.Add(
          {u"KEY" + std::u16string(1, char16_t(u'0' + place++)), tag, u"", u"Blank", ButtonStyle::Default});
    model_.Refresh();
  }
  QAbstractButton* crumb(int index) { return qobject_cast<QAbstractButton*>(bar_.button_widget(index)); }
  static void click(QWidget* target) {
    const QPointF place = target->rect().center(), global = target->mapToGlobal(place);
    QMouseEvent press(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(target, &release);
  }
  static void key(Qt::Key key) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, Qt::NoModifier);
      QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
  }

  Toolbar model_{u"tlbDOM"};
  Presses presses_;
  QWidget window_;
  BranchFace bar_{model_, nullptr};
  QLineEdit document_;
};

TEST_F(BranchFaces, NamesStandInARowInTheirOrder) {
  show_path({u"TABLE", u"TBODY", u"TR", u"TD"});
  for (int i = 1; i < 4; ++i) {
    ASSERT_NE(crumb(i), nullptr);
    EXPECT_LT(crumb(i)->geometry().right(), crumb(i + 1)->x());
  }
  EXPECT_EQ(crumb(4)->text(), QStringLiteral("TD"));
  EXPECT_EQ(crumb(4)->accessibleName(), QStringLiteral("Element TD"));
  EXPECT_EQ(bar_.overflow_widget(), nullptr);
  EXPECT_FLOAT_EQ(model_.Item(3).Left(), to_twips(crumb(3)->x()));
}

TEST_F(BranchFaces, AClickPressesAndLeavesTheFocusWhereItWas) {
  show_path({u"P", u"B"});
  click(crumb(1));
  EXPECT_EQ(presses_.keys, std::vector<std::u16string>{u"KEY4"});
  EXPECT_EQ(QApplication::focusWidget(), &document_);
}

TEST_F(BranchFaces, ARightPressDoesTheSame) {
  show_path({u"P", u"B"});
  QContextMenuEvent right(QContextMenuEvent::Mouse, crumb(2)->rect().center());
  QApplication::sendEvent(crumb(2), &right);
  EXPECT_EQ(presses_.keys, std::vector<std::u16string>{u"KEY5"});
  EXPECT_EQ(QApplication::focusWidget(), &document_);
}

TEST_F(BranchFaces, AnotherPathTakesItsPlace) {
  show_path({u"P", u"B", u"I"});
  show_path({u"H1"});
  EXPECT_EQ(crumb(1)->text(), QStringLiteral("H1"));
  EXPECT_EQ(crumb(2), nullptr);
  show_path({});
  EXPECT_EQ(crumb(1), nullptr);
}

TEST_F(BranchFaces, TheSameNamesOfOtherElementsPressTheirOwnKeys) {
  show_path({u"P"});
  model_.Clear();
  model_.Add({u"KEY9", u"P", u"", u"Blank", ButtonStyle::Default});
  model_.Refresh();
  click(crumb(1));
  EXPECT_EQ(presses_.keys, std::vector<std::u16string>{u"KEY9"});
}

TEST_F(BranchFaces, ThePlaceholderIsNotDrawn) {
  model_.Add({u"KEY0", u" ", u"", u"Blank", ButtonStyle::Default});
  model_.Refresh();
  EXPECT_TRUE(!crumb(1) || crumb(1)->isHidden());
}

TEST_F(BranchFaces, WhatDoesNotFitStandsInAMenuAtTheStart) {
  window_.resize(220, 80);
  show_path({u"TABLE", u"TBODY", u"TR", u"TD", u"BLOCKQUOTE", u"SPAN"});
  QApplication::processEvents();
  ASSERT_NE(bar_.overflow_widget(), nullptr);
  EXPECT_EQ(crumb(1), nullptr);
  ASSERT_NE(crumb(6), nullptr);
  EXPECT_LE(crumb(6)->geometry().right(), bar_.width());
  EXPECT_GT(crumb(6)->x(), bar_.overflow_widget()->geometry().right());
  QTimer::singleShot(20, [] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().at(0)->text(), QStringLiteral("TABLE"));
    menu->setActiveAction(menu->actions().at(0));
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(menu, &event);
  });
  click(bar_.overflow_widget());
  EXPECT_EQ(presses_.keys, std::vector<std::u16string>{u"KEY4"});
}

TEST_F(BranchFaces, ItsHeightIsTheSameAtAnyWidthAndForAnyPath) {
  const float height = model_.Height();
  show_path({u"TABLE", u"TBODY", u"TR", u"TD", u"BLOCKQUOTE", u"SPAN"});
  model_.set_Width(500);
  EXPECT_EQ(model_.Height(), height);
}

TEST_F(BranchFaces, AHiddenHolderStaysHidden) {
  bar_.show_in(QRect(0, 40, 500, 30), false);
  show_path({u"P"});
  EXPECT_TRUE(bar_.isHidden());
  bar_.show_in(QRect(0, 40, 500, 30), true);
  EXPECT_FALSE(bar_.isHidden());
  model_.set_Visible(false);
  model_.Refresh();
  EXPECT_TRUE(bar_.isHidden());
}

TEST_F(BranchFaces, ItIsWalkedWithTheKeyboard) {
  bool left = false;
  bar_.set_on_leave([&] { left = true; });
  show_path({u"DIV", u"P", u"B"});
  ASSERT_TRUE(bar_.take_focus());
  EXPECT_EQ(QApplication::focusWidget(), crumb(3));
  key(Qt::Key_Left);
  key(Qt::Key_Return);
  key(Qt::Key_Home);
  key(Qt::Key_Space);
  key(Qt::Key_End);
  EXPECT_EQ(QApplication::focusWidget(), crumb(3));
  EXPECT_EQ(presses_.keys, (std::vector<std::u16string>{u"KEY5", u"KEY4"}));
  key(Qt::Key_Escape);
  EXPECT_TRUE(left);
}

TEST_F(BranchFaces, RightToLeftItBeginsAtTheRight) {
  window_.setLayoutDirection(Qt::RightToLeft);
  show_path({u"P", u"B"});
  QApplication::processEvents();
  EXPECT_GT(crumb(1)->x(), crumb(2)->x());
  EXPECT_GT(crumb(1)->geometry().right(), bar_.width() - 20);
}

}  // namespace
}  // namespace tvx::qt
