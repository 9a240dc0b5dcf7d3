#include <QAbstractItemView>
#include <QComboBox>
#include <QMenu>
#include <QToolButton>

#include "htmled/format/colour_button.h"
#include "htmled/format/format_bar.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// The program's format bar with the real mouse and keys: it shows what is selected, sets it, and leaves the
/// page as it was, ready for typing.
namespace tvx::x11 {
namespace {

class FormatBarOnScreen : public EditorOnScreen {
 protected:
  QComboBox& box(const char* name) { return *window_->findChild<QComboBox*>(QString::fromLatin1(name)); }
  QString shown(const char* name) { return box(name).currentText(); }
  void select(const QString& element) {
    hands::drag(place_of_character(element, 0), place_of(element, 0.98, 0.5));
    ASSERT_TRUE(settle());
  }
  /// Opens the list and presses the entry.
  void choose(const char* name, const QString& entry) {
    QComboBox& list = box(name);
    ASSERT_TRUE(wait_for([&] { return list.isEnabled(); })) << name;
    hands::click(middle_of(list));
    ASSERT_TRUE(wait_for([&] { return list.view()->isVisible(); })) << name;
    const int index = list.findText(entry);
    ASSERT_GE(index, 0) << entry.toStdString();
    const QModelIndex line = list.model()->index(index, 0);
    list.view()->scrollTo(line);
    hands::click(list.view()->viewport()->mapToGlobal(list.view()->visualRect(line).center()));
    ASSERT_TRUE(wait_for([&] { return !list.view()->isVisible(); })) << name;
    ASSERT_TRUE(settle());
  }
};

TEST_F(FormatBarOnScreen, ShowsWhatIsSelected) {
  start("<body style='margin:20px'><h2 id=h>Heading</h2><p id=p><font face=Arial size=4>words</font></p>");
  hands::click(place_of(QStringLiteral("#h"), 0.02, 0.5));
  EXPECT_TRUE(wait_for([&] { return shown("styles") == QStringLiteral("Heading 2"); }))
      << shown("styles").toStdString();
  hands::click(place_of(QStringLiteral("#p font"), 0.3, 0.5));
  EXPECT_TRUE(wait_for([&] { return shown("styles") == QStringLiteral("Paragraph"); }));
  EXPECT_EQ(shown("fonts"), QStringLiteral("Arial"));
  EXPECT_EQ(shown("sizes"), QStringLiteral("14"));
  hands::press(QStringLiteral("ctrl+a"));
  EXPECT_TRUE(wait_for([&] { return box("styles").currentIndex() == -1; }));
  EXPECT_EQ(box("sizes").currentIndex(), -1);
}

TEST_F(FormatBarOnScreen, NamesTheStylesInTheLanguageOfTheProgram) {
  start("<p id=p>Wort</p>");
  window_->speak(*window_->languages().find(QStringLiteral("de")));
  EXPECT_TRUE(wait_for([&] { return shown("styles") == QStringLiteral("Absatz"); }))
      << shown("styles").toStdString();
  hands::press(QStringLiteral("ctrl+n"));
  EXPECT_TRUE(wait_for([&] { return window_->findChildren<qt::HTMLedWidget*>().size() == 2; }));
  wait_for_caret();
  EXPECT_TRUE(wait_for([&] { return shown("styles") == QStringLiteral("Absatz"); }))
      << shown("styles").toStdString();
  EXPECT_EQ(box("styles").itemText(1), QStringLiteral("Überschrift 1")) << "each of them";
  EXPECT_EQ(box("styles").itemText(8), QStringLiteral("Zitat"));
}

TEST_F(FormatBarOnScreen, AChoiceKeepsSelectionAndKeyboard) {
  start("<body style='margin:20px'><p id=p>words here</p>");
  select(QStringLiteral("#p"));
  choose("styles", QStringLiteral("Heading 1"));
  EXPECT_TRUE(wait_for([&] { return html().find("<H1") != std::string::npos; })) << html();
  choose("sizes", QStringLiteral("36"));
  EXPECT_TRUE(wait_for([&] { return html().find("size=\"7\"") != std::string::npos; })) << html();
  hands::type(QStringLiteral("new"));
  EXPECT_TRUE(wait_for([&] { return text() == "new"; })) << "what is selected is typed over: " << text();
}

TEST_F(FormatBarOnScreen, ColoursArePutOnAndTakenOff) {
  start("<body style='margin:20px'><p id=p>words here</p>");
  select(QStringLiteral("#p"));
  auto buttons = window_->findChildren<htmled::ColourButton*>();
  ASSERT_EQ(buttons.size(), 2);
  // The left part gives the last colour at once.
  ASSERT_TRUE(wait_for([&] { return buttons[0]->isEnabled(); }));
  hands::click(buttons[0]->mapToGlobal(QPoint(10, buttons[0]->height() / 2)));
  EXPECT_TRUE(wait_for([&] { return html().find("#c00000") != std::string::npos; })) << html();
  hands::click(buttons[1]->mapToGlobal(QPoint(10, buttons[1]->height() / 2)));
  EXPECT_TRUE(wait_for([&] { return window_->editor().format().highlight.isValid(); })) << html();
  // Its arrow opens what else there is; the first item takes the highlight away.
  answer_menu([&](QWidget& menu) {
    auto& list = static_cast<QMenu&>(menu);
    hands::click(list.mapToGlobal(list.actionGeometry(list.actions().constFirst()).center()));
  });
  hands::click(buttons[1]->mapToGlobal(QPoint(buttons[1]->width() - 4, buttons[1]->height() / 2)));
  EXPECT_TRUE(wait_for([&] { return !window_->editor().format().highlight.isValid(); })) << html();
}

TEST_F(FormatBarOnScreen, IsReachedAndLeftByKeys) {
  start("<body style='margin:20px'><p id=p>words here</p>");
  hands::press(QStringLiteral("alt+F6"));
  ASSERT_TRUE(wait_for([&] { return box("styles").hasFocus(); }));
  hands::press(QStringLiteral("Tab"));
  ASSERT_TRUE(wait_for([&] { return box("fonts").hasFocus(); }));
  hands::press(QStringLiteral("Escape"));
  ASSERT_TRUE(wait_for([&] { return !box("fonts").hasFocus(); }));
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(wait_for([&] { return text().find('x') != std::string::npos; })) << text();
}

TEST_F(FormatBarOnScreen, ClassesAreThereWhereThePageHasSome) {
  start(
      "<head><style>.note { color: green } .big { font-size: 200% }</style></head>"
      "<body style='margin:20px'><p id=p class=note>words here</p>");
  hands::click(place_of(QStringLiteral("#p"), 0.02, 0.5));
  ASSERT_TRUE(wait_for([&] { return shown("classes") == QStringLiteral("note"); }))
      << shown("classes").toStdString();
  select(QStringLiteral("#p"));
  choose("classes", QStringLiteral("big"));
  EXPECT_TRUE(wait_for([&] { return html().find("class=\"big\"") != std::string::npos; })) << html();
}

}  // namespace
}  // namespace tvx::x11
