#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include "tvx/editing/tables/selected_cells.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Tables by the mouse and the keyboard: cells that are selected, their menu, buttons that act on them.
namespace tvx::x11 {
namespace {

const QByteArray page =
    "<body style='margin:20px;font:16px sans-serif'><p>text</p><table border=1 cellpadding=8><tbody>"
    "<tr><td id=a>one</td><td id=b>two</td><td id=c>three</td></tr>"
    "<tr><td id=d>four</td><td id=e>five</td><td id=f>six</td></tr></tbody></table>";

class TablesOnScreen : public EditorOnScreen {
 protected:
  static QString named(const char* id) { return QLatin1Char('#') + QString::fromLatin1(id); }
  std::size_t selected() { return editing::selected_cells(document().editor()).size(); }
  std::string drawn() { return in_page(QStringLiteral("String(tvxView.drawn().chosen)")); }
  void drag_over(const char* from, const char* to) {
    hands::drag(place_of(named(from), 0.5, 0.5), place_of(named(to), 0.5, 0.5));
    ASSERT_TRUE(settle());
  }
  /// The cells' texts, one after the other.
  std::string cells() {
    std::string all;
    for (const char* id : {"a", "b", "c", "d", "e", "f"})
      all += in_page(QStringLiteral("document.querySelector('%1')?.innerText.trim() ?? '-'").arg(named(id))) +
             ' ';
    return all;
  }
  /// Opens a menu with items below it and chooses one, by the mouse.
  static void choose_below(QWidget& menu, const char* head, const char* item) {
    auto& top = dynamic_cast<QMenu&>(menu);
    auto* opens = top.findChild<QAction*>(QString::fromLatin1(head));
    ASSERT_NE(opens, nullptr);
    hands::click(top.mapToGlobal(top.actionGeometry(opens).center()));
    ASSERT_TRUE(wait_for([&] { return opens->menu()->isVisible(); }));
    QMenu& below = *opens->menu();
    auto* chosen = below.findChild<QAction*>(QString::fromLatin1(item));
    ASSERT_NE(chosen, nullptr);
    hands::click(below.mapToGlobal(below.actionGeometry(chosen).center()));
  }
};

TEST_F(TablesOnScreen, DraggingSelectsCellsAndDeleteEmptiesThem) {
  start(page);
  drag_over("b", "f");
  ASSERT_TRUE(wait_for([&] { return selected() == 4; }));
  EXPECT_TRUE(wait_for([&] { return drawn() == "4"; }));
  hands::press(QStringLiteral("Delete"));
  ASSERT_TRUE(wait_for([&] { return selected() == 0; }));
  ASSERT_TRUE(settle());
  EXPECT_EQ(cells(), "one   four   ");
  EXPECT_EQ(drawn(), "0");
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] { return cells() == "one x  four   "; })) << cells();
}

// Their text would go, without the cells.
TEST_F(TablesOnScreen, DraggingOnSelectedCellsSelectsOthers) {
  start(page);
  drag_over("a", "e");
  ASSERT_TRUE(wait_for([&] { return selected() == 4; }));
  drag_over("b", "c");
  EXPECT_TRUE(wait_for([&] { return selected() == 2; }));
  EXPECT_EQ(cells(), "one two three four five six ");
  hands::press(QStringLiteral("Delete"));
  ASSERT_TRUE(wait_for([&] { return cells() == "one   four five six "; })) << cells();
}

TEST_F(TablesOnScreen, TheMenuSetsThePropertiesOfSelectedCellsAndOfTheTable) {
  start(page);
  drag_over("b", "f");
  ASSERT_TRUE(wait_for([&] { return selected() == 4; }));
  const auto set = [&](const char* item, const char* field, const char* text) {
    answer_dialog([=](QDialog& dialog) {
      auto* line = dialog.findChild<QLineEdit*>(QString::fromLatin1(field));
      ASSERT_NE(line, nullptr);
      hands::click(middle_of(*line));
      hands::press(QStringLiteral("ctrl+a"));
      hands::type(QString::fromLatin1(text));
      EXPECT_TRUE(wait_for([&] { return line->text() == QLatin1String(text); }));
      hands::press(QStringLiteral("Return"));
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
    });
    choose(item);
    ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
    ASSERT_TRUE(settle());
  };
  set("CellProperties", "txtBgcolor", "yellow");
  const auto colours = [&] {
    return in_page(QStringLiteral(
        "[...document.querySelectorAll('td')].map(c => c.getAttribute('bgcolor') ?? '-').join()"));
  };
  EXPECT_TRUE(wait_for([&] { return colours() == "-,yellow,yellow,-,yellow,yellow"; })) << colours();
  hands::give_focus(*window_);
  set("TableProperties", "txtBorderwidth", "3");
  EXPECT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("document.querySelector('table').getAttribute('border')")) == "3";
  }));
  EXPECT_EQ(colours(), "-,yellow,yellow,-,yellow,yellow");
  hands::give_focus(*window_);
  hands::press(QStringLiteral("ctrl+z"));
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return colours() == "-,-,-,-,-,-"; })) << colours();
}

TEST_F(TablesOnScreen, BackspaceAtTheStartOfACellLeavesTheFileAsItIs) {
  const QByteArray lines =
      "<html>\n<body>\n<p>text</p>\n<table border=1>\n<tr>\n<td "
      "id=a>one</td>\n</tr>\n</table>\n</body>\n</html>\n";
  start(lines);
  hands::click(place_of_character(named("a"), 0));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Home"));
  hands::press(QStringLiteral("BackSpace"));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_->isWindowModified());
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  hands::press(QStringLiteral("ctrl+s"));
  ASSERT_TRUE(wait_for([&] { return !window_->isWindowModified(); }));
  QByteArray typed = lines;
  EXPECT_EQ(file(), typed.replace("one", "xone"));
}

TEST_F(TablesOnScreen, WhatIsPastedAfterATableThatEndsThePageStandsBesideIt) {
  start("<html>\n<body>\n<table border=1>\n<tr><td id=a>one</td></tr>\n</table>\n</body>\n</html>\n");
  QApplication::clipboard()->setText(QStringLiteral("a\tb"));
  hands::click(place_of_character(named("a"), 0));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("ctrl+End"));
  hands::press(QStringLiteral("ctrl+v"));
  ASSERT_TRUE(wait_for([&] { return html().find("<P>") != std::string::npos; })) << html();
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("ctrl+s"));
  ASSERT_TRUE(wait_for([&] { return !window_->isWindowModified(); }));
  EXPECT_TRUE(file().contains("</table><p>")) << file().toStdString();
  EXPECT_TRUE(file().endsWith("</p>\n</body>\n</html>\n")) << file().toStdString();
}

TEST_F(TablesOnScreen, ShiftAndArrowsSelectByCells) {
  start(page);
  hands::click(place_of_character(named("b"), 3));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("End"));
  hands::press(QStringLiteral("shift+Down"));
  ASSERT_TRUE(wait_for([&] { return selected() == 2; }));
  hands::press(QStringLiteral("shift+Left"));
  ASSERT_TRUE(wait_for([&] { return selected() == 4; }));
  hands::press(QStringLiteral("shift+Up"));
  ASSERT_TRUE(wait_for([&] { return selected() == 2; }));
  EXPECT_TRUE(wait_for([&] { return drawn() == "2"; }));
  hands::press(QStringLiteral("Delete"));
  ASSERT_TRUE(wait_for([&] { return cells() == "  three four five six "; })) << cells();
}

TEST_F(TablesOnScreen, DownLeavesATableThatEndsThePage) {
  start("<p>text</p><table border=1><tbody><tr><td id=a>one</td><td id=b>two</td></tr></tbody></table>");
  hands::click(place_of_character(named("a"), 1));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Down"));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Up"));
  ASSERT_TRUE(settle());
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("document.querySelector('#a').innerText")) == "oxne";
  })) << html();
  hands::press(QStringLiteral("Down"));
  ASSERT_TRUE(settle());
  hands::type(QStringLiteral("after"));
  EXPECT_TRUE(wait_for([&] { return html().ends_with("</TABLE><P>after</P>"); })) << html();
}

TEST_F(TablesOnScreen, UpLeavesATableThatStartsThePage) {
  start(
      "<body><table border=1><tbody><tr><td id=a>one</td><td id=b>two</td></tr></tbody></table><p>text</p>");
  hands::click(place_of_character(named("b"), 1));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Up"));
  ASSERT_TRUE(settle());
  hands::type(QStringLiteral("before"));
  EXPECT_TRUE(wait_for([&] { return html().starts_with("<P>before</P><TABLE"); })) << html();
}

// In the column that the caret came from.
TEST_F(TablesOnScreen, DownStopsBetweenTwoTablesAndGoesOnBelow) {
  const QByteArray table = "<table border=1><tbody><tr><td>one</td><td id=%>two</td></tr></tbody></table>";
  start("<body>" + QByteArray(table).replace('%', 'a') + QByteArray(table).replace('%', 'b'));
  hands::click(place_of_character(named("a"), 1));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Down"));
  ASSERT_TRUE(settle());
  EXPECT_EQ(document().editor().selection().focus().node, document().tree().body());
  hands::press(QStringLiteral("Down"));
  ASSERT_TRUE(settle());
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("document.querySelector('#b').innerText")) == "txwo";
  })) << html();
}

// The engine took what may not be edited for lines, and the caret stayed in it.
TEST_F(TablesOnScreen, DownPassesWhatMayNotBeEditedAndRules) {
  start("<body><p id=a>one</p><div contenteditable=false>wide</div><hr><p id=b>two</p>");
  hands::click(place_of_character(named("a"), 1));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Down"));
  ASSERT_TRUE(settle());
  EXPECT_EQ(document().editor().selection().focus().node, document().tree().body())
      << "between island and rule";
  hands::press(QStringLiteral("Down"));
  ASSERT_TRUE(settle());
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(wait_for([&] { return html().ends_with("txwo</P>"); })) << html();
}

// The engine takes the start of the next cell for the end of the paragraph.
TEST_F(TablesOnScreen, ATriplePressTakesOneCell) {
  start(page);
  const QPoint at = place_of(named("b"), 0.5, 0.5);
  for (int i = 0; i < 3; ++i) hands::click(at);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for([&] { return !document().editor().selection().collapsed(); }));
  EXPECT_EQ(selected(), 0u);
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] { return cells() == "one x three four five six "; })) << cells();
}

TEST_F(TablesOnScreen, ButtonsActInEachSelectedCell) {
  start(page);
  drag_over("a", "d");
  ASSERT_TRUE(wait_for([&] { return selected() == 2; }));
  hands::click(middle_of(*toolbar_button(u"Bold")));
  ASSERT_TRUE(wait_for([&] { return html().find("<B>four</B>") != std::string::npos; })) << html();
  EXPECT_NE(html().find("<B>one</B>"), std::string::npos);
  EXPECT_EQ(html().find("<B>two"), std::string::npos) << html();
  EXPECT_EQ(selected(), 2u);
  hands::click(middle_of(*toolbar_button(u"unorderedlist")));
  ASSERT_TRUE(wait_for([&] { return html().find("<UL><LI><B>four</B></LI></UL>") != std::string::npos; }))
      << html();
}

// The cell between them in the tree is plain, and none of the selected ones.
TEST_F(TablesOnScreen, ButtonsStayPressedForAColumnOfCells) {
  start(page);
  drag_over("a", "d");
  ASSERT_TRUE(wait_for([&] { return selected() == 2; }));
  const auto is_pressed = [&](std::u16string_view key) {
    return qobject_cast<QAbstractButton*>(toolbar_button(key))->isChecked();
  };
  for (const std::u16string_view key : {u"Bold", u"Align Right", u"orderedlist"}) {
    EXPECT_FALSE(is_pressed(key)) << to_utf8(key);
    hands::click(middle_of(*toolbar_button(key)));
    EXPECT_TRUE(wait_for([&] { return is_pressed(key); })) << to_utf8(key) << html();
  }
  ASSERT_TRUE(settle());
  EXPECT_EQ(selected(), 2u);
  drag_over("a", "b");
  EXPECT_TRUE(wait_for([&] { return !is_pressed(u"Bold"); })) << "one of them is plain";
  EXPECT_FALSE(is_pressed(u"Align Right"));
  drag_over("d", "a");
  EXPECT_TRUE(wait_for([&] { return is_pressed(u"Bold"); })) << "from below as well";
  EXPECT_TRUE(is_pressed(u"Align Right"));
}

TEST_F(TablesOnScreen, TheMouseMenuChangesTheTableAtTheCell) {
  start(page);
  answer_menu([](QWidget& menu) { choose_below(menu, "mnuMiscTable", "mnuCellRowBelow"); });
  hands::click(place_of_character(named("b"), 1), 3);
  ASSERT_TRUE(wait_for(
      [&] { return in_page(QStringLiteral("String(document.querySelectorAll('tr').length)")) == "3"; }));
  ASSERT_TRUE(settle());
  hands::type(QStringLiteral("new"));
  ASSERT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("document.querySelectorAll('tr')[1].cells[1].innerText")) == "new";
  })) << html();
}

TEST_F(TablesOnScreen, TheWindowsMenuMergesSelectedCells) {
  start(page);
  drag_over("a", "b");
  ASSERT_TRUE(wait_for([&] { return selected() == 2; }));
  auto* menu = window_->findChild<QMenu*>(QStringLiteral("table"));
  ASSERT_NE(menu, nullptr);
  QMenuBar& bar = *window_->menuBar();
  hands::click(bar.mapToGlobal(bar.actionGeometry(menu->menuAction()).center()));
  ASSERT_TRUE(wait_for([&] { return menu->isVisible(); }));
  using Action = qt::HTMLedWidget::Action;
  EXPECT_FALSE(window_->editor().action(Action::SplitCell)->isEnabled());
  QAction* merge = window_->editor().action(Action::MergeCells);
  EXPECT_TRUE(merge->isEnabled());
  hands::click(menu->mapToGlobal(menu->actionGeometry(merge).center()));
  ASSERT_TRUE(wait_for([&] { return html().find("colspan=\"2\">one<BR>two</TD>") != std::string::npos; }))
      << html();
  hands::type(QStringLiteral("!"));
  ASSERT_TRUE(wait_for([&] { return html().find("one<BR>two!</TD>") != std::string::npos; })) << html();
}

}  // namespace
}  // namespace tvx::x11
