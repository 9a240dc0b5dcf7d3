#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "htmled/languages.h"
#include "tvx/dom/mutation.h"
#include "tvx/qt/web/web_view.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Page and source side by side, as a writer works in both: by keys and by mouse.
namespace tvx::x11 {
namespace {

class SplitOnScreen : public EditorOnScreen {
 protected:
  // What the View menu switches is kept for the next start.
  void TearDown() override {
    EditorOnScreen::TearDown();
    htmled::program_settings().remove(QStringLiteral("view"));
  }
  void split() {
    hands::press(QStringLiteral("shift+F9"));
    ASSERT_TRUE(wait_for([&] { return window_->editor().split_view() && source().isVisible(); }));
  }
  QPlainTextEdit& source() {
    return *window_->editor().findChild<QPlainTextEdit*>(QStringLiteral("sideTextBox"));
  }
  QWidget& handle() { return *window_->editor().findChild<QWidget*>(QStringLiteral("splitHandle")); }
  QWidget& page() { return *window_->editor().view().widget(); }
  bool source_has(const char* text) {
    return wait_for([&] { return source().toPlainText().contains(QString::fromLatin1(text)); });
  }
  bool page_is(const char* html_of_body) {
    return wait_for([&] { return html() == html_of_body; });
  }
  /// On the screen: before the first occurrence of a text in the source.
  QPoint place_in_source(const char* text) {
    const auto at = source().toPlainText().indexOf(QString::fromLatin1(text));
    QTextCursor cursor(source().document());
    cursor.setPosition(int(at));
    return source().viewport()->mapToGlobal(source().cursorRect(cursor).center());
  }
  static QByteArray long_page() {
    QByteArray page = "<!DOCTYPE html>";
    for (int i = 0; i < 200; ++i)
      page += "<p id=p" + QByteArray::number(i) + ">line " + QByteArray::number(i) + "</p>";
    return page;
  }
};

TEST_F(SplitOnScreen, EachSideFollowsTheOther) {
  start("<!DOCTYPE html><p id=a>one</p><p id=b>two</p>");
  split();
  EXPECT_TRUE(source_has("one"));
  hands::click(place_of_character(QStringLiteral("#b"), 0));
  hands::type(QStringLiteral("new "));
  EXPECT_TRUE(source_has("new two"));
  hands::click(place_in_source("one"));
  ASSERT_TRUE(wait_for([&] { return source().hasFocus(); }));
  hands::type(QStringLiteral("just "));
  EXPECT_TRUE(page_is("<P id=\"a\">just one</P><P id=\"b\">new two</P>")) << html();
  EXPECT_TRUE(wait_for(
      [&] { return in_page(QStringLiteral("document.getElementById('a').textContent")) == "just one"; }));
  EXPECT_TRUE(source().hasFocus());
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(page_is("<P id=\"a\">one</P><P id=\"b\">new two</P>")) << html();
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(page_is("<P id=\"a\">one</P><P id=\"b\">two</P>")) << html();
  EXPECT_FALSE(source().toPlainText().contains(QStringLiteral("new")));
  hands::press(QStringLiteral("ctrl+y"));
  EXPECT_TRUE(source_has("new two"));
}

TEST_F(SplitOnScreen, AnUnfinishedTagWaitsUntilItIsSaved) {
  start("<!DOCTYPE html><p>one</p>");
  split();
  hands::click(place_in_source("one"));
  ASSERT_TRUE(wait_for([&] { return source().hasFocus(); }));
  hands::type(QStringLiteral("<em>"));
  ASSERT_TRUE(source_has("<em>one"));
  for (int i = 0; i < 4; ++i) in_page(QStringLiteral("1"));
  EXPECT_EQ(html(), "<P>one</P>");
  EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  hands::press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file().contains("<em>one"); })) << file().toStdString();
}

TEST_F(SplitOnScreen, ThePlaceOfTheCaretIsShownOnTheOtherSide) {
  start(long_page());
  split();
  hands::press(QStringLiteral("ctrl+End"));
  EXPECT_TRUE(wait_for([&] {
    return source().textCursor().block().text().contains(QStringLiteral("line 199"));
  })) << source().textCursor().block().text().toStdString();
  EXPECT_TRUE(source().viewport()->rect().contains(source().cursorRect().center()));
  hands::click(source().viewport()->mapToGlobal(QPoint(60, 30)));
  ASSERT_TRUE(wait_for([&] { return source().hasFocus(); }));
  hands::press(QStringLiteral("ctrl+Home"));
  EXPECT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("(box => box.top >= 0 && box.bottom <= innerHeight)"
                                  "(document.getElementById('p0').getBoundingClientRect())")) == "true";
  })) << "the page goes along";
  EXPECT_TRUE(wait_for([&] { return in_page(QStringLiteral("tvxView.marked(3).join()")) == "line 0"; }))
      << in_page(QStringLiteral("tvxView.marked(3).join()"));
}

TEST_F(SplitOnScreen, TheSourceKeepsItsLinesWhileThePageIsTypedIn) {
  start(long_page());
  split();
  hands::press(QStringLiteral("ctrl+Home"));
  ASSERT_TRUE(settle());
  // Far from the caret, as somebody scrolls to read.
  ASSERT_TRUE(wait_for([&] { return source().verticalScrollBar()->maximum() > 100; }));
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(source_has("xline 0"));
  hands::click(place_in_source("xline 0") + QPoint(0, 0));
  ASSERT_TRUE(wait_for([&] { return source().hasFocus(); }));
  source().verticalScrollBar()->setValue(100);
  const QString top = source().cursorForPosition(QPoint(2, 2)).block().text();
  dom::replace_data(*dom::as<dom::Text>(document().body()->first_child()->first_child()), 0, 0, u"host\n");
  ASSERT_TRUE(source_has("host"));
  EXPECT_EQ(source().cursorForPosition(QPoint(2, 2)).block().text(), top);
}

TEST_F(SplitOnScreen, TheHandleIsDraggedAndItsPlaceKept) {
  start("<!DOCTYPE html><p>one</p>");
  window_->resize(1000, 700);
  split();
  const int before = page().width();
  const QPoint grip = middle_of(handle());
  hands::drag(grip, grip - QPoint(150, 0));
  EXPECT_TRUE(wait_for([&] { return page().width() < before - 100; })) << page().width();
  const int dragged = page().width();
  hands::press(QStringLiteral("shift+F9"));
  EXPECT_TRUE(wait_for([&] { return !source().isVisible() && page().width() > before; }));
  split();
  EXPECT_TRUE(wait_for([&] { return page().width() == dragged; })) << page().width();
}

TEST_F(SplitOnScreen, InANarrowWindowTheSourceStandsBelow) {
  start("<!DOCTYPE html><p>one</p>");
  window_->resize(560, 640);
  split();
  EXPECT_TRUE(wait_for([&] {
    return source().mapToGlobal(QPoint()).y() > page().mapToGlobal(QPoint(0, page().height())).y() - 1;
  }));
  const int before = page().height();
  const QPoint grip = middle_of(handle());
  hands::drag(grip, grip - QPoint(0, 60));
  EXPECT_TRUE(wait_for([&] { return page().height() < before - 40; }));
}

TEST_F(SplitOnScreen, FindingActsInTheSideWithTheKeys) {
  start("<!DOCTYPE html><p title=sought>sought</p>");
  split();
  hands::click(place_in_source("sought"));
  ASSERT_TRUE(wait_for([&] { return source().hasFocus(); }));
  hands::press(QStringLiteral("ctrl+f"));
  hands::type(QStringLiteral("sought"));
  EXPECT_TRUE(wait_for([&] { return control().FindCount() == 2; }));
  hands::press(QStringLiteral("Escape"));
  EXPECT_TRUE(wait_for([&] { return source().hasFocus(); })) << "the keys are the source's again";
  EXPECT_EQ(source().textCursor().selectedText(), QStringLiteral("sought"));
}

TEST_F(SplitOnScreen, F6GoesFromThePageToTheSourceAndTheCodeViewCoversBoth) {
  start("<!DOCTYPE html><p>one</p>");
  split();
  hands::press(QStringLiteral("F6"));
  EXPECT_TRUE(wait_for([&] { return source().hasFocus(); }));
  hands::type(QStringLiteral(" "));
  hands::press(QStringLiteral("F9"));
  EXPECT_TRUE(wait_for([&] { return control().InCodeView() && !source().isVisible(); }));
  hands::press(QStringLiteral("F9"));
  EXPECT_TRUE(wait_for([&] { return !control().InCodeView() && source().isVisible(); }));
}

TEST_F(SplitOnScreen, CutAndPasteOfTheMenuActInTheSource) {
  start("<!DOCTYPE html><p>one two</p>");
  split();
  hands::click(place_in_source("one"));
  ASSERT_TRUE(wait_for([&] { return source().hasFocus(); }));
  hands::press({QStringLiteral("shift+Right"), QStringLiteral("shift+Right"), QStringLiteral("shift+Right")});
  hands::press(QStringLiteral("ctrl+x"));
  EXPECT_TRUE(wait_for([&] { return html() == "<P>two</P>" || html() == "<P> two</P>"; })) << html();
  hands::press(QStringLiteral("ctrl+v"));
  EXPECT_TRUE(page_is("<P>one two</P>")) << html();
}

}  // namespace
}  // namespace tvx::x11
