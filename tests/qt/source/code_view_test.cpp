#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QImage>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <ctime>
#include <iostream>

#include "tvx/base/strings.h"
#include "tvx/qt/source/code_view_face.h"
#include "tvx/qt/support/clipboard.h"
#include "tvx/source/code_view.h"

namespace tvx::qt {
namespace {

void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
  QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
  QApplication::sendEvent(widget, &down);
  QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
  QApplication::sendEvent(widget, &up);
}

class CodeViewFaceTest : public testing::Test, protected source::CodeViewEvents {
 protected:
  CodeViewFaceTest() {
    code.set_clipboard(&clipboard);
    code.set_events(this);
    window.resize(640, 400);
    face = new CodeViewFace(code, &window);
    face->setGeometry(0, 0, 640, 400);
    window.show();
  }
  ~CodeViewFaceTest() override {
    delete face;
    code.set_events(nullptr);
  }
  void Change() override { ++changes; }
  void KeyDown(std::int16_t& key, std::int16_t) override { keys.push_back(key); }
  void GotFocus() override { ++focused; }

  void show(std::u16string_view text) {
    code.set_Text(text);
    code.attachMessages();
    code.set_Visible(true);
    code.ZOrder(true);
    code.SetFocus();
    QApplication::processEvents();
  }
  QPlainTextEdit* box() { return face->text_box(); }
  void type(const QString& text) {
    for (const QChar c : text) press(box(), c.toUpper().unicode(), {}, c);
  }
  /// Numbers that stand dark, by looking at the pane's own pixels would be guessing: by the model's rows.
  std::vector<int> dark_lines() {
    std::vector<int> lines;
    for (const source::LineNumber& row : code.line_numbers())
      if (row.colour == source::colour_window_text) lines.push_back(int(row.number));
    return lines;
  }

  Clipboard clipboard;
  source::OrvelCV code;
  QWidget window;
  CodeViewFace* face;
  int changes = 0, focused = 0;
  std::vector<int> keys;
};

TEST_F(CodeViewFaceTest, ATextShowsInLinesThatDontWrap) {
  show(u"one\r\n" + std::u16string(5000, u'x') + u"\r\nthree");
  EXPECT_EQ(box()->blockCount(), 3);
  EXPECT_EQ(code.LineCount(), 3);
  EXPECT_EQ(box()->lineWrapMode(), QPlainTextEdit::NoWrap);
  EXPECT_TRUE(box()->isVisible());
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(code.Text().size(), 5012u);
}

TEST_F(CodeViewFaceTest, TypingTellsOfChangesAndUndoIsTheBoxs) {
  show(u"");
  type(u"ab"_qs);
  EXPECT_EQ(code.Text(), u"ab");
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(keys, (std::vector<int>{'A', 'B'}));
  press(box(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(code.Text(), u"");
  press(box(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(code.Text(), u"ab");
}

TEST_F(CodeViewFaceTest, TabTypesATabAndKeepsTheFocus) {
  show(u"");
  press(box(), Qt::Key_Tab, {}, u"\t"_qs);
  EXPECT_EQ(code.Text(), u"\t");
}

TEST_F(CodeViewFaceTest, TheClipboardHoldsPlainTextOnly) {
  show(u"<B>bold</B>\r\nx");
  press(box(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_TRUE(keys.empty()) << "consumed";
  press(box(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList{u"text/plain"_qs});
  EXPECT_EQ(clipboard.GetText(), u"<B>bold</B>\r\nx");
  press(box(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(code.Text(), u"");
}

TEST_F(CodeViewFaceTest, RichTextComesInByTheKeyAloneAsPlainText) {
  show(u"");
  auto* data = new QMimeData;
  data->setText(u"plain"_qs);
  data->setData(u"text/rtf"_qs, "{\\rtf1 rich}");
  QApplication::clipboard()->setMimeData(data);
  press(box(), Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(code.Text(), u"");
  press(box(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(code.Text(), u"plain");
}

TEST_F(CodeViewFaceTest, SelectedLinesStandDark) {
  show(u"1\n2\n3\n4\n5\n6\n7");
  EXPECT_EQ(dark_lines(), std::vector<int>{1});
  code.TextBox1().select(4, 5);
  EXPECT_EQ(dark_lines(), (std::vector<int>{3, 4, 5}));
  const QImage picture = face->pane()->grab().toImage();
  EXPECT_GT(picture.width(), 30);
}

TEST_F(CodeViewFaceTest, NumbersStandBesideTheirLines) {
  std::u16string text;
  for (int i = 0; i < 300; ++i) text += u"line\n";
  show(text);
  box()->verticalScrollBar()->setValue(120);
  QApplication::processEvents();
  EXPECT_EQ(code.FirstVisibleLine(), 120);
  EXPECT_EQ(code.line_numbers().front().number, 121);
  EXPECT_GE(code.line_numbers().size(), 20u);
}

TEST_F(CodeViewFaceTest, ThePaneGrowsWithTheNumbersAndStandsAtTheLeadingSide) {
  show(u"x");
  const int narrow = face->pane()->width();
  EXPECT_EQ(narrow, 32);
  EXPECT_EQ(face->pane()->x(), 0);
  show(std::u16string(200'000, u'\n'));
  EXPECT_GT(face->pane()->width(), narrow);
  face->setLayoutDirection(Qt::RightToLeft);
  QApplication::processEvents();
  EXPECT_EQ(face->pane()->geometry().right(), face->width() - 1);
  EXPECT_EQ(box()->x(), 0);
}

TEST_F(CodeViewFaceTest, TheFaceMayGoAndTheTextStays) {
  show(u"kept");
  type(u"x"_qs);
  delete face;
  EXPECT_EQ(code.Text(), u"xkept");
  EXPECT_TRUE(code.attached());
  face = new CodeViewFace(code, &window);
  EXPECT_EQ(code.Text(), u"xkept");
}

TEST_F(CodeViewFaceTest, NoBreakSpacesAndPairsComeBackAsTheyAre) {
  show(u"a\u00A0b\U0001F600");
  type(u"x"_qs);
  EXPECT_EQ(code.Text(), u"xa\u00A0b\U0001F600");
}

TEST_F(CodeViewFaceTest, ADisabledBoxTakesNoKeys) {
  show(u"x");
  code.set_Enabled(false);
  EXPECT_FALSE(box()->isEnabled());
  code.set_Enabled(true);
  code.set_Locked(true);
  type(u"y"_qs);
  EXPECT_EQ(code.Text(), u"x");
}

TEST_F(CodeViewFaceTest, ALockedTextIsSelectedAndCopiedByTheKeyboard) {
  show(u"one two");
  code.set_Locked(true);
  press(box(), Qt::Key_Right);
  press(box(), Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(code.TextBox1().SelStart(), 1u);
  EXPECT_EQ(code.TextBox1().SelText(), u"ne two");
  press(box(), Qt::Key_Delete);
  EXPECT_EQ(code.Text(), u"one two");
  code.set_Locked(false);
  press(box(), Qt::Key_Delete);
  EXPECT_EQ(code.Text(), u"o");
}

// What happens to one very long line: it is one layout, which each key makes again.
TEST_F(CodeViewFaceTest, ALargeSourceInOneLineOpens) {
  QElapsedTimer clock;
  clock.start();
  std::u16string text;
  while (text.size() < 1'000'000) text += u"<TD class=\"cell\">some words</TD>";
  show(text);
  box()->viewport()->repaint();
  const auto opened = clock.restart();
  type(u"x"_qs);
  box()->viewport()->repaint();
  std::cout << "1 MB in one line: open " << opened << " ms, key " << clock.elapsed() << " ms\n";
  EXPECT_EQ(code.Text().size(), text.size() + 1);
}

// Says what it measured; how fast is fast is not for a test to say.
TEST_F(CodeViewFaceTest, ALargeSourceOpensScrollsAndTakesKeys) {
  std::u16string text;
  for (int i = 0; text.size() < 10'000'000; ++i)
    text += u"    <TD class=\"cell\">number " + to_text(i) + u" and some words of text</TD>\r\n";
  QElapsedTimer clock;
  clock.start();
  const std::clock_t processor = std::clock();
  show(text);
  box()->viewport()->repaint();
  const auto opened_processor = 1000 * (std::clock() - processor) / CLOCKS_PER_SEC;
  const auto opened = clock.restart();
  for (int i = 0; i < 100; ++i) {
    box()->verticalScrollBar()->setValue(i * 1000);
    box()->viewport()->repaint();
    face->pane()->repaint();
  }
  const auto scrolled = clock.nsecsElapsed() / 100;
  code.TextBox1().select(text.size() / 2, 0);
  clock.restart();
  for (int i = 0; i < 100; ++i) {
    type(u"x"_qs);
    box()->viewport()->repaint();
    face->pane()->repaint();
  }
  const auto typed = clock.nsecsElapsed() / 100;
  clock.restart();
  const std::size_t length = code.Text().size();
  std::cout << "10 MB: open " << opened << " ms (processor " << opened_processor << "), scroll "
            << scrolled / 1e6 << " ms, key " << typed / 1e6 << " ms, read " << clock.elapsed() << " ms\n";
  EXPECT_EQ(length, text.size() + 100);
}

// Says what it measured. Each piece of a long line once took a copy of all that follows.
TEST_F(CodeViewFaceTest, ALineOfTenMegabytesIsPasted) {
  show(u"one\r\ntwo");
  const std::size_t length = 10'000'000;
  QApplication::clipboard()->setText(QString(int(length), u'<'));
  code.TextBox1().select(4, 0);  // a line's end counts as one
  QElapsedTimer clock;
  clock.start();
  box()->paste();
  QApplication::processEvents();
  box()->viewport()->repaint();
  const auto pasted = clock.restart();
  type(u"x"_qs);
  QApplication::processEvents();
  box()->viewport()->repaint();
  std::cout << "10 MB of \"<\" pasted: " << pasted << " ms, a key " << clock.elapsed() << " ms\n";
  const std::u16string text = code.Text();
  EXPECT_EQ(text.size(), length + 9);
  EXPECT_EQ(text.substr(0, 7), u"one\r\n<<");
  EXPECT_EQ(text.substr(text.size() - 6), u"<<xtwo");
  EXPECT_EQ(code.LineCount(), 2);
  EXPECT_GT(box()->blockCount(), 5000);
  code.TextBox1().Undo();
  code.TextBox1().Undo();
  EXPECT_EQ(code.Text(), u"one\r\ntwo");
}

// Breaks before, within and after what is put in stand where they belong.
TEST_F(CodeViewFaceTest, PiecesOfALongLineAreThoseOfItsText) {
  const std::u16string line(30'000, u'a');
  show(line + u"\r\n" + line);
  code.TextBox1().select(15'000, 0);
  QApplication::clipboard()->setText(QString(20'000, u'b') + u'\n' + QString(20'000, u'c'));
  box()->paste();
  QApplication::processEvents();
  const std::u16string half(15'000, u'a');
  const std::u16string wanted =
      half + std::u16string(20'000, u'b') + u"\r\n" + std::u16string(20'000, u'c') + half + u"\r\n" + line;
  EXPECT_TRUE(code.Text() == wanted);
  EXPECT_EQ(code.LineCount(), 3);
  for (QTextBlock block = box()->document()->begin(); block.isValid(); block = block.next())
    EXPECT_LE(block.length(), 2001) << block.blockNumber();
  // Typed in the midst of pieces and at their ends, and taken back; a line's end counts as one.
  for (const std::size_t at : {100u, 1000u, 20'000u, 34'999u, 35'001u, 50'000u, 100'000u}) {
    code.TextBox1().select(at, 0);
    type(u"x"_qs);
    std::u16string with = wanted;
    with.insert(at + (at > 35'000) + (at > 70'001), 1, u'x');
    EXPECT_TRUE(code.Text() == with) << at;
    code.TextBox1().select(at, 1);
    EXPECT_EQ(code.TextBox1().SelText(), u"x") << at;
    code.TextBox1().Undo();
  }
  EXPECT_TRUE(code.Text() == wanted);
}

}  // namespace
}  // namespace tvx::qt
