#include "qt/newcomer.h"

#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>

namespace tvx::htmled {
namespace {

using qt::to_qt;

TEST_F(Newcomer, TypesSelectsByMouseAndFormats) {
  ASSERT_TRUE(window_.start({}));
  settle();
  open(u"<P>x</P>");
  press(place_of(QStringLiteral("p"), 0));
  type(QStringLiteral("Hello wonderful world "));
  EXPECT_EQ(html(), "<P>Hello wonderful world x</P>");
  drag(place_of(QStringLiteral("p"), 6), place_of(QStringLiteral("p"), 15));
  click_button(10);
  EXPECT_EQ(html(), "<P>Hello <B>wonderful</B> world x</P>");
  EXPECT_EQ(control().Toolbar1().Item(10).Value(), 1);
  click_button(21);
  EXPECT_EQ(html(), "<P>Hello wonderful world x</P>");
  click_button(22);
  EXPECT_EQ(html(), "<P>Hello <B>wonderful</B> world x</P>");
  EXPECT_TRUE(window_.isWindowModified());
  expect_well_formed();
}

TEST_F(Newcomer, PressesEachButtonOnce) {
  ASSERT_TRUE(window_.start({}));
  settle();
  for (int index = 1; index <= 29; ++index) {
    const platform::Button& button = control().Toolbar1().Item(index);
    if (button.Style() == platform::ButtonStyle::Separator) continue;
    open(u"<P>some words</P><P>more</P>");
    select_all();
    if (index == 18) {
      EXPECT_FALSE(button.Visible()) << "Find is never to be seen";
      continue;
    }
    SCOPED_TRACE(to_utf8(button.Key()));
    click_button(index);
    if (control().InCodeView()) click_button(1);
    EXPECT_FALSE(control().InCodeView());
    settle();
    expect_well_formed();
    if (index >= 10 && index <= 13) {
      EXPECT_EQ(button.Value(), 1);
    }
    if (button.Key() == u"orderedlist") {
      EXPECT_EQ(html(), "<OL><LI>some words</LI><LI>more</LI></OL>");
    } else if (button.Key() == u"Center") {
      EXPECT_NE(html().find("center"), std::string::npos) << html();
    } else if (button.Key() == u"Bold") {
      EXPECT_EQ(html(), "<P><B>some words</B></P><P><B>more</B></P>");
    }
  }
}

TEST_F(Newcomer, OpensEachMenuAndChoosesEachItem) {
  ASSERT_TRUE(window_.start({}));
  settle();
  const std::u16string page =
      u"<P>some <A href=\"a.html\">linked</A> words</P><TABLE border=\"9\" "
      u"cellspacing=\"9\"><TBODY><TR><TD>cell"
      u"</TD></TR></TBODY></TABLE><P><IMG src=\"data:,\" width=\"60\" height=\"60\"></P>";
  const struct {
    const char* selector;
    const char* menu;
  } places[] = {{"p", "mnuMisc"}, {"a", "mnuLinks"}, {"img", "mnuImg"}, {"td", "mnuMisc"}};
  for (const auto& [selector, name] : places) {
    open(page);
    right_press(QString::fromLatin1(selector), {});
    EXPECT_EQ(popup_, QString::fromLatin1(name)) << selector;
    std::vector<QString> items;
    for (platform::Menu* item : platform::all_items(*control().menu(popup_.toStdU16String())))
      if (!item->is_separator() && item->Visible() && item->items().empty())
        items.push_back(to_qt(platform::name_with_index(*item)));
    EXPECT_FALSE(items.empty()) << selector;
    for (const QString& item : items) {
      SCOPED_TRACE(item.toStdString());
      open(page);
      right_press(QString::fromLatin1(selector), item);
      if (control().InCodeView()) click_button(1);
      settle();
      expect_well_formed();
      if (item == QStringLiteral("mnuLinkRemove")) {
        EXPECT_EQ(html().find("<A "), std::string::npos);
        EXPECT_NE(html().find("some linked words"), std::string::npos);
      }
    }
  }
}

TEST_F(Newcomer, FollowsTheElementPath) {
  ASSERT_TRUE(window_.start({}));
  settle();
  open(u"<BLOCKQUOTE><P>one <B>two</B></P></BLOCKQUOTE>");
  press(place_of(QStringLiteral("b"), 1));
  auto* bar = window_.editor().findChild<qt::BranchFace*>(QStringLiteral("tlbDOM"));
  ASSERT_NE(bar, nullptr);
  ASSERT_NE(bar->button_widget(3), nullptr);
  in_popup({});
  click(bar->button_widget(1));
  EXPECT_EQ(popup_, QStringLiteral("mnuToolProp"));
  EXPECT_TRUE(control().highlightElement()->is(dom::Tag::Blockquote));
  settle();
  EXPECT_EQ(ask_page(QStringLiteral("document.querySelector('blockquote').style.borderStyle")), "dashed");
  press(place_of(QStringLiteral("b"), 1));
  EXPECT_EQ(html(), "<BLOCKQUOTE><P>one <B>two</B></P></BLOCKQUOTE>");
  EXPECT_EQ(ask_page(QStringLiteral("document.querySelector('blockquote').style.borderStyle")), "");
}

TEST_F(Newcomer, OpensTheTablesMenuOnItsEdge) {
  ASSERT_TRUE(window_.start({}));
  settle();
  open(u"<TABLE border=\"9\" width=\"300\"><TBODY><TR><TD>one</TD></TR></TBODY></TABLE>");
  in_popup({});
  press(corner_of(QStringLiteral("table")) + QPoint(4, 20), Qt::RightButton);
  ASSERT_TRUE(wait_for([&] { return !popup_.isEmpty() && !QApplication::activePopupWidget(); }, 3000));
  EXPECT_EQ(popup_, QStringLiteral("mnuT"));
}

TEST_F(Newcomer, GoesRoundWithF6AndBack) {
  ASSERT_TRUE(window_.start({}));
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  settle();
  open(u"<P>some words</P>");
  press(place_of(QStringLiteral("p"), 4));
  focus_document();
  const auto walk = [this](Qt::KeyboardModifiers held) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, held);
    return pane_with_focus();
  };
  EXPECT_EQ(walk({}), "Toolbar1");
  EXPECT_EQ(walk({}), "tlbDOM");
  EXPECT_EQ(walk({}), "document");
  EXPECT_EQ(walk(Qt::ShiftModifier), "tlbDOM");
  EXPECT_EQ(walk(Qt::ShiftModifier), "Toolbar1");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(pane_with_focus(), "document");
  type(QStringLiteral("X"));
  EXPECT_EQ(html(), "<P>someX words</P>") << "the caret has stayed";
}

TEST_F(Newcomer, RevertsAndConfirms) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("page.html")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("<P>original</P>") > 0);
  file.close();
  ASSERT_TRUE(window_.start(file.fileName()));
  settle();
  press(place_of(QStringLiteral("p"), 3));
  type(QStringLiteral("XYZ"));
  ASSERT_EQ(html(), "<P>oriXYZginal</P>");
  answer_ = [](QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr);
    click(box->button(QMessageBox::Discard));
  };
  right_press(QStringLiteral("p"), QStringLiteral("mnuMiscRevert"));
  ASSERT_TRUE(wait_for([&] { return html() == "<P>original</P>"; }, 3000)) << html();
  EXPECT_EQ(dialogs_, 1);
}

}  // namespace
}  // namespace tvx::htmled
