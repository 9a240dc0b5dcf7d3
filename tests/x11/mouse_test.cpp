#include <QFile>

#include "tvx/browser/view/document_view.h"
#include "tvx/qt/web/web_view.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"
#include "x11/x_display.h"

/// Whatever the real mouse changes marks the window changed, and the window asks before it closes.
namespace tvx::x11 {
namespace {

class MouseOnScreen : public EditorOnScreen {
 protected:
  /// The document has become another, and nobody loses that unasked.
  void expect_changed(const std::string& before) {
    ASSERT_TRUE(wait_for([&] { return html() != before; })) << html();
    EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); })) << html();
    EXPECT_TRUE(closing_asks());
  }
};

// A picture of one point.
const QByteArray image =
    "<img style='border:0' width=100 height=80 "
    "src='data:image/gif;base64,R0lGODlhAQABAIAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICRAEAOw=='>";

TEST_F(MouseOnScreen, SizingAnImageByItsHandle) {
  start("<body style='margin:20px'><p>" + image + "</p><p>Text</p>");
  const std::string before = html();
  hands::click(place_of(QStringLiteral("img"), 0.5, 0.5));
  ASSERT_TRUE(wait_for([&] { return document().editor().selection().control() != nullptr; }));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_->isWindowModified()) << "to select is no change";
  ASSERT_TRUE(
      wait_for([&] { return in_page(QStringLiteral("String(Boolean(tvxView.drawn().frame))")) == "true"; }));
  const QPoint corner = place_of(QStringLiteral("img"), 1, 1);
  ASSERT_NE(before.find("width=\"100\" height=\"80\""), std::string::npos) << before;
  hands::drag(corner, corner + QPoint(50, 40));
  expect_changed(before);
  EXPECT_EQ(html().find("width=\"100\""), std::string::npos) << html();
  EXPECT_EQ(html().find("height=\"80\""), std::string::npos) << html();
}

TEST_F(MouseOnScreen, WhatIsTypedAfterALinkedPictureIsNoLink) {
  start("<body style='margin:20px'><p><a href='http://a.b/'>" + image + "</a></p>");
  hands::click(place_of(QStringLiteral("img"), 0.5, 0.5));
  ASSERT_TRUE(wait_for([&] { return document().editor().selection().control() != nullptr; }));
  hands::press(QStringLiteral("Right"));
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(wait_for([&] { return html().find("</A>x</P>") != std::string::npos; })) << html();
}

TEST_F(MouseOnScreen, ASelectedPictureIsCentredByItsParagraph) {
  start("<body style='margin:20px'>\n<p>" + image + "</p>\n<p>Text</p>\n");
  hands::click(place_of(QStringLiteral("img"), 0.5, 0.5));
  ASSERT_TRUE(wait_for([&] { return document().editor().selection().control() != nullptr; }));
  hands::click(middle_of(*toolbar_button(u"Center")));
  EXPECT_TRUE(wait_for([&] { return html().starts_with("\n<P style=\"text-align: center\"><IMG"); }))
      << html();
}

TEST_F(MouseOnScreen, DraggingText) {
  start("<body style='margin:20px'><p id=a>one two three</p><p id=b>other</p>");
  const std::string before = html();
  for (int i = 0; i < 4; ++i) hands::press(QStringLiteral("Right"));
  for (int i = 0; i < 3; ++i) hands::press(QStringLiteral("shift+Right"));
  ASSERT_TRUE(wait_for([&] { return in_page(QStringLiteral("String(getSelection())")) == "two"; }));
  ASSERT_TRUE(wait_for([&] { return !document().editor().selection().collapsed(); }));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_->isWindowModified()) << "to select is no change";
  hands::drag(place_of_character(QStringLiteral("#a"), 6), place_of_character(QStringLiteral("#b"), 2));
  expect_changed(before);
  EXPECT_EQ(text().find("two"), text().rfind("two")) << text();
  EXPECT_NE(text().find("ottwo"), std::string::npos) << text();
}

TEST_F(MouseOnScreen, MovingAColumnsEdge) {
  start("<body style='margin:20px'><table border=1 width=400><tr><td id=a width=200>one<td id=b>two</table>");
  const std::string before = html();
  ASSERT_NE(before.find("width=\"200\""), std::string::npos) << before;
  const QPoint edge = place_of(QStringLiteral("#a"), 1, 0.5);
  hands::move(edge);
  hands::drag(edge, edge + QPoint(60, 0));
  expect_changed(before);
  EXPECT_EQ(html().find("width=\"200\""), std::string::npos) << html();
}

/// A page that takes a while to come in: its number of paragraphs, and a last one.
class LongPageOnScreen : public MouseOnScreen {
 protected:
  void open_long_page() {
    start("<p>short");
    QByteArray page = "<!DOCTYPE html><title>long</title>";
    for (int i = 0; i < paragraphs; ++i)
      page += "<p id=p" + QByteArray::number(i) + ">A paragraph <b>that</b> has <i>some</i> words.\n";
    page += "<p id=last>The end";
    QFile out(path_of(QStringLiteral("long.html")));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(page) == page.size());
    out.close();
    ASSERT_TRUE(window_->open(out.fileName()));
    ASSERT_TRUE(wait_for([&] { return view().filled(); }));
    ASSERT_TRUE(wait_for([&] {
      return in_page(QStringLiteral("String(innerHeight < document.scrollingElement.scrollHeight / 100)")) ==
             "true";
    })) << "the bar doesn't know of what is to come";
    bar_ = place_of(QStringLiteral("html"), 1, 0) + QPoint(6, 0);
  }
  const browser::DocumentView& view() const { return window_->editor().document_view(); }
  int height() const { return window_->editor().view().input_widget()->height(); }
  bool end_is_seen() {
    return in_page(QStringLiteral(
               "(() => { const last = document.querySelector('#last'); return String(Boolean(last) && "
               "last.getBoundingClientRect().top < innerHeight && last.getBoundingClientRect().top > 0); "
               "})()")) == "true";
  }
  /// The number of the paragraph in the middle of the window; -1 where there is none.
  int seen_paragraph() {
    return std::stoi(in_page(QStringLiteral(
        "(() => { const seen = [0, 12, 24].map((y) => document.elementFromPoint(innerWidth / 2, innerHeight "
        "/ 2 + y).closest('p')).find(Boolean); return seen ? seen.id.slice(1) : '-1'; })()")));
  }

  /// However long that takes.
  void wait_for_the_rest() {
    for (int tries = 0; tries < 10 && !view().settled(); ++tries) wait_for([&] { return view().settled(); });
    ASSERT_TRUE(view().settled());
  }
  /// Where the page stands, for who reads of a failure.
  std::string position() {
    return in_page(
        QStringLiteral("[scrollY, document.scrollingElement.scrollHeight, innerHeight, "
                       "document.documentElement.getBoundingClientRect().top].join()"));
  }

  static constexpr int paragraphs = 40'000;
  QPoint bar_;  // the upper end; there is an arrow, and then its handle
};

// The rest of a long page comes in meanwhile, which nobody waits for who wants to see its end.
TEST_F(LongPageOnScreen, TheScrollBarsEndIsThePagesWhileThatIsComing) {
  ASSERT_NO_FATAL_FAILURE(open_long_page());
  hands::drag(bar_ + QPoint(0, 25), bar_ + QPoint(0, height()));
  EXPECT_TRUE(wait_for([&] { return end_is_seen(); })) << position();
  ASSERT_FALSE(view().settled()) << "all is there already: this says nothing";
  wait_for_the_rest();
  EXPECT_TRUE(end_is_seen()) << "what comes in above it moves it out of sight";
}

TEST_F(LongPageOnScreen, TheScrollBarsMiddleIsThePagesWhileThatIsComing) {
  ASSERT_NO_FATAL_FAILURE(open_long_page());
  hands::drag(bar_ + QPoint(0, 25), bar_ + QPoint(0, height() / 2));
  EXPECT_TRUE(wait_for([&] { return std::abs(seen_paragraph() - paragraphs / 2) < paragraphs / 10; }))
      << position();
  ASSERT_FALSE(view().settled()) << "all is there already: this says nothing";
  const int seen = seen_paragraph();
  wait_for_the_rest();
  EXPECT_LT(std::abs(seen_paragraph() - seen), 20) << "what comes in above it moves it out of sight";
}

TEST_F(MouseOnScreen, PastingByAMiddlePress) {
  start("<body style='margin:20px'><p id=a>one two</p>");
  const std::string before = html();
  offer("new", QStringLiteral("UTF8_STRING"), QStringLiteral("primary"));
  hands::click(place_of_character(QStringLiteral("#a"), 4), 2);
  expect_changed(before);
  EXPECT_EQ(text(), "one newtwo");
}

}  // namespace
}  // namespace tvx::x11
