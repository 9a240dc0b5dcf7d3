#include "tvx/qt/source/code_assistance.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include "tvx/base/strings.h"
#include "tvx/qt/source/code_box.h"

namespace tvx::qt {
namespace {

class CodeAssistanceTest : public testing::Test {
 protected:
  CodeAssistanceTest() {
    window.resize(640, 400);
    box.widget()->resize(640, 400);
    box.assistance().set_on(true);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    box.SetFocus();
  }
  QPlainTextEdit& edit() { return *box.widget(); }
  void show(std::u16string_view text) {
    box.set_Text(text);
    settle();
  }
  void settle() {
    QApplication::processEvents();
    edit().viewport()->repaint();
  }
  /// The colour of a letter: 0 where it has none of its own.
  QRgb colour(int line, int column) {
    edit().viewport()->repaint();
    for (const auto& range : edit().document()->findBlockByNumber(line).layout()->formats())
      if (range.start <= column && column < range.start + range.length)
        return range.format.foreground().color().rgb();
    return 0;
  }
  /// The underlined stretches, once the source has been read.
  QStringList underlined() {
    QTest::qWait(400);
    QStringList all;
    for (const auto& mark : edit().extraSelections())
      if (mark.format.underlineStyle() == QTextCharFormat::WaveUnderline)
        all.append(mark.cursor.selectedText());
    return all;
  }
  QStringList matched() {
    QTest::qWait(400);
    QStringList all;
    for (const auto& mark : edit().extraSelections())
      if (mark.format.underlineStyle() == QTextCharFormat::NoUnderline)
        all.append(QStringLiteral("%1 %2").arg(mark.cursor.selectionStart()).arg(mark.cursor.selectedText()));
    return all;
  }
  std::string text() { return to_utf8(box.Text()); }
  QAbstractItemView& popup() { return *box.assistance().findChild<QCompleter*>()->popup(); }

  QWidget window;
  CodeBox box{&window};
};

TEST_F(CodeAssistanceTest, ATagAndItsValuesHaveColours) {
  show(u"<p class=\"x\">a</p>\n<!-- b -->");
  const QRgb tag = colour(0, 1), attribute = colour(0, 4), value = colour(0, 10), comment = colour(1, 6);
  EXPECT_NE(tag, 0u);
  EXPECT_NE(tag, attribute);
  EXPECT_NE(attribute, value);
  EXPECT_NE(comment, 0u);
  EXPECT_EQ(colour(0, 13), 0u) << "text has the box's own colour";
}

TEST_F(CodeAssistanceTest, AnEditColoursWhatItChangesLinesBelow) {
  show(u"a\n<b>c</b>\n<i>d</i>");
  const QRgb tag = colour(2, 1);
  box.select(0, 0);
  QTest::keyClicks(&edit(), "<!-- ");
  const QRgb comment = colour(2, 1);
  EXPECT_NE(comment, tag);
  EXPECT_EQ(colour(2, 3), comment) << "all of it is a comment now";
  while (box.can_undo()) box.Undo();
  EXPECT_EQ(colour(2, 1), tag);
}

TEST_F(CodeAssistanceTest, ColoursAreNoEditsAndNoKeyLaysOutOtherLines) {
  std::u16string lines;
  for (int i = 0; i < 30; ++i) lines += u"<p>some <b>words</b></p>\n";
  show(lines);
  EXPECT_FALSE(box.can_undo());
  int changed = 0;
  QObject::connect(edit().document(), &QTextDocument::contentsChange, &edit(),
                   [&](int, int, int added) { changed = std::max(changed, added); });
  box.select(40, 0);
  QTest::keyClick(&edit(), 'x');
  EXPECT_LE(changed, 60) << "one line's";
}

TEST_F(CodeAssistanceTest, OffItShowsPlainText) {
  box.assistance().set_on(false);
  show(u"<div>a</p>");
  EXPECT_EQ(colour(0, 1), 0u);
  EXPECT_TRUE(underlined().isEmpty());
  QTest::keyClicks(&edit(), "</");
  EXPECT_EQ(text(), "</<div>a</p>");
  EXPECT_FALSE(popup().isVisible());
}

TEST_F(CodeAssistanceTest, TagsThatDontFitAreUnderlinedAndSaid) {
  show(u"<div>a</b>\n<p>b");
  EXPECT_EQ(underlined(), (QStringList{QStringLiteral("<div>"), QStringLiteral("</b>")}));
  EXPECT_EQ(box.assistance().tip_at(2),
            QStringLiteral("<div> is never closed: it ends with the element around it"));
  EXPECT_EQ(box.assistance().tip_at(8), QStringLiteral("</b> closes nothing: it is passed over"));
  EXPECT_EQ(box.assistance().tip_at(12), QString());
}

TEST_F(CodeAssistanceTest, TheTagAtTheOtherEndIsMarked) {
  show(u"<div>a <b>b</b></div>");
  box.select(2, 0);
  EXPECT_EQ(matched(), (QStringList{QStringLiteral("1 div"), QStringLiteral("17 div")}));
  box.select(6, 0);
  EXPECT_TRUE(matched().isEmpty());
  show(u"f(a[1])");
  box.select(1, 0);
  EXPECT_EQ(matched(), (QStringList{QStringLiteral("1 ("), QStringLiteral("6 )")}));
}

TEST_F(CodeAssistanceTest, WhatIsOpenIsClosed) {
  show(u"<div><p>a");
  box.select(9, 0);
  QTest::keyClicks(&edit(), "</");
  EXPECT_EQ(text(), "<div><p>a</p>");
  QTest::keyClicks(&edit(), "</");
  EXPECT_EQ(text(), "<div><p>a</p></div>");
}

TEST_F(CodeAssistanceTest, AnEndTagTypedAsAWholeStandsThereOnce) {
  show(u"<div><p>a");
  box.select(9, 0);
  QTest::keyClicks(&edit(), "</p></DIV> b");
  EXPECT_EQ(text(), "<div><p>a</p></div> b");
  QTest::keyClicks(&edit(), "<i>c</");
  QTest::keyClicks(&edit(), "in text i>");
  EXPECT_EQ(text(), "<div><p>a</p></div> b<i>c</i>in text i>") << "something else is left alone";
}

TEST_F(CodeAssistanceTest, WhatAnotherElementHasEndedIsNotClosedAgain) {
  show(u"<div><p>a<ul><li>b</ul>");
  box.select(23, 0);
  QTest::keyClicks(&edit(), "</");
  EXPECT_EQ(text(), "<div><p>a<ul><li>b</ul></div>");
}

TEST_F(CodeAssistanceTest, NamesAreOfferedAndTaken) {
  show(u"");
  QTest::keyClicks(&edit(), "<blo");
  EXPECT_TRUE(popup().isVisible());
  QTest::keyClick(&edit(), Qt::Key_Return);
  EXPECT_EQ(text(), "<blockquote");
  EXPECT_FALSE(popup().isVisible());
  QTest::keyClicks(&edit(), " ci");
  QTest::keyClick(&edit(), Qt::Key_Tab);
  EXPECT_EQ(text(), "<blockquote cite=\"\"") << "with the quotes of its value, and the caret between them";
  QTest::keyClicks(&edit(), "a\"");
  EXPECT_EQ(text(), "<blockquote cite=\"a\"") << "whoever types the second quote has it once";
  QTest::keyClicks(&edit(), ">te");
  EXPECT_FALSE(popup().isVisible()) << "in text no name is written";
}

TEST_F(CodeAssistanceTest, AnAttributeThatSaysAllByItsNameHasNoQuotes) {
  show(u"");
  QTest::keyClicks(&edit(), "<input disa");
  QTest::keyClick(&edit(), Qt::Key_Return);
  EXPECT_EQ(text(), "<input disabled");
}

TEST_F(CodeAssistanceTest, AnAttributeThatHasItsValueGetsNoOther) {
  show(u"<p =\"x\">");
  box.select(3, 0);
  QTest::keyClicks(&edit(), "cla");
  QTest::keyClick(&edit(), Qt::Key_Return);
  EXPECT_EQ(text(), "<p class=\"x\">");
}

TEST_F(CodeAssistanceTest, CharactersAreOfferedByTheirNames) {
  show(u"");
  QTest::keyClicks(&edit(), "caf&ea");
  ASSERT_TRUE(popup().isVisible());
  QTest::keyClick(&edit(), Qt::Key_Return);
  EXPECT_EQ(text(), "caf&eacute;");
}

TEST_F(CodeAssistanceTest, LinesAreMadeCommentsAndWrittenOutAgain) {
  show(u"<p>one</p>\n  <p>two</p>");
  box.select(0, 20);
  QTest::keyClick(&edit(), Qt::Key_Slash, Qt::ControlModifier);
  EXPECT_EQ(text(), "<!-- <p>one</p> -->\r\n  <!-- <p>two</p> -->");
  QTest::keyClick(&edit(), Qt::Key_Slash, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(text(), "<p>one</p>\r\n  <p>two</p>");
  box.Undo();
  EXPECT_EQ(text(), "<!-- <p>one</p> -->\r\n  <!-- <p>two</p> -->") << "each is one step";
}

TEST_F(CodeAssistanceTest, TheCaretStaysOnItsLetterInALineThatBecomesAComment) {
  show(u"  <p>one</p>");
  box.select(6, 0);
  QTest::keyClick(&edit(), Qt::Key_Slash, Qt::ControlModifier);
  QTest::keyClicks(&edit(), "n");
  EXPECT_EQ(text(), "  <!-- <p>onne</p> -->");
  QTest::keyClick(&edit(), Qt::Key_Slash, Qt::ControlModifier);
  QTest::keyClicks(&edit(), "n");
  EXPECT_EQ(text(), "  <p>onnne</p>");
}

TEST_F(CodeAssistanceTest, TabMovesSelectedLines) {
  show(u"one\n\ntwo\nthree");
  box.select(1, 6);
  QTest::keyClick(&edit(), Qt::Key_Tab);
  EXPECT_EQ(text(), "\tone\r\n\r\n\ttwo\r\nthree");
  QTest::keyClick(&edit(), Qt::Key_Tab);
  EXPECT_EQ(text(), "\t\tone\r\n\r\n\t\ttwo\r\nthree");
  QTest::keyClick(&edit(), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(text(), "\tone\r\n\r\n\ttwo\r\nthree");
  box.Undo();
  EXPECT_EQ(text(), "\t\tone\r\n\r\n\t\ttwo\r\nthree") << "each is one step";
  show(u"one two");
  box.select(0, 3);
  QTest::keyClick(&edit(), Qt::Key_Tab);
  EXPECT_EQ(text(), "\t two") << "within a line Tab types";
}

}  // namespace
}  // namespace tvx::qt
