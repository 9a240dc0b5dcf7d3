#include "tvx/qt/forms/form_face.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

#include "qt/modal_user.h"
#include "tvx/base/error.h"
#include "tvx/qt/dialogs/dialogs.h"
#include "tvx/qt/forms/colour_button.h"
#include "tvx/qt/forms/form_dialog.h"
#include "tvx/qt/forms/form_widgets.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using platform::Form;
using platform::FormControl;
using testing::ElementsAre;

/// A dialog with one of everything, and its handler: OK wants a name, the colour button asks for a colour.
struct SampleForm : platform::FormHandler {
  SampleForm() {
    form.add_label(u"lblName", u"&Name");
    form.add_text_box(u"txtName", u"Ada");
    FormControl& frame = form.add_frame(u"fraLook", u"Look");
    form.begin_row(&frame);
    form.add_label(u"lblRows", u"Rows");
    form.add_text_box(u"txtRows", u"1").set_columns(5);
    form.add_label(u"lblAlign", u"Align");
    form.add_list(u"cboAlign", {u"left", u"center", u"right"});
    form.begin_row(&frame);
    form.add_label(u"lblColour", u"Background Color");
    FormControl& colour = form.add_text_box(u"txtColour");
    form.add_button(u"cmdColour", u"…").set_colour_field(colour);
    form.begin_row(&frame);
    form.add_check_box(u"chkKeep", u"Keep proportions");
    form.begin_row();
    form.add_picture(u"picSample");
    form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
    form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"Cancel"));
    form.set_handler(this);
  }
  void Click(FormControl& control) override {
    clicked.push_back(control.Name());
    if (control.Name() == u"cmdOK" && form.Controls(u"txtName").Text().empty())
      throw RuntimeError(errors::overflow, u"Overflow");
    if (on_click) on_click(control);
    if (control.Name() == u"cmdOK" || control.Name() == u"cmdCancel") form.Hide();
  }
  void Change(FormControl& control) override { changed.push_back(control.Name()); }

  Form form{u"frmSample", u"Sample"};
  std::vector<std::u16string> clicked, changed;
  std::function<void(FormControl&)> on_click;
};

class FormFace : public testing::Test {
 protected:
  FormFace() {
    window_->resize(500, 300);
    window_->show();
    window_->activateWindow();
  }

  /// Shows the form, and lets the user act once it is open.
  void show(Form& form, const std::function<void(FormDialog&)>& user) {
    bool opened = false;
    when_dialog_opens(nullptr, [&](QWidget& front) {
      opened = true;
      user(dynamic_cast<FormDialog&>(front));
      if (window_ && form.Visible()) form.Hide();
    });
    faces_.Show(form, platform::WindowHandle::none);
    EXPECT_TRUE(opened);
    EXPECT_FALSE(form.Visible());
  }
  void show(const std::function<void(FormDialog&)>& user) { show(sample_.form, user); }

  template <class Widget = QWidget>
  Widget* widget(FormDialog& dialog, const char* name) {
    auto* found = dialog.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  /// A key for whatever has the focus.
  static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text)); }
  static QString focused() {
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
  }

  std::u16string text(std::u16string_view name) { return sample_.form.Controls(name).Text(); }

  std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
  Forms faces_{*window_};
  SampleForm sample_;
};

// --- opening, filling, closing ---

TEST_F(FormFace, IsFilledWithTheKeyboardAndAccepted) {
  show([this](FormDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Sample"));
    EXPECT_EQ(focused(), QStringLiteral("txtName"));
    EXPECT_EQ(widget<QLineEdit>(dialog, "txtName")->selectedText(), QStringLiteral("Ada"));
    type("Grace");
    key(Qt::Key_Tab);
    type("12");
    key(Qt::Key_Tab);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Tab);
    type("#00ff00");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Space);
    key(Qt::Key_Return);
  });
  EXPECT_EQ(text(u"txtName"), u"Grace");
  EXPECT_EQ(text(u"txtRows"), u"12");
  EXPECT_EQ(text(u"cboAlign"), u"center");
  EXPECT_EQ(text(u"txtColour"), u"#00ff00");
  EXPECT_TRUE(sample_.form.Controls(u"chkKeep").Value());
  EXPECT_THAT(sample_.clicked, ElementsAre(u"chkKeep", u"cmdOK"));
}

TEST_F(FormFace, IsFilledWithTheMouse) {
  show([this](FormDialog& dialog) {
    QTest::mouseClick(widget(dialog, "chkKeep"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_TRUE(sample_.form.Controls(u"chkKeep").Value());
    EXPECT_TRUE(widget<QCheckBox>(dialog, "chkKeep")->isChecked());
    QTest::mouseClick(widget(dialog, "cmdOK"), Qt::LeftButton);
  });
  EXPECT_THAT(sample_.clicked, ElementsAre(u"chkKeep", u"cmdOK"));
}

TEST_F(FormFace, TabGoesInTheOrderOfMakingAndRound) {
  show([](FormDialog&) {
    QStringList walked;
    for (int i = 0; i < 9; ++i) {
      walked << focused();
      key(Qt::Key_Tab);
    }
    EXPECT_EQ(walked.join(u' '),
              QStringLiteral("txtName txtRows cboAlign txtColour cmdColour chkKeep cmdOK cmdCancel txtName"));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), QStringLiteral("txtName"));
  });
}

TEST_F(FormFace, EscapeAndTheWindowsClosingPressCancel) {
  show([](FormDialog&) { key(Qt::Key_Escape); });
  show([](FormDialog& dialog) { dialog.close(); });
  EXPECT_THAT(sample_.clicked, ElementsAre(u"cmdCancel", u"cmdCancel"));
}

TEST_F(FormFace, ReturnOnAButtonPressesThatOne) {
  show([this](FormDialog& dialog) {
    widget(dialog, "cmdCancel")->setFocus();
    key(Qt::Key_Return);
  });
  EXPECT_THAT(sample_.clicked, ElementsAre(u"cmdCancel"));
}

TEST_F(FormFace, ReturnWithoutADefaultButtonPressesNothing) {
  Form form(u"frmPlain", u"Plain");
  form.add_text_box(u"txt");
  form.add_button(u"cmd", u"Press");
  form.add_closing_button(u"cmdClose", u"Close");
  form.set_handler(&sample_);
  show(form, [](FormDialog& dialog) {
    key(Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
  });
  EXPECT_THAT(sample_.clicked, ElementsAre());
}

TEST_F(FormFace, EscapeWithoutACancelButtonCloses) {
  Form form(u"frmPlain", u"Plain");
  form.add_text_box(u"txt");
  show(form, [&](FormDialog&) {
    key(Qt::Key_Escape);
    EXPECT_FALSE(form.Visible());
  });
}

TEST_F(FormFace, LettersWithAMarkLeadToTheirFields) {
  show([](FormDialog&) {
    key(Qt::Key_Tab);
    key(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(focused(), QStringLiteral("txtName"));
  });
}

// --- both sides follow each other ---

TEST_F(FormFace, WhatTheModelChangesIsSeenAtOnce) {
  show([this](FormDialog& dialog) {
    Form& form = sample_.form;
    form.set_Caption(u"Muster");
    form.Controls(u"lblRows").set_Caption(u"Zeilen");
    form.Controls(u"fraLook").set_Caption(u"Aussehen");
    form.Controls(u"chkKeep").set_Caption(u"Verhältnis");
    form.Controls(u"chkKeep").set_Value(true);
    form.Controls(u"cmdOK").set_Caption(u"Gut");
    form.Controls(u"txtRows").set_Text(u"7");
    form.Controls(u"txtRows").set_ToolTipText(u"<b>tip</b>");
    form.Controls(u"cboAlign").AddItem(u"justify");
    form.Controls(u"cboAlign").set_Text(u"justify");
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Muster"));
    EXPECT_EQ(without_marks(widget<QLabel>(dialog, "lblRows")->text()), QStringLiteral("Zeilen"));
    EXPECT_EQ(widget<QGroupBox>(dialog, "fraLook")->title(), QStringLiteral("Aussehen"));
    EXPECT_EQ(without_marks(widget<QCheckBox>(dialog, "chkKeep")->text()), QStringLiteral("Verhältnis"));
    EXPECT_TRUE(widget<QCheckBox>(dialog, "chkKeep")->isChecked());
    EXPECT_EQ(widget<QPushButton>(dialog, "cmdOK")->text(), QStringLiteral("Gut"));
    EXPECT_EQ(widget<QLineEdit>(dialog, "txtRows")->text(), QStringLiteral("7"));
    EXPECT_EQ(widget(dialog, "txtRows")->toolTip(), QStringLiteral("&lt;b&gt;tip&lt;/b&gt;"));
    EXPECT_EQ(widget<QComboBox>(dialog, "cboAlign")->currentText(), QStringLiteral("justify"));
    EXPECT_EQ(widget<QComboBox>(dialog, "cboAlign")->count(), 4);
  });
}

TEST_F(FormFace, EachLetterIsOneChangeAndTheCaretStays) {
  show([this](FormDialog& dialog) {
    auto* box = widget<QLineEdit>(dialog, "txtName");
    box->setCursorPosition(1);
    sample_.changed.clear();
    type("xy");
    EXPECT_EQ(box->cursorPosition(), 3);
  });
  EXPECT_EQ(text(u"txtName"), u"Axyda");
  EXPECT_THAT(sample_.changed, ElementsAre(u"txtName", u"txtName"));
}

TEST_F(FormFace, AListWithNothingChosenShowsNothing) {
  show([this](FormDialog& dialog) {
    auto* list = widget<QComboBox>(dialog, "cboAlign");
    EXPECT_EQ(list->currentIndex(), -1);
    EXPECT_EQ(list->currentText(), QString());
    EXPECT_FALSE(list->isEditable());
    sample_.form.Controls(u"cboAlign").set_ListIndex(2);
    EXPECT_EQ(list->currentText(), QStringLiteral("right"));
    sample_.form.Controls(u"cboAlign").Clear();
    EXPECT_EQ(list->currentIndex(), -1);
    EXPECT_EQ(list->count(), 0);
  });
  EXPECT_THAT(sample_.changed, ElementsAre(u"cboAlign", u"cboAlign"));
}

TEST_F(FormFace, WhatCanNotBeReachedIsGreyOrAway) {
  Form& form = sample_.form;
  form.Controls(u"txtName").set_Enabled(false);
  form.Controls(u"lblName").set_Enabled(false);
  form.Controls(u"lblRows").set_Visible(false);
  form.Controls(u"txtRows").set_Visible(false);
  form.Controls(u"cmdOK").set_Enabled(false);
  show([&](FormDialog& dialog) {
    EXPECT_FALSE(widget(dialog, "txtName")->isEnabled());
    EXPECT_FALSE(widget(dialog, "lblName")->isEnabled());
    EXPECT_FALSE(widget(dialog, "txtRows")->isVisible());
    EXPECT_EQ(focused(), QStringLiteral("cboAlign"));
    key(Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    form.Controls(u"txtRows").set_Visible(true);
    EXPECT_TRUE(widget(dialog, "txtRows")->isVisible());
    form.Controls(u"fraLook").set_Enabled(false);
    EXPECT_FALSE(widget(dialog, "cboAlign")->isEnabled());
    form.Controls(u"fraLook").set_Visible(false);
    EXPECT_FALSE(widget(dialog, "cboAlign")->isVisible());
  });
  EXPECT_THAT(sample_.clicked, ElementsAre());
}

TEST_F(FormFace, ALabelIsGreyWithWhatItNames) {
  Form& form = sample_.form;
  form.Controls(u"txtName").set_Enabled(false);
  show([&](FormDialog& dialog) {
    EXPECT_FALSE(widget(dialog, "lblName")->isEnabled());
    EXPECT_TRUE(form.Controls(u"lblName").Enabled()) << "for the program nothing has changed";
    EXPECT_TRUE(widget(dialog, "lblRows")->isEnabled());
    form.Controls(u"txtName").set_Enabled(true);
    EXPECT_TRUE(widget(dialog, "lblName")->isEnabled());
    form.Controls(u"txtColour").set_Enabled(false);
    EXPECT_TRUE(widget(dialog, "lblColour")->isEnabled()) << "the button beside the box can be pressed";
  });
}

TEST_F(FormFace, ABoxWithAColourHasLettersThatCanBeRead) {
  FormControl& box = sample_.form.Controls(u"txtColour");
  show([&](FormDialog& dialog) {
    const QWidget* shown = widget(dialog, "txtColour");
    const QPalette usual = shown->palette();
    box.set_BackColor(0x800000);  // blue, a dark one
    EXPECT_EQ(shown->palette().color(QPalette::Base), QColor(0, 0, 0x80));
    EXPECT_EQ(shown->palette().color(QPalette::Text), QColor(Qt::white));
    box.set_BackColor(0x00FFFF);  // yellow
    EXPECT_EQ(shown->palette().color(QPalette::Base), QColor(255, 255, 0));
    EXPECT_EQ(shown->palette().color(QPalette::Text), QColor(Qt::black));
    box.set_BackColor(platform::button_face);
    EXPECT_EQ(shown->palette().color(QPalette::Base), dialog.palette().color(QPalette::Window));
    box.set_BackColor(platform::window_background);
    EXPECT_EQ(shown->palette(), usual);
  });
}

// --- colours ---

TEST(DocumentColours, AreNamesAndNumbersAndNothingElse) {
  EXPECT_EQ(document_colour(QStringLiteral("red")), QColor(255, 0, 0));
  EXPECT_EQ(document_colour(QStringLiteral(" DarkOliveGreen ")), QColor(0x55, 0x6b, 0x2f));
  EXPECT_EQ(document_colour(QStringLiteral("#123456")), QColor(0x12, 0x34, 0x56));
  EXPECT_EQ(document_colour(QStringLiteral("#0f0")), QColor(0, 255, 0));
  EXPECT_EQ(document_colour(QStringLiteral("aBcDeF")), QColor(0xab, 0xcd, 0xef));
  for (const char* none : {"", "#12", "reddish", "transparent", "rgb(1,2,3)", "#00000000", "12345"})
    EXPECT_FALSE(document_colour(QLatin1String(none)).isValid()) << none;
}

TEST_F(FormFace, AColourButtonShowsWhatItsFieldHoldsWhileItIsTyped) {
  show([this](FormDialog& dialog) {
    auto* button = widget<ColourButton>(dialog, "cmdColour");
    EXPECT_FALSE(button->colour().isValid());
    widget(dialog, "txtColour")->setFocus();
    type("red");
    EXPECT_EQ(button->colour(), QColor(255, 0, 0));
    const QImage seen = button->grab().toImage();
    EXPECT_EQ(seen.pixelColor(seen.rect().center()), QColor(255, 0, 0));
    type("x");
    EXPECT_FALSE(button->colour().isValid());
    sample_.form.Controls(u"txtColour").set_Text(u"#0000ff");
    EXPECT_EQ(button->colour(), QColor(0, 0, 255));
    EXPECT_EQ(button->width(), button->height());
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Background Color"));
  });
}

TEST_F(FormFace, AColourDialogStandsOverTheForm) {
  Dialogs dialogs(*window_);
  sample_.on_click = [&](FormControl& control) {
    if (control.Name() != u"cmdColour") return;
    const Colour chosen = dialogs.ShowColor(white, sample_.form.handle());
    if (chosen != no_colour) sample_.form.Controls(u"txtColour").set_Text(u"#010203");
  };
  show([this](FormDialog& dialog) {
    when_dialog_opens(&dialog, [&](QWidget& front) {
      EXPECT_EQ(front.parentWidget(), &dialog);
      dynamic_cast<QColorDialog&>(front).accept();
    });
    widget(dialog, "cmdColour")->setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(widget<QLineEdit>(dialog, "txtColour")->text(), QStringLiteral("#010203"));
    EXPECT_EQ(widget<ColourButton>(dialog, "cmdColour")->colour(), QColor(1, 2, 3));
    EXPECT_TRUE(dialog.isVisible());
  });
}

// --- failures ---

TEST_F(FormFace, AFailingPressIsToldAndTheDialogStays) {
  show([this](FormDialog& dialog) {
    key(Qt::Key_Backspace);
    when_dialog_opens(&dialog, [&](QWidget& front) {
      EXPECT_EQ(dynamic_cast<QMessageBox&>(front).text(), QStringLiteral("Overflow"));
      EXPECT_EQ(front.parentWidget(), &dialog);
      key(Qt::Key_Return);
    });
    key(Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("txtName"));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    type("b");
    key(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_THAT(sample_.clicked, ElementsAre(u"cmdOK", u"cmdOK"));
}

TEST_F(FormFace, ACancelThatFailsClosesAllTheSame) {
  sample_.on_click = [](FormControl&) { throw RuntimeError(errors::invalid_call, u"No"); };
  show([this](FormDialog&) {
    key(Qt::Key_Escape);
    EXPECT_FALSE(sample_.form.Visible());
  });
}

// --- windows around it ---

TEST_F(FormFace, AFormOpensAnotherAndGetsItsFocusBack) {
  SampleForm inner;
  sample_.on_click = [&](FormControl& control) {
    if (control.Name() == u"chkKeep") faces_.Show(inner.form, sample_.form.handle());
  };
  show([&](FormDialog& dialog) {
    when_dialog_opens(&dialog, [&](QWidget& front) {
      EXPECT_EQ(front.parentWidget(), &dialog);
      key(Qt::Key_Escape);
    });
    widget(dialog, "chkKeep")->setFocus();
    key(Qt::Key_Space);
    EXPECT_FALSE(inner.form.Visible());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(focused(), QStringLiteral("chkKeep"));
  });
  EXPECT_THAT(inner.clicked, ElementsAre(u"cmdCancel"));
}

TEST_F(FormFace, TheControlMayBeClosedWhileItIsOpen) {
  show([this](FormDialog&) { window_.reset(); });
  EXPECT_THAT(sample_.clicked, ElementsAre(u"cmdCancel"));
}

TEST_F(FormFace, TheControlMayBeClosedByAPress) {
  sample_.on_click = [this](FormControl& control) {
    if (control.Name() != u"chkKeep") return;
    window_.reset();
    throw RuntimeError(errors::invalid_call, u"too late to be told");
  };
  show([this](FormDialog& dialog) {
    QTest::mouseClick(widget(dialog, "chkKeep"), Qt::LeftButton, {}, {8, 8});
  });
  EXPECT_THAT(sample_.clicked, ElementsAre(u"chkKeep", u"cmdCancel"));
}

TEST_F(FormFace, TheFocusComesBackToWhereItWas) {
  auto* box = new QLineEdit(QStringLiteral("abc"), window_.get());
  box->show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  box->setFocus();
  box->setCursorPosition(1);
  show([](FormDialog&) { key(Qt::Key_Escape); });
  EXPECT_TRUE(QTest::qWaitFor([box] { return box->hasFocus(); }));
  EXPECT_EQ(box->cursorPosition(), 1);
}

// --- looks ---

TEST_F(FormFace, LongCaptionsAreNotClipped) {
  Form& form = sample_.form;
  for (const auto& control : form.controls())
    if (control->has_caption())
      control->set_Caption(u"Eine Donaudampfschifffahrtsgesellschaft von ungewöhnlicher Länge");
  form.Controls(u"cmdOK").set_Caption(u"Die Einstellungen übernehmen und schließen");
  form.Controls(u"cmdCancel").set_Caption(u"Die Einstellungen nicht übernehmen");
  show([](FormDialog& dialog) {
    expect_nothing_clipped(dialog);
    EXPECT_LT(dialog.width(), 1200);
  });
}

TEST_F(FormFace, CaptionsThatGrowWhileItIsOpenAreNotClipped) {
  show([this](FormDialog& dialog) {
    expect_nothing_clipped(dialog);
    for (const auto& control : sample_.form.controls())
      if (control->has_caption()) control->set_Caption(u"Ein deutlich längerer Text für dieses Feld");
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    expect_nothing_clipped(dialog);
  });
}

TEST_F(FormFace, FieldsStandInColumnsThroughAllFrames) {
  show([this](FormDialog& dialog) {
    const auto left = [&](const char* name) { return widget(dialog, name)->mapTo(&dialog, QPoint()).x(); };
    EXPECT_EQ(left("lblRows"), left("lblColour"));
    EXPECT_EQ(left("txtRows"), left("txtColour"));
    EXPECT_EQ(left("txtRows"), left("chkKeep"));
    EXPECT_LT(left("lblRows"), left("txtRows"));
    EXPECT_LT(left("txtRows"), left("lblAlign"));
    EXPECT_LT(left("lblAlign"), left("cboAlign"));
    EXPECT_LT(left("txtColour"), left("cmdColour"));
    EXPECT_EQ(widget<QLabel>(dialog, "lblRows")->buddy(), widget(dialog, "txtRows"));
    EXPECT_EQ(widget(dialog, "lblName")->width(), widget(dialog, "lblColour")->width());
  });
}

TEST_F(FormFace, ArabicWordsMakeItReadFromTheRight) {
  sample_.form.set_Caption(u"خصائص الجدول");
  show([this](FormDialog& dialog) {
    EXPECT_EQ(dialog.layoutDirection(), Qt::RightToLeft);
    EXPECT_GT(widget(dialog, "lblRows")->x(), widget(dialog, "txtRows")->x());
    expect_nothing_clipped(dialog);
  });
  sample_.form.set_Caption(u"Table Properties");
  window_->setLayoutDirection(Qt::RightToLeft);
  show([](FormDialog& dialog) { EXPECT_EQ(dialog.layoutDirection(), Qt::RightToLeft); });
}

TEST_F(FormFace, ABoxWithoutALabelHasRoomAndIsNamedByItsDialog) {
  Form form(u"frmText", u"Edit Text");
  form.add_text_box(u"txt");
  form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
  form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"\u30AD\u30E3\u30F3\u30BB\u30EB"));
  show(form, [this, &form](FormDialog& dialog) {
    const QWidget* box = widget(dialog, "txt");
    EXPECT_GE(box->width(), 80 * box->fontMetrics().averageCharWidth());
    EXPECT_EQ(box->accessibleName(), QStringLiteral("Edit Text"));
    EXPECT_EQ(widget(dialog, "cmdOK")->height(), widget(dialog, "cmdCancel")->height());
    form.set_Caption(u"Text");
    EXPECT_EQ(box->accessibleName(), QStringLiteral("Text"));
  });
}

TEST_F(FormFace, ReadingProgramsHearWhatEachFieldIs) {
  sample_.form.Controls(u"txtRows").set_ToolTipText(u"A whole number");
  show([this](FormDialog& dialog) {
    const auto heard = [&](const char* name, QAccessible::Text what) {
      return QAccessible::queryAccessibleInterface(widget(dialog, name))->text(what);
    };
    EXPECT_EQ(heard("txtName", QAccessible::Name), QStringLiteral("Name"));
    EXPECT_EQ(heard("txtRows", QAccessible::Name), QStringLiteral("Rows"));
    EXPECT_EQ(heard("txtRows", QAccessible::Description), QStringLiteral("A whole number"));
    EXPECT_EQ(heard("cboAlign", QAccessible::Name), QStringLiteral("Align"));
    EXPECT_EQ(heard("cmdColour", QAccessible::Name), QStringLiteral("Background Color"));
    EXPECT_EQ(heard("chkKeep", QAccessible::Name), QStringLiteral("Keep proportions"));
    EXPECT_EQ(heard("fraLook", QAccessible::Name), QStringLiteral("Look"));
    sample_.form.Controls(u"lblColour").set_Caption(u"Hintergrundfarbe");
    EXPECT_EQ(heard("cmdColour", QAccessible::Name), QStringLiteral("Hintergrundfarbe"));
  });
}

TEST_F(FormFace, TheDesktopMayTurnDarkWhileItIsOpen) {
  sample_.form.Controls(u"txtColour").set_BackColor(platform::button_face);
  const QPalette light = QApplication::palette();
  show([&](FormDialog& dialog) {
    const QWidget* box = widget(dialog, "txtColour");
    EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::black));
    QApplication::setPalette(QPalette(QColor(0x2b, 0x2d, 0x30)));
    QCoreApplication::processEvents();
    EXPECT_EQ(box->palette().color(QPalette::Base), QColor(0x2b, 0x2d, 0x30));
    EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::white));
    QApplication::setPalette(light);
  });
}

TEST_F(FormFace, APictureIsShownAtASizeThatFits) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("large.png"));
  QImage image(800, 400, QImage::Format_RGB32);
  image.fill(Qt::green);
  ASSERT_TRUE(image.save(file));
  show([&](FormDialog& dialog) {
    auto* picture = widget<QLabel>(dialog, "picSample");
    EXPECT_TRUE(picture->pixmap().isNull());
    sample_.form.Controls(u"picSample").set_Picture(from_qt(file));
    EXPECT_EQ(picture->pixmap().deviceIndependentSize(), QSizeF(320, 160));
    sample_.form.Controls(u"picSample").set_Picture(u"/no/such/file.png");
    EXPECT_TRUE(picture->pixmap().isNull());
  });
}

TEST_F(FormFace, WhatBelongsTogetherStandsInOneField) {
  Form form(u"frmRows", u"Rows");
  form.add_label(u"lblWidth", u"Width");
  form.add_text_box(u"txtWidth").set_columns(4);
  form.add_label(u"lblUnit", u"pixels");
  form.begin_row();
  form.add_label(u"lblSource", u"Source");
  form.add_text_box(u"txtSource");
  form.add_button(u"cmdBrowse", u"…");
  form.begin_row();
  form.add_label(u"lblNote", u"Both are kept in the document, && nowhere else.");
  show(form, [this](FormDialog& dialog) {
    const QWidget *width = widget(dialog, "txtWidth"), *unit = widget(dialog, "lblUnit");
    EXPECT_GT(unit->x(), width->geometry().right());
    EXPECT_LT(unit->x(), width->geometry().right() + 20) << "beside the number that it counts";
    EXPECT_EQ(width->x(), widget(dialog, "txtSource")->x());
    EXPECT_EQ(widget(dialog, "cmdBrowse")->accessibleName(), QStringLiteral("Source"));
    EXPECT_EQ(widget(dialog, "lblNote")->x(), widget(dialog, "lblSource")->x());
    EXPECT_EQ(widget<QLabel>(dialog, "lblNote")->text(),
              QStringLiteral("Both are kept in the document, & nowhere else."));
    expect_nothing_clipped(dialog);
  });
}

TEST_F(FormFace, AFormTallerThanTheScreenScrollsAndKeepsItsButtonsInReach) {
  Form form(u"frmTall", u"Tall");
  for (int i = 0; i < 60; ++i) {
    form.begin_row();
    form.add_label(u"lbl" + from_qt(QString::number(i)), u"Field");
    form.add_text_box(u"txt" + from_qt(QString::number(i)));
  }
  form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
  show(form, [this](FormDialog& dialog) {
    EXPECT_LE(dialog.height(), dialog.screen()->availableGeometry().height());
    QWidget* ok = widget(dialog, "cmdOK");
    EXPECT_TRUE(dialog.rect().contains(QRect(ok->mapTo(&dialog, QPoint()), ok->size())));
    for (int i = 0; i < 59; ++i) key(Qt::Key_Tab);
    EXPECT_EQ(focused(), QStringLiteral("txt59"));
    EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty()) << "it came into sight";
  });
}

}  // namespace
}  // namespace tvx::qt
