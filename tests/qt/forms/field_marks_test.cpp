#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include "qt/modal_user.h"
#include "tvx/qt/forms/form_dialog.h"
#include "tvx/qt/forms/form_face.h"
#include "tvx/qt/forms/form_widgets.h"
#include "tvx/qt/support/strings.h"

/// What a dialog offers at its fields: arrows beside numbers, letters for the keyboard, colours to pick, and
/// the reason why an input is no good.
namespace tvx::qt {
namespace {

using platform::Form;
using platform::FormControl;
using testing::ElementsAre;

struct Handler : platform::FormHandler {
  void Click(FormControl& control) override {
    clicked.push_back(control.Name());
    control.form().Hide();
  }
  void Step(FormControl& control) override { stepped.push_back(control.Name()); }
  void Paint(Form& form) override {
    ++painted;
    if (on_paint) on_paint(form);
  }
  std::vector<std::u16string> clicked, stepped;
  int painted = 0;
  std::function<void(Form&)> on_paint;
};

class FieldMarks : public testing::Test {
 protected:
  FieldMarks() {
    window_.resize(500, 300);
    window_.show();
    window_.activateWindow();
    form.begin_row();
    form.add_label(u"lblWidth", u"Width");
    form.add_text_box(u"txtWidth", u"40").set_number({.least = 0, .most = 42});
    form.add_label(u"lblUnit", u"px");
    form.begin_row();
    form.add_label(u"lblColour", u"Colour");
    FormControl& colour = form.add_text_box(u"txtColour");
    colour.set_offered({u"#ff0000", u"#00ff00"});
    form.add_button(u"cmdColour", u"...").set_colour_field(colour);
    form.begin_row();
    form.add_label(u"lblFont", u"Font");
    FormControl& fonts = form.add_combo_box(u"cboFont", {u"DejaVu Sans", u"DejaVu Serif"});
    fonts.set_shows_fonts();
    form.begin_row();
    form.add_check_box(u"chkWide", u"Wide");
    form.begin_row();
    form.add_label(u"lblSample", u"AaBb").set_sample({});
    form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
    form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"Cancel"));
    form.set_handler(&handler);
  }
  void show(const std::function<void(FormDialog&)>& user) {
    bool opened = false;
    when_dialog_opens(nullptr, [&](QWidget& front) {
      opened = true;
      user(dynamic_cast<FormDialog&>(front));
      if (form.Visible()) form.Hide();
    });
    faces_.Show(form, platform::WindowHandle::none);
    EXPECT_TRUE(opened);
  }
  template <class Widget = QWidget>
  Widget* widget(FormDialog& dialog, const char* name) {
    auto* found = dialog.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  FormControl& operator[](std::u16string_view name) { return form.Controls(name); }

  QWidget window_;
  Forms faces_{window_};
  Handler handler;
  Form form{u"frmMarks", u"Marks"};
};

// --- numbers ---

TEST_F(FieldMarks, TheArrowsStepANumberWithinItsRange) {
  show([this](FormDialog& dialog) {
    auto* box = widget<QAbstractSpinBox>(dialog, "txtWidth");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_EQ((*this)[u"txtWidth"].Text(), u"41");
    for (int i = 0; i < 3; ++i) QTest::keyClick(box, Qt::Key_Up);
    EXPECT_EQ((*this)[u"txtWidth"].Text(), u"42");
    EXPECT_EQ(widget<QLineEdit>(dialog, "txtWidth")->text(), QStringLiteral("42"));
  });
  EXPECT_THAT(handler.stepped, testing::Not(ElementsAre()));
}

TEST_F(FieldMarks, ANumbersBoxTakesEveryText) {
  show([this](FormDialog& dialog) {
    auto* box = widget<QAbstractSpinBox>(dialog, "txtWidth");
    box->setFocus(Qt::TabFocusReason);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("50%"));
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ((*this)[u"txtWidth"].Text(), u"50%");
  });
}

TEST_F(FieldMarks, ReturnInANumbersBoxPressesTheDefaultButton) {
  show([this](FormDialog& dialog) {
    QTest::keyClick(widget<QAbstractSpinBox>(dialog, "txtWidth"), Qt::Key_Return);
  });
  EXPECT_THAT(handler.clicked, ElementsAre(u"cmdOK"));
}

// --- wrong input ---

TEST_F(FieldMarks, WhatIsWrongStandsBelowTheFieldAndIsReadOut) {
  show([this](FormDialog& dialog) {
    auto* line = widget<QLabel>(dialog, "txtWidth fault");
    EXPECT_FALSE(line->isVisible());
    (*this)[u"txtWidth"].set_fault(u"This is no whole number");
    EXPECT_TRUE(line->isVisible());
    EXPECT_TRUE(line->text().contains(QStringLiteral("This is no whole number")));
    auto* box = widget<QAbstractSpinBox>(dialog, "txtWidth");
    QAccessibleInterface* read = QAccessible::queryAccessibleInterface(box);
    EXPECT_EQ(read->text(QAccessible::Name), QStringLiteral("Width"));
    EXPECT_EQ(read->text(QAccessible::Description), QStringLiteral("This is no whole number"));
    (*this)[u"txtWidth"].set_fault(u"");
    EXPECT_FALSE(line->isVisible());
  });
}

// --- letters for the keyboard ---

TEST_F(FieldMarks, EachFieldIsReachedByALetterOfItsCaption) {
  show([this](FormDialog& dialog) {
    EXPECT_EQ(widget<QLabel>(dialog, "lblWidth")->text(), QStringLiteral("&Width"));
    EXPECT_EQ(widget<QLabel>(dialog, "lblColour")->text(), QStringLiteral("&Colour"));
    EXPECT_EQ(widget<QAbstractButton>(dialog, "chkWide")->text(), QStringLiteral("W&ide")) << "W is taken";
    EXPECT_EQ(widget<QAbstractButton>(dialog, "cmdOK")->text(), QStringLiteral("OK"));
    EXPECT_EQ(widget<QLabel>(dialog, "lblUnit")->text(), QStringLiteral("px"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("txtColour"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::AltModifier);
    // The box is seen pressed for a moment.
    EXPECT_TRUE(QTest::qWaitFor([this] { return (*this)[u"chkWide"].Value(); }));
    EXPECT_EQ(widget<QAbstractButton>(dialog, "chkWide")->text(), QStringLiteral("W&ide"))
        << "turned, and the same";
  });
}

TEST_F(FieldMarks, CaptionsWithoutLettersOfKeysGetOneInBrackets) {
  (*this)[u"lblWidth"].set_Caption(u"\u5E45");
  show([this](FormDialog& dialog) {
    EXPECT_EQ(widget<QLabel>(dialog, "lblWidth")->text(), QStringLiteral("\u5E45(&A)"));
  });
}

TEST_F(FieldMarks, NoLetterIsMarkedThatJoinsTheOnesBesideIt) {
  // Letters of the width's caption stand alone, of the size's none that is free.
  (*this)[u"lblWidth"].set_Caption(u"\u0627\u0644\u0639\u0631\u0636");
  (*this)[u"lblColour"].set_Caption(u"\u0627\u0644\u062D\u062C\u0645");
  show([this](FormDialog& dialog) {
    EXPECT_EQ(widget<QLabel>(dialog, "lblWidth")->text(), QStringLiteral("&\u0627\u0644\u0639\u0631\u0636"));
    EXPECT_EQ(widget<QLabel>(dialog, "lblColour")->text(),
              QStringLiteral("\u0627\u0644\u062D\u062C\u0645(&A)"));
  });
}

// --- colours and fonts ---

TEST_F(FieldMarks, AColourOfTheDocumentIsPickedInsteadOfTyped) {
  show([this](FormDialog& dialog) {
    auto* box = widget<QLineEdit>(dialog, "txtColour");
    ASSERT_EQ(box->actions().size(), 1);
    box->actions().first()->trigger();
    auto* palette = box->findChild<QMenu*>(QStringLiteral("palette"));
    ASSERT_NE(palette, nullptr);
    ASSERT_EQ(palette->actions().size(), 2);
    palette->actions()[1]->trigger();
    palette->close();
    EXPECT_EQ((*this)[u"txtColour"].Text(), u"#00ff00");
  });
}

TEST_F(FieldMarks, AFontIsShownInItselfAndMayBeTyped) {
  show([this](FormDialog& dialog) {
    auto* list = widget<QComboBox>(dialog, "cboFont");
    EXPECT_EQ(list->itemData(1, Qt::FontRole).value<QFont>().family(), QStringLiteral("DejaVu Serif"));
    list->setFocus();
    list->lineEdit()->selectAll();
    QTest::keyClicks(list->lineEdit(), QStringLiteral("Own Face"));
    EXPECT_EQ((*this)[u"cboFont"].Text(), u"Own Face");
  });
}

TEST_F(FieldMarks, FillingAListDoesNotTouchWhatStandsInItsBox) {
  (*this)[u"cboFont"].set_Text(u"Own Face");
  show([this](FormDialog& dialog) {
    auto* list = widget<QComboBox>(dialog, "cboFont");
    EXPECT_EQ(list->currentText(), QStringLiteral("Own Face"));
    (*this)[u"cboFont"].AddItem(u"DejaVu Sans Mono");
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->currentText(), QStringLiteral("Own Face"));
  });
  EXPECT_EQ((*this)[u"cboFont"].Text(), u"Own Face");
}

TEST_F(FieldMarks, AListWithNothingChosenStaysSo) {
  show([this](FormDialog& dialog) {
    EXPECT_EQ(widget<QComboBox>(dialog, "cboFont")->currentText(), QString());
    EXPECT_EQ((*this)[u"cboFont"].Text(), u"");
  });
}

TEST_F(FieldMarks, TheSampleShowsTheChoice) {
  show([this](FormDialog& dialog) {
    (*this)[u"lblSample"].set_sample(
        {.font = u"DejaVu Serif", .colour = u"#ff0000", .background = u"blue", .size = 7});
    const auto* sample = widget<QLabel>(dialog, "lblSample");
    EXPECT_EQ(sample->font().family(), QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(sample->font().pixelSize(), 48);
    EXPECT_EQ(sample->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    EXPECT_EQ(sample->palette().color(QPalette::Window), QColor(0, 0, 255));
  });
}

// --- windows ---

TEST_F(FieldMarks, ADialogWiderThanTheScreenScrollsBothWays) {
  form.begin_row();
  form.add_text_box(u"txtLong").set_columns(400);
  for (int i = 0; i < 60; ++i) {
    form.begin_row();
    form.add_text_box(u"txt" + from_qt(QString::number(i)));
  }
  show([this](FormDialog& dialog) {
    const QSize screen = dialog.screen()->availableGeometry().size();
    EXPECT_LE(dialog.width(), screen.width());
    EXPECT_LE(dialog.height(), screen.height());
    const auto* area = dialog.findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_GT(area->horizontalScrollBar()->maximum(), 0);
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
    EXPECT_TRUE(dialog.rect().contains(
        QRect(widget(dialog, "cmdOK")->mapTo(&dialog, QPoint()), widget(dialog, "cmdOK")->size())));
  });
}

TEST_F(FieldMarks, TypingPaintsNothingAnew) {
  show([this](FormDialog& dialog) {
    QCoreApplication::processEvents();
    const int before = handler.painted;
    EXPECT_GT(before, 0);
    widget(dialog, "txtColour")->setFocus();
    QTest::keyClicks(widget(dialog, "txtColour"), QStringLiteral("red"));
    QCoreApplication::processEvents();
    EXPECT_EQ(handler.painted, before);
    QExposeEvent uncovered(QRegion(0, 0, 10, 10));
    QCoreApplication::sendEvent(dialog.windowHandle(), &uncovered);
    EXPECT_EQ(handler.painted, before + 1);
  });
}

}  // namespace
}  // namespace tvx::qt
