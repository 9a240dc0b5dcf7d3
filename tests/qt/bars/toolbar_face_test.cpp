#include "tvx/qt/bars/toolbar_face.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QToolTip>
#include <QVBoxLayout>

#include "tvx/core/chrome/toolbars.h"
#include "tvx/qt/bars/icon_set.h"
#include "tvx/qt/support/twips.h"

namespace tvx::qt {
namespace {

using platform::Button;
using platform::ButtonStyle;
using platform::Toolbar;

struct Presses : platform::ToolbarHandler {
  void ButtonClick(Toolbar& toolbar, Button& button) override {
    keys.push_back(button.Key());
    if (when_pressed) when_pressed(toolbar);
  }
  std::vector<std::u16string> keys;
  std::function<void(Toolbar&)> when_pressed;
};

/// The formatting toolbar over a line edit that plays the document.
class ToolbarFaces : public testing::Test {
 protected:
  ToolbarFaces() {
    tools_.apply_state(true, {});
    tools_.Toolbar1.set_handler(&presses_);
    auto* layout = new QVBoxLayout(&window_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&bar_);
    layout->addWidget(&document_);
    window_.resize(900, 200);
    window_.show();
    window_.activateWindow();
    document_.setFocus();
    QApplication::processEvents();
  }
  ~ToolbarFaces() override {
    bar_.setParent(nullptr);
    document_.setParent(nullptr);
  }

  QAbstractButton* widget(int index) { return qobject_cast<QAbstractButton*>(bar_.button_widget(index)); }
  void click(int index) {
    const QPointF place = widget(index)->rect().center();
    const QPointF global = widget(index)->mapToGlobal(place);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, place, global, Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
      QApplication::sendEvent(widget(index), &event);
    }
  }
  void key(Qt::Key key) {
    QWidget* target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr);
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, Qt::NoModifier);
      QApplication::sendEvent(target, &event);
    }
  }

  core::Toolbars tools_;
  Presses presses_;
  QWidget window_;
  ToolbarFace bar_{tools_.Toolbar1, nullptr};
  QLineEdit document_;
};

TEST_F(ToolbarFaces, EveryImageKeyHasItsPicture) {
  for (Toolbar* toolbar : {&tools_.Toolbar1, &tools_.Toolbar2})
    for (int i = 1; i <= toolbar->Count(); ++i) {
      const Button& button = toolbar->Item(i);
      if (button.Style() == ButtonStyle::Separator) continue;
      EXPECT_FALSE(icon(button.Image()).isNull()) << i;
    }
  EXPECT_TRUE(icon(u"no such picture").isNull());
  EXPECT_TRUE(icon(u"").isNull());
}

TEST_F(ToolbarFaces, IconsAreDrawnInTheColourOfTheText) {
  const auto has_colour = [](const QImage& image, QColor colour) {
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (image.pixelColor(x, y) == colour) return true;
    return false;
  };
  const QPalette before = QApplication::palette();
  QPalette dark = before;
  dark.setColor(QPalette::ButtonText, Qt::white);
  QApplication::setPalette(dark);
  const QImage drawn = icon(u"table").pixmap(QSize(40, 40)).toImage();
  const QImage disabled = icon(u"table").pixmap(QSize(40, 40), QIcon::Disabled).toImage();
  QApplication::setPalette(before);
  EXPECT_TRUE(has_colour(drawn, Qt::white));
  EXPECT_FALSE(has_colour(drawn, Qt::black));
  EXPECT_FALSE(has_colour(disabled, Qt::white));
}

/// What stands beside the mouse while it rests on a button.
std::string tip_shown_at(QWidget& button) {
  QToolTip::hideText();
  QHelpEvent rests(QEvent::ToolTip, button.rect().center(), button.mapToGlobal(button.rect().center()));
  QApplication::sendEvent(&button, &rests);
  return QToolTip::text().toStdString();
}

TEST_F(ToolbarFaces, ToolTipsEndWithTheKeysOfTheirButtons) {
  EXPECT_EQ(tip_shown_at(*widget(core::button_bold)), "Bold") << "nobody told any keys";
  bar_.set_keys([](const Button& button) {
    return button.Key() == u"Bold" || button.Key() == u"Undo" ? QKeySequence(QStringLiteral("Ctrl+B"))
                                                              : QKeySequence();
  });
  EXPECT_EQ(tip_shown_at(*widget(core::button_bold)), "Bold (Ctrl+B)");
  EXPECT_EQ(tip_shown_at(*widget(core::button_italic)), "Italic");
  EXPECT_EQ(tools_.Toolbar1.Item(core::button_bold).ToolTipText(), u"Bold") << "for hosts, as it was";
  tools_.Toolbar1.Item(core::button_undo).set_Obstacle(u"There is nothing to undo");
  QApplication::processEvents();
  EXPECT_EQ(tip_shown_at(*widget(core::button_undo)), "Undo (Ctrl+B)\nThere is nothing to undo");
}

TEST_F(ToolbarFaces, AButtonWithoutAToolTipShowsNoKeysEither) {
  bar_.set_keys([](const Button&) { return QKeySequence(QStringLiteral("Ctrl+B")); });
  tools_.Toolbar1.Item(core::button_bold).set_ToolTipText(u"");
  QApplication::processEvents();
  EXPECT_EQ(tip_shown_at(*widget(core::button_bold)), "");
}

TEST_F(ToolbarFaces, AClickPressesAndLeavesTheFocusWhereItWas) {
  click(core::button_bold);
  EXPECT_EQ(presses_.keys, std::vector<std::u16string>{u"Bold"});
  EXPECT_EQ(QApplication::focusWidget(), &document_);
  // Only the model says what looks pressed in.
  EXPECT_FALSE(widget(core::button_bold)->isChecked());
  tools_.Toolbar1.Item(core::button_bold).set_Value(1);
  EXPECT_TRUE(widget(core::button_bold)->isChecked());
  click(core::button_bold);
  EXPECT_TRUE(widget(core::button_bold)->isChecked());
}

TEST_F(ToolbarFaces, ADisabledButtonDoesNotAnswer) {
  tools_.Toolbar1.Item(core::button_italic).set_Enabled(false);
  EXPECT_FALSE(widget(core::button_italic)->isEnabled());
  click(core::button_italic);
  EXPECT_TRUE(presses_.keys.empty());
}

TEST_F(ToolbarFaces, AButtonThatCantActIsGreyAndSaysWhy) {
  Button& undo = tools_.Toolbar1.Item(core::button_undo);
  undo.set_Obstacle(u"There is nothing to undo");
  EXPECT_FALSE(widget(core::button_undo)->isEnabled());
  EXPECT_EQ(widget(core::button_undo)->toolTip(), QStringLiteral("Undo\nThere is nothing to undo"));
  EXPECT_EQ(widget(core::button_undo)->accessibleName(), QStringLiteral("Undo"));
  click(core::button_undo);
  EXPECT_TRUE(presses_.keys.empty());
  undo.set_Obstacle(u"");
  EXPECT_TRUE(widget(core::button_undo)->isEnabled());
  EXPECT_EQ(widget(core::button_undo)->toolTip(), QStringLiteral("Undo"));
}

TEST_F(ToolbarFaces, TheFocusMovesOnWhenItsButtonCantActAnyMore) {
  widget(core::button_undo)->setFocus(Qt::TabFocusReason);
  ASSERT_EQ(QApplication::focusWidget(), widget(core::button_undo));
  tools_.Toolbar1.Item(core::button_undo).set_Obstacle(u"There is nothing to undo");
  EXPECT_EQ(QApplication::focusWidget(), widget(core::button_redo)) << "and not into the page";
}

TEST_F(ToolbarFaces, ButtonsComeAndGoWithTheModel) {
  EXPECT_EQ(bar_.button_widget(core::button_find), nullptr);
  EXPECT_EQ(bar_.button_widget(3), nullptr);  // a separator
  const int right_of_copy = widget(core::button_cut)->x();
  tools_.Toolbar1.Item(core::button_copy).set_Visible(false);
  tools_.Toolbar1.Refresh();
  EXPECT_TRUE(widget(core::button_copy)->isHidden());
  EXPECT_LT(widget(core::button_cut)->x(), right_of_copy);
  EXPECT_EQ(widget(core::button_cut)->toolTip(), QStringLiteral("Cut"));
}

TEST_F(ToolbarFaces, RowsWrapAndTheModelKnowsTheHeight) {
  const int one_row = bar_.heightForWidth(2000), two_rows = bar_.heightForWidth(500);
  EXPECT_EQ(two_rows, 2 * one_row);
  tools_.Toolbar1.set_Width(to_twips(500));
  EXPECT_FLOAT_EQ(tools_.Toolbar1.Height(), to_twips(two_rows));
  tools_.Toolbar1.set_Width(to_twips(2000));
  EXPECT_FLOAT_EQ(tools_.Toolbar1.Height(), to_twips(one_row));
  for (int width = 40; width < 1000; width += 13) {
    bar_.setFixedWidth(width);
    tools_.Toolbar1.Refresh();
    QApplication::processEvents();
    QRegion covered;
    for (int i = 1; i <= tools_.Toolbar1.Count(); ++i) {
      QWidget* button = bar_.button_widget(i);
      if (!button || button->isHidden()) continue;
      ASSERT_LE(button->geometry().right(), width) << width;
      ASSERT_LE(button->geometry().bottom(), bar_.heightForWidth(width)) << width;
      ASSERT_FALSE(covered.intersects(button->geometry())) << width;
      covered += button->geometry();
    }
  }
}

TEST_F(ToolbarFaces, ItIsWalkedWithTheKeyboard) {
  bool left = false;
  bar_.set_on_leave([&] {
    left = true;
    document_.setFocus();
  });
  ASSERT_TRUE(bar_.take_focus());
  EXPECT_EQ(QApplication::focusWidget(), widget(1));
  key(Qt::Key_Right);
  EXPECT_EQ(QApplication::focusWidget(), widget(2));
  key(Qt::Key_Right);  // over the separator
  EXPECT_EQ(QApplication::focusWidget(), widget(4));
  key(Qt::Key_Left);
  key(Qt::Key_Return);
  key(Qt::Key_Space);
  EXPECT_EQ(presses_.keys, (std::vector<std::u16string>{u"Print", u"Print"}));
  key(Qt::Key_End);
  EXPECT_EQ(QApplication::focusWidget(), widget(tools_.Toolbar1.Count()));
  key(Qt::Key_Home);
  EXPECT_EQ(QApplication::focusWidget(), widget(1));
  key(Qt::Key_Right);
  document_.setFocus();
  ASSERT_TRUE(bar_.take_focus());
  EXPECT_EQ(QApplication::focusWidget(), widget(2)) << "the one that had it";
  key(Qt::Key_Escape);
  EXPECT_TRUE(left);
  EXPECT_EQ(QApplication::focusWidget(), &document_);
}

// As the branch toolbar does: every press builds the bar anew, while the pressed button is still at it.
TEST_F(ToolbarFaces, APressMayReplaceAllButtons) {
  presses_.when_pressed = [](Toolbar& toolbar) {
    toolbar.Clear();
    toolbar.Add({u"KEY1", u"BODY", u"", u"Blank", ButtonStyle::Default});
    toolbar.Add({u"KEY2", u"TABLE", u"", u"Blank", ButtonStyle::Default});
    QApplication::processEvents();
  };
  click(core::button_bold);
  EXPECT_EQ(widget(1)->text(), QStringLiteral("BODY"));
  EXPECT_EQ(widget(2)->accessibleName(), QStringLiteral("TABLE"));
  EXPECT_GT(widget(2)->width(), widget(1)->fontMetrics().horizontalAdvance(QStringLiteral("TABLE")));
  EXPECT_TRUE(widget(4)->isHidden());
  click(2);
  EXPECT_EQ(presses_.keys.back(), u"KEY2");
}

}  // namespace
}  // namespace tvx::qt
