#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QToolButton>

#include "htmled/find_bar.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Finding and replacing as a writer does it: by keys, in the page and in the code.
namespace tvx::x11 {
namespace {

class FindOnScreen : public EditorOnScreen {
 protected:
  QWidget& bar() { return *window_->findChild<htmled::FindBar*>(); }
  template <class Widget>
  Widget& part(const char* name) {
    return *bar().findChild<Widget*>(QString::fromLatin1(name));
  }
  bool counts(const char* count) {
    return wait_for([&] { return part<QLabel>("count").text() == QString::fromLatin1(count); });
  }
  /// Opens the bar and types what to look for.
  void find(const char* keys, const char* text) {
    hands::press(QString::fromLatin1(keys));
    ASSERT_TRUE(wait_for([&] { return bar().isVisible() && part<QLineEdit>("sought").hasFocus(); }));
    hands::type(QString::fromLatin1(text));
  }
  std::string marked(int kind) { return in_page(QStringLiteral("tvxView.marked(%1).join()").arg(kind)); }
  static QByteArray long_page() {
    QByteArray page = "<!DOCTYPE html>";
    for (int i = 0; i < 200; ++i) page += "<p>line</p>";
    return page + "<p id=here>needle</p>";
  }
  bool last_line_is_in_sight() {
    return in_page(QStringLiteral("(box => box.top >= 0 && box.bottom <= innerHeight)"
                                  "(document.getElementById('here').getBoundingClientRect())")) == "true";
  }
  std::string selected() { return to_utf8(dom::inner_text(document().editor().selection().range())); }
  QPlainTextEdit& code() { return *window_->findChild<QPlainTextEdit*>(QStringLiteral("TextBox1")); }
};

TEST_F(FindOnScreen, HitsAreMarkedAsTheyAreTyped) {
  start("<!DOCTYPE html><p>one two</p><p>t<b>w</b>o three</p>");
  find("ctrl+f", "two");
  EXPECT_TRUE(counts("1 of 2"));
  EXPECT_TRUE(wait_for([&] { return marked(2) == "two" && marked(1) == "t,w,o"; }))
      << marked(2) << "; " << marked(1);
  hands::press(QStringLiteral("F3"));
  EXPECT_TRUE(counts("2 of 2"));
  EXPECT_TRUE(wait_for([&] { return marked(2) == "t,w,o" && marked(1) == "two"; }))
      << marked(2) << "; " << marked(1);
  hands::press(QStringLiteral("shift+Return"));
  EXPECT_TRUE(counts("1 of 2"));
  hands::press(QStringLiteral("Escape"));
  EXPECT_TRUE(wait_for([&] { return !bar().isVisible() && marked(2).empty() && marked(1).empty(); }));
  EXPECT_EQ(selected(), "two");
  hands::type(QStringLiteral("2"));
  EXPECT_TRUE(wait_for([&] {
    return text() == "one 2two three" || html().find("one 2<") != std::string::npos;
  })) << html()
      << ": the keys are the page's again";
}

TEST_F(FindOnScreen, AHitOutOfSightComesIntoSight) {
  start(long_page());
  find("ctrl+f", "needle");
  EXPECT_TRUE(counts("1 of 1"));
  EXPECT_TRUE(wait_for([&] { return last_line_is_in_sight(); }));
}

TEST_F(FindOnScreen, TheBarCoversNoLineThatTheCaretIsIn) {
  start(long_page());
  hands::press(QStringLiteral("ctrl+End"));
  ASSERT_TRUE(wait_for([&] { return last_line_is_in_sight(); }));
  const std::string before = in_page(QStringLiteral("innerHeight"));
  hands::press(QStringLiteral("ctrl+h"));
  ASSERT_TRUE(
      wait_for([&] { return bar().isVisible() && in_page(QStringLiteral("innerHeight")) != before; }));
  EXPECT_TRUE(wait_for([&] { return last_line_is_in_sight(); }));
}

TEST_F(FindOnScreen, AllAreReplacedAndTakenBackByOneKey) {
  start("<!DOCTYPE html><p>one two one</p>");
  find("ctrl+h", "one");
  EXPECT_TRUE(counts("1 of 2"));
  hands::press(QStringLiteral("Tab"));
  hands::type(QStringLiteral("1"));
  hands::press(QStringLiteral("Return"));
  EXPECT_TRUE(wait_for([&] { return html() == "<P>1 two one</P>"; })) << html();
  hands::click(middle_of(part<QWidget>("replaceAll")));
  EXPECT_TRUE(wait_for([&] { return html() == "<P>1 two 1</P>"; })) << html();
  hands::press(QStringLiteral("Escape"));
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return html() == "<P>1 two one</P>"; })) << html();
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return html() == "<P>one two one</P>"; })) << html();
}

TEST_F(FindOnScreen, TheCountFollowsThePage) {
  start("<!DOCTYPE html><p>one</p>");
  find("ctrl+f", "one");
  EXPECT_TRUE(counts("1 of 1"));
  hands::click(place_of(QStringLiteral("p"), 0.9, 0.5));
  hands::press(QStringLiteral("End"));
  hands::type(QStringLiteral(" one"));
  EXPECT_TRUE(counts("Hits: 2")) << part<QLabel>("count").text().toStdString();
}

TEST_F(FindOnScreen, TheCodeIsSearchedByTheSameBar) {
  start("<!DOCTYPE html><p>one</p><p>one</p>");
  control().show_Code();
  ASSERT_TRUE(wait_for([&] { return code().hasFocus(); }));
  hands::press(QStringLiteral("ctrl+Home"));
  ASSERT_TRUE(wait_for([&] { return code().textCursor().position() == 0; }));
  find("ctrl+f", "<p");
  EXPECT_TRUE(counts("1 of 2"));
  EXPECT_EQ(code().textCursor().selectedText(), QStringLiteral("<P"));
  EXPECT_EQ(code().extraSelections().size(), 2);
  hands::press(QStringLiteral("Return"));
  EXPECT_TRUE(counts("2 of 2"));
}

/// The other view begins where this one was left.
class ViewsOnScreen : public FindOnScreen {};

TEST_F(ViewsOnScreen, TheCaretIsKeptOverTheSwitch) {
  start("<!DOCTYPE html><p>one</p><p>two <b>three</b></p>");
  hands::click(place_of_character(QStringLiteral("b"), 2));
  ASSERT_TRUE(
      wait_for([&] { return selected().empty() && document().editor().selection().focus().offset == 2; }));
  control().show_Code();
  EXPECT_TRUE(wait_for([&] { return code().hasFocus(); }));
  QTextCursor before = code().textCursor();
  before.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
  EXPECT_EQ(before.selectedText(), QStringLiteral("<P>two <B>th"));
  hands::press(QStringLiteral("Up"));
  hands::press(QStringLiteral("Home"));
  hands::press(QStringLiteral("Right"));
  hands::press(QStringLiteral("Right"));
  hands::press(QStringLiteral("Right"));
  hands::press(QStringLiteral("Right"));
  ASSERT_TRUE(wait_for([&] { return code().textCursor().position() == 4; }));
  control().show_Code();
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(wait_for([&] { return html().find("oxne") != std::string::npos; })) << html();
}

TEST_F(ViewsOnScreen, LinesOfTheCodeAreFoundAgain) {
  QByteArray page = "<!DOCTYPE html>";
  for (int i = 0; i < 300; ++i) page += "<p>line " + QByteArray::number(i) + "</p>";
  start(page);
  control().show_Code();
  ASSERT_TRUE(wait_for([&] { return code().hasFocus(); }));
  window_->editor().go_to_code_line(200);
  const int scrolled = code().verticalScrollBar()->value(), at = code().textCursor().position();
  EXPECT_GT(scrolled, 100);
  control().show_Code();
  EXPECT_TRUE(settle());
  control().show_Code();
  EXPECT_TRUE(wait_for([&] { return code().verticalScrollBar()->value() == scrolled; }))
      << code().verticalScrollBar()->value();
  EXPECT_EQ(code().textCursor().position(), at);
}

}  // namespace
}  // namespace tvx::x11
