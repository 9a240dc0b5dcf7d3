#include <QApplication>
#include <QFile>
#include <QImage>
#include <QMouseEvent>
#include <QRegularExpression>

#include "qt/real_view.h"
#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::qt {
namespace {

TEST_F(RealView, ShowsADocument) {
  open(
      u"<!DOCTYPE html><title>t</title><p id=a class=\"x y\">One <b>two</b><!-- note --><p>three<o:p></o:p>"
      u"<svg viewBox='0 0 1 1'><path d='M0 0'/></svg>");
  EXPECT_EQ(shown(), expected());
  EXPECT_EQ(in_page("document.compatMode"), "CSS1Compat");
  EXPECT_EQ(in_page("document.querySelector('p').offsetHeight > 10 ? 'laid out' : 'not'"), "laid out");
}

/// The names of what the view's scripts ask of an element, as dom.js takes them.
QStringList names_taken() {
  QFile file(QStringLiteral(TVX_SOURCE_DIR "/src/qt/web/view/dom.js"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  static const QRegularExpression taken(QStringLiteral("taken\\(\\w+\\.prototype, '(\\w+)'\\)"));
  QStringList names{QStringLiteral("remove"), QStringLiteral("append")};
  for (auto found = taken.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext();)
    names << found.next().captured(1);
  return names;
}

TEST_F(RealView, AFormWhoseControlsAreNamedLikeMethodsIsEditedLikeOthers) {
  const QStringList names = names_taken();
  ASSERT_GT(names.size(), 25);
  QString page = QStringLiteral("<!DOCTYPE html><form><p>text</p>");
  for (const QString& name : names)
    page += QStringLiteral("<input name=%1><img name=%1 alt=x>")
                .arg(name);  // an image hides the document's names
  open((page + QStringLiteral("</form><p>after</p>")).toStdU16String());
  EXPECT_EQ(shown(), expected());
  dom::Element* form = element(dom::Tag::Form);
  ASSERT_NE(form, nullptr);
  post_press({14, 25});  // in the first word
  post_text("typed");
  ASSERT_TRUE(settle());
  EXPECT_EQ(html().find("typed"), html().find("ext</P>") - 5) << html().substr(0, 100);
  const dom::Ref<dom::Node> paragraph = form->first_child();
  dom::set_attribute(*form, dom::Name(u"action"), u"x");
  dom::remove(*paragraph);
  ASSERT_TRUE(settle());
  EXPECT_EQ(shown(), expected());
  dom::insert(*form, paragraph, nullptr);
  ASSERT_TRUE(settle());
  EXPECT_EQ(shown(), expected());
  dom::remove(*form);
  ASSERT_TRUE(settle());
  EXPECT_EQ(shown(), expected());
}

TEST_F(RealView, TypesWhatIsTyped) {
  open(u"<!DOCTYPE html><p>abc</p>");
  document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 1});
  post_text("xyz");
  ASSERT_TRUE(wait_for([&] { return html() == "<P>axyzbc</P>"; }, 3000)) << html();
  ASSERT_TRUE(settle());
  EXPECT_EQ(shown(), expected());
}

TEST_F(RealView, APressFollowedAtOnceByAKeyWritesAtTheNewCaret) {
  open(u"<!DOCTYPE html><p>first words</p><p>second words</p>");
  const QPoint point = place_of("p + p", 6);
  for (int i = 0; i < 5; ++i) {
    post_press(i % 2 ? place_of("p", 0) : point);
    post_text(i % 2 ? "a" : "b");
  }
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>aafirst words</P><P>secondbbb words</P>");
  EXPECT_EQ(shown(), expected());
}

TEST_F(RealView, TheCaretIsSeenOnLightAndOnDarkGround) {
  const int flash_time = QApplication::cursorFlashTime();
  QApplication::setCursorFlashTime(0);  // nor does it blink for who doesn't want that
  for (const std::u16string style :
       {u"", u"background: #000; color: #eee", u"background: #777; color: #fff"}) {
    open(u"<!DOCTYPE html><body style=\"" + style + u"\"><p>one two</p>");
    document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 3});
    ASSERT_TRUE(settle());
    ASSERT_TRUE(wait_for_drawn("caret"));
    int x = 0, y = 0, width = 0, height = 0;
    ASSERT_EQ(std::sscanf(in_page("tvxView.drawn().caret.join(' ')").c_str(), "%d %d %d %d", &x, &y, &width,
                          &height),
              4);
    const auto differs = [&] {
      const QImage picture = window_->grab().toImage();
      const int row = y + height - 2;
      const QRgb at = picture.pixel(x, row), beside = picture.pixel(x + 4, row);
      return std::abs(qGray(at) - qGray(beside)) > 90;
    };
    EXPECT_TRUE(wait_for(differs, 3000)) << to_utf8(style);
  }
  QApplication::setCursorFlashTime(flash_time);
}

// It was drawn at the start of the line.
TEST_F(RealView, TheCaretInAnEmptyTextIsBesideThePicture) {
  open(u"<!DOCTYPE html><body style=\"margin: 0\"><p><img width=60 height=40></p>");
  dom::Node& line = *document_->body()->first_child();
  const dom::Ref<dom::Text> text = document_->tree().create_text(u"");
  dom::insert(line, text);
  document_->editor().selection().collapse({text.get(), 0});
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for_drawn("caret"));
  EXPECT_TRUE(wait_for([&] { return std::stoi(in_page("String(tvxView.drawn().caret[0])")) >= 58; }, 10'000))
      << in_page("tvxView.drawn().caret.join(' ')");
}

TEST_F(RealView, TheCaretGoesAndComes) {
  const int flash_time = QApplication::cursorFlashTime();
  QApplication::setCursorFlashTime(240);
  open(u"<!DOCTYPE html><p>one two</p>");
  document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 3});
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for_drawn("caret"));
  const auto seen = [&] { return in_page("String(tvxView.drawn().caretIsSeen)") == "true"; };
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(wait_for([&] { return !seen(); }, 3000));
    EXPECT_TRUE(wait_for(seen, 3000));
  }
  ASSERT_TRUE(wait_for([&] { return !seen(); }, 3000));
  post_text("x");  // one that has just moved is seen at once
  ASSERT_TRUE(settle());
  EXPECT_TRUE(wait_for(seen, 60));
  // Another place for focus: it neither comes nor goes, and afterwards it does again.
  QWidget other(window_.get());
  other.setFocusPolicy(Qt::StrongFocus);
  other.show();
  other.setFocus();
  ASSERT_TRUE(wait_for_drawn("caret", false));
  view_->widget()->setFocus();
  view_->input_widget()->setFocus();
  ASSERT_TRUE(wait_for_drawn("caret"));
  EXPECT_TRUE(wait_for([&] { return !seen(); }, 3000));
  EXPECT_TRUE(wait_for(seen, 3000));
  QApplication::setCursorFlashTime(flash_time);
}

TEST_F(RealView, ShowsWhatABrowserRefusesToMake) {
  open(u"<P =x>one<a\"b>two</P>");
  EXPECT_EQ(shown(), expected());
  EXPECT_EQ(in_page("document.body.innerText"), "onetwo");
  EXPECT_EQ(html(), "<P =x=\"\">one<A\"B>two</A\"B></P>");
}

TEST_F(RealView, QuirksAndStandardsDocumentsOneAfterTheOther) {
  open(u"<p>quirks");
  EXPECT_EQ(in_page("document.compatMode"), "BackCompat");
  open(u"<!DOCTYPE html><p>standards");
  EXPECT_EQ(in_page("document.compatMode"), "CSS1Compat");
  EXPECT_EQ(shown(), expected());
  open(u"<p>quirks again");
  EXPECT_EQ(in_page("document.compatMode"), "BackCompat");
  EXPECT_EQ(shown(), expected());
}

TEST_F(RealView, NothingInADocumentRuns) {
  const std::u16string body =
      u"<P onclick=\"document.title='clicked'\"><A href=\"javascript:document.title='link'\">link "
      u"text</A></P>"
      u"<SCRIPT>document.title = 'script';</SCRIPT><IMG src=\"data:,\" onerror=\"document.title='image'\">"
      u"<IFRAME src=\"javascript:parent.document.title='frame'\"></IFRAME>";
  open(u"<!DOCTYPE html><title>quiet</title><meta http-equiv=refresh content=\"0;url=about:blank\"><body>" +
       body);
  post_press(place_of("a", 3));
  settle();
  wait_for([] { return false; }, 300);
  EXPECT_EQ(in_page("document.title"), "quiet");
  EXPECT_EQ(shown(), expected());
  EXPECT_EQ(html(), to_utf8(body));
}

TEST_F(RealView, DrawsACaretWhereTheSelectionIs) {
  open(u"<!DOCTYPE html><p>abc</p><p></p>");
  document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 3});
  ASSERT_TRUE(wait_for([&] { return document_view_->facts().caret_height > 10; }, 3000));
  const int first = document_view_->facts().caret_top;
  document_->editor().selection().collapse({document_->body()->last_child(), 0});
  ASSERT_TRUE(wait_for([&] { return document_view_->facts().caret_top > first + 10; }));
  EXPECT_GT(document_view_->facts().caret_height, 10);
}

TEST_F(RealView, LinesAreAskedOfTheView) {
  open(u"<!DOCTYPE html><p>abcde line</p><p></p><p>abcde third</p>");
  document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 5});
  post_key(Qt::Key_Down);
  post_key(Qt::Key_Down);
  post_text("x");
  post_key(Qt::Key_End);
  post_text("y");
  post_key(Qt::Key_Home);
  post_text("z");
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>abcde line</P><P></P><P>zabcdex thirdy</P>");
}

TEST_F(RealView, ADragSelects) {
  open(u"<!DOCTYPE html><p>some words to select</p>");
  const QPoint from = place_of("p", 5), to = place_of("p", 10);
  post_press(from, Qt::LeftButton, false);
  QWidget* target = view_->input_widget();
  for (int step = 1; step <= 4; ++step) {
    const QPointF at = QPointF(from) + (QPointF(to) - QPointF(from)) * step / 4.0;
    QCoreApplication::postEvent(target, new QMouseEvent(QEvent::MouseMove, at, target->mapToGlobal(at),
                                                        Qt::NoButton, Qt::LeftButton, Qt::NoModifier));
  }
  QCoreApplication::postEvent(target, new QMouseEvent(QEvent::MouseButtonRelease, to, target->mapToGlobal(to),
                                                      Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
  ASSERT_TRUE(wait_for([&] { return !document_->editor().selection().collapsed(); }, 3000));
  settle();
  const dom::Range range = document_->editor().selection().range();
  EXPECT_EQ(range.start.offset, 5u);
  EXPECT_EQ(range.end.offset, 10u);
}

}  // namespace
}  // namespace tvx::qt
