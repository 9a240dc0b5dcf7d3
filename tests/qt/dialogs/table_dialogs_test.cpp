#include <gmock/gmock.h>

#include <QColorDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QShortcut>

#include "qt/modal_user.h"
#include "qt/newcomer.h"
#include "tvx/qt/forms/colour_button.h"

namespace tvx::htmled {
namespace {

using qt::when_dialog_opens;
using testing::HasSubstr;
using testing::Not;

/// The dialogs of tables, each opened the way that users open it, and filled by their keys.
class TableDialogs : public Newcomer {
 protected:
  static constexpr char16_t table[] =
      u"<TABLE border=\"9\" width=\"300\"><TBODY><TR><TD>one</TD><TD>two</TD></TR></TBODY></TABLE>";

  void SetUp() override {
    dismiss_.stop();
    ASSERT_TRUE(window_.start({}));
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    settle();
  }
  void open_table() {
    open(table);
    press(place_of(QStringLiteral("td"), 1));
    focus_document();
  }

  // --- the ways ---
  void press_table_button() { click_button(control().Toolbar1().Item(u"table").Index()); }
  void table_menu_properties() {
    in_popup(QStringLiteral("mnuTProp"));
    press(corner_of(QStringLiteral("table")) + QPoint(4, 20), Qt::RightButton);
    wait_for_the_end();
  }
  /// The element path's menu of the element that is so far up from the caret's.
  void path_item(int up, const char* item) {
    auto* bar = window_.editor().findChild<qt::BranchFace*>(QStringLiteral("tlbDOM"));
    in_popup(QString::fromLatin1(item));
    click(bar->button_widget(control().tlbDOM().Count() - up));
    wait_for_the_end();
  }
  void wait_for_the_end() {
    ASSERT_TRUE(
        wait_for([] { return !QApplication::activePopupWidget() && !QApplication::activeModalWidget(); }));
    settle();
  }

  // --- the user at a dialog ---
  static void key(Qt::Key key) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key);
  }
  static QLineEdit* box(QWidget& dialog, const char* name) {
    auto* found = dialog.findChild<QLineEdit*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  static void fill(QWidget& dialog, const char* name, const char* text) {
    box(dialog, name)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(text));
  }
  /// A press on a colour's button, with a choice in the dialog that it opens.
  static void choose_colour(QWidget& dialog, const char* button, const QColor& colour) {
    when_dialog_opens(&dialog, [&](QWidget& front) {
      EXPECT_EQ(front.parentWidget(), &dialog);
      auto& colours = dynamic_cast<QColorDialog&>(front);
      EXPECT_EQ(colours.currentColor(), QColor(Qt::white));
      colours.setCurrentColor(colour);
      key(Qt::Key_Return);
    });
    QTest::mouseClick(dialog.findChild<QWidget*>(QString::fromLatin1(button)), Qt::LeftButton);
  }
};

// --- making a table ---

TEST_F(TableDialogs, TheToolbarsButtonMakesATable) {
  open(u"<P>text</P>");
  press(place_of(QStringLiteral("p"), 4));
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Table Properties"));
    qt::expect_nothing_clipped(dialog);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("txttablerow"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("2"));
    key(Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("3"));
    fill(dialog, "txtWidth", "50");
    key(Qt::Key_Return);
  });
  press_table_button();
  EXPECT_THAT(html(),
              HasSubstr("<TABLE width=\"50%\" cellspacing=\"0%\" border=\"1%\"><TBODY><TR><TD></TD><TD>"
                        "</TD><TD></TD></TR><TR><TD></TD><TD></TD><TD></TD></TR></TBODY></TABLE>"));
  EXPECT_TRUE(window_.isWindowModified());
  control().undo_document();
  EXPECT_EQ(html(), "<P>text</P>");
}

TEST_F(TableDialogs, EscapeMakesNoneAndTypingGoesOnAtTheCaret) {
  open(u"<P>text</P>");
  press(place_of(QStringLiteral("p"), 2));
  focus_document();
  when_dialog_opens(nullptr, [](QWidget&) { key(Qt::Key_Escape); });
  window_.editor().Table_Document();
  EXPECT_TRUE(wait_for([this] { return pane_with_focus() == "document"; }));
  EXPECT_EQ(html(), "<P>text</P>");
  type(QStringLiteral("X"));
  EXPECT_EQ(html(), "<P>teXxt</P>");
}

TEST_F(TableDialogs, AColourIsChosenInADialogOverTheDialog) {
  open(u"<P>text</P>");
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    choose_colour(dialog, "cmdBackColour", QColor(0, 0, 0x80));
    EXPECT_EQ(box(dialog, "txtBackColour")->text(), QStringLiteral("#000080"));
    EXPECT_EQ(box(dialog, "txtBackColour")->palette().color(QPalette::Base), QColor(0, 0, 0x80));
    EXPECT_EQ(box(dialog, "txtBackColour")->palette().color(QPalette::Text), QColor(Qt::white));
    EXPECT_EQ(dialog.findChild<qt::ColourButton*>(QStringLiteral("cmdBackColour"))->colour(),
              QColor(0, 0, 0x80));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    fill(dialog, "txttablecolumns", "1");
    key(Qt::Key_Return);
  });
  window_.editor().Table_Document();
  EXPECT_THAT(html(), HasSubstr("bgcolor=\"#000080\"><TBODY><TR><TD></TD></TR></TBODY>"));
}

TEST_F(TableDialogs, ANumberThatIsTooLargeIsToldAndCanBeMended) {
  open(u"<P>text</P>");
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    fill(dialog, "txttablecolumns", "99999");
    when_dialog_opens(&dialog, [](QWidget& front) {
      EXPECT_EQ(dynamic_cast<QMessageBox&>(front).text(), QStringLiteral("Overflow"));
      key(Qt::Key_Return);
    });
    key(Qt::Key_Return);
    ASSERT_TRUE(dialog.isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("txttablecolumns"));
    fill(dialog, "txttablecolumns", "1");
    key(Qt::Key_Return);
  });
  window_.editor().Table_Document();
  EXPECT_THAT(html(), HasSubstr("<TR><TD></TD></TR>"));
}

// --- a table that is there ---

TEST_F(TableDialogs, TheTablesMenuOpensItsSettings) {
  open_table();
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    EXPECT_EQ(box(dialog, "txtBorderwidth")->text(), QStringLiteral("9"));
    EXPECT_FALSE(box(dialog, "txttablerow")->isEnabled());
    EXPECT_FALSE(dialog.findChild<QWidget*>(QStringLiteral("cmdBorderColourCell"))->isEnabled());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("txtWidth"));
    fill(dialog, "txtBorderwidth", "2");
    fill(dialog, "txtBackColour", "red");
    key(Qt::Key_Return);
  });
  table_menu_properties();
  EXPECT_EQ(popup_, QStringLiteral("mnuT"));
  EXPECT_THAT(html(), HasSubstr("border=\"2\""));
  EXPECT_THAT(html(), HasSubstr("<TD bgcolor=\"red\">one</TD><TD bgcolor=\"red\">two</TD>"));
  control().undo_document();
  EXPECT_EQ(html(), to_utf8(table));
}

TEST_F(TableDialogs, SettingsThatAreCancelledChangeNothing) {
  open_table();
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    fill(dialog, "txtBorderwidth", "2");
    key(Qt::Key_Escape);
  });
  table_menu_properties();
  EXPECT_EQ(html(), to_utf8(table));
}

TEST_F(TableDialogs, TheTablesMenuInsertsARow) {
  open_table();
  in_popup(QStringLiteral("mnuTInsRow"));
  press(corner_of(QStringLiteral("table")) + QPoint(4, 20), Qt::RightButton);
  wait_for_the_end();
  EXPECT_THAT(html(), HasSubstr("two</TD></TR><TR><TD>"));
}

TEST_F(TableDialogs, TheElementPathOpensACellsProperties) {
  open_table();
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Cell Properties"));
    qt::expect_nothing_clipped(dialog);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("cboAlign"));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    fill(dialog, "txtHeight", "40");
    choose_colour(dialog, "Command1", QColor(255, 255, 0));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::mouseClick(dialog.findChild<QWidget*>(QStringLiteral("OKButton")), Qt::LeftButton);
  });
  path_item(0, "mnuToolProperties");
  EXPECT_THAT(html(), HasSubstr("<TD align=\"center\" height=\"40\" bgcolor=\"#FFFF00\">one</TD><TD>two"));
}

TEST_F(TableDialogs, TheElementPathOpensARowsProperties) {
  open_table();
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Row Properties"));
    for (const char* name : {"txtBackground", "txtColSpan", "txtRowSpan", "txtHeight", "txtWidth"}) {
      EXPECT_FALSE(box(dialog, name)->isEnabled()) << name;
      EXPECT_EQ(box(dialog, name)->palette().color(QPalette::Base), dialog.palette().color(QPalette::Window));
    }
    fill(dialog, "txtBgcolor", "silver");
    key(Qt::Key_Return);
  });
  path_item(1, "mnuToolProperties");
  EXPECT_THAT(html(), HasSubstr("<TR bgcolor=\"silver\">"));
}

TEST_F(TableDialogs, CancelledPropertiesOfACellChangeNothing) {
  open_table();
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    fill(dialog, "txtHeight", "40");
    dialog.close();
  });
  path_item(0, "mnuToolProperties");
  EXPECT_THAT(html(), Not(HasSubstr("height")));
}

TEST_F(TableDialogs, TheElementPathOpensATableOrATagAsText) {
  open_table();
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Table Properties"));
    fill(dialog, "txtCellPadding", "7");
    key(Qt::Key_Return);
  });
  path_item(3, "mnuToolProperties");
  EXPECT_THAT(html(), HasSubstr("cellpadding=\"7\""));
  press(place_of(QStringLiteral("td"), 1));
  when_dialog_opens(nullptr, [](QWidget& dialog) {
    EXPECT_GT(box(dialog, "txtEleCode")->width(), 300) << "there is room for a tag";
    fill(dialog, "txtEleCode", "<TABLE border=\"5\">");
    key(Qt::Key_Return);
  });
  path_item(3, "mnuToolEditTag");
  EXPECT_THAT(html(), HasSubstr("<TABLE border=\"5\"><TBODY>"));
}

// --- in every language ---

class TableDialogsIn : public TableDialogs, public testing::WithParamInterface<const char*> {};

TEST_P(TableDialogsIn, NoWordIsClipped) {
  const QString language = QString::fromLatin1(GetParam());
  window_.editor().set_LocalizationFile(QStringLiteral(TVX_SOURCE_DIR "/languages/%1.xml").arg(language));
  open_table();
  int seen = 0;
  const auto look = [&](QWidget& dialog) {
    ++seen;
    SCOPED_TRACE(dialog.objectName().toStdString());
    qt::expect_nothing_clipped(dialog);
    EXPECT_EQ(dialog.layoutDirection(), language == QStringLiteral("ar") ? Qt::RightToLeft : Qt::LeftToRight);
    EXPECT_LT(dialog.width(), 800);
    key(Qt::Key_Escape);
  };
  when_dialog_opens(nullptr, look);
  path_item(0, "mnuToolProperties");
  when_dialog_opens(nullptr, look);
  path_item(1, "mnuToolProperties");
  when_dialog_opens(nullptr, look);
  path_item(3, "mnuToolProperties");
  when_dialog_opens(nullptr, look);
  path_item(3, "mnuToolEditTag");
  when_dialog_opens(nullptr, look);
  window_.editor().Table_Document();
  EXPECT_EQ(seen, 5);
}

INSTANTIATE_TEST_SUITE_P(Languages, TableDialogsIn, testing::Values("en", "de", "fr", "es", "ja", "ar"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace tvx::htmled
