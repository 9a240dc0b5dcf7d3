#include "qt/print/paper.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include "tvx/page_setup.h"
#include "tvx/qt/print/printing.h"
#include "tvx/qt/print/sheet_finish.h"

/// What stands on the sheets, and what is known of them.
namespace tvx::qt {
namespace {

using testing::Test;
using Text = PageSetup::Text;

QString paragraphs(int count) {
  QString html;
  for (int i = 0; i < count; ++i) html += QStringLiteral("<p>Paragraph %1</p>").arg(i);
  return html;
}

TEST_F(Paper, HasTheHeadingsAsBookmarksInTheirOrder) {
  show(QStringLiteral("<h1>Häuser &amp; <i>Gärten</i></h1>%1<h2 id=mine>Zäune</h2><h4>Pfosten</h4>"
                      "<h2 style='display:none'>Hidden</h2><h2></h2><h2>門</h2>%1<h1>End</h1>")
           .arg(paragraphs(60)));
  const std::string seen =
      ask("pdftohtml", {QStringLiteral("-xml"), QStringLiteral("-i"), QStringLiteral("-stdout"), pdf()})
          .toStdString();
  const std::size_t from = seen.find("<outline>");
  ASSERT_NE(from, std::string::npos) << seen;
  EXPECT_EQ(seen.substr(from, seen.rfind("</outline>") + 11 - from),
            "<outline>\n"
            "<item page=\"1\">Häuser &amp; Gärten</item>\n"
            "<outline>\n"
            "<item page=\"3\">Zäune</item>\n"
            "<outline>\n"
            "<item page=\"3\">Pfosten</item>\n"
            "</outline>\n"
            "<item page=\"3\">門</item>\n"
            "</outline>\n"
            "<item page=\"5\">End</item>\n"
            "</outline>\n");
}

TEST_F(Paper, LeavesThePageAsItWas) {
  show(QStringLiteral("<h1>One</h1><h2 id=mine>Two</h2><p>Three</p>"));
  const QString before = widget_->DocumentHTML();
  pdf();
  ASSERT_TRUE(settle());
  EXPECT_EQ(widget_->DocumentHTML(), before);
  EXPECT_FALSE(widget_->IsDirty());
}

TEST_F(Paper, KeepsTextAndLinks) {
  show(QStringLiteral("<p>Some <b>words</b>, <a href='https://example.org/x'>far</a> and "
                      "<a href='#there'>near</a>.</p>%1<p id=there>There</p>")
           .arg(paragraphs(80)));
  const QString path = pdf();
  EXPECT_NE(text_of(path).find("Some words, far and near."), std::string::npos) << text_of(path);
  EXPECT_TRUE(ask("pdfinfo", {QStringLiteral("-url"), path}).contains("https://example.org/x"));
  const QByteArray places = ask("pdfinfo", {QStringLiteral("-dests"), path});
  EXPECT_TRUE(places.contains("\"there\"")) << places.constData();
}

TEST_F(Paper, OfADocumentWithoutATitleSaysItsFilesName) {
  widget_->show();
  widget_->control().set_DocumentHTML(u"<p>x</p>");
  PageSetup setup;
  setup.file_name = QStringLiteral("letter.html");
  widget_->set_page_setup(setup);
  EXPECT_EQ(fact(pdf(), "Title:"), "letter.html");
}

TEST_F(Paper, HasHeaderAndFooterOnEachSheet) {
  show(paragraphs(100));
  PageSetup setup;
  setup.file_name = QStringLiteral("日本 letter.html");
  setup.header = {true, Text::FileName, Text::Nothing, Text::Date};
  setup.footer = {true, Text::Nothing, Text::PageOfPages, Text::Page};
  widget_->set_page_setup(setup);
  const QString path = pdf();
  const int count = sheets_of(path);
  ASSERT_GE(count, 3);
  const QList<QByteArray> sheets = QByteArray::fromStdString(text_of(path)).split('\f');
  for (int i = 0; i < count; ++i) {
    SCOPED_TRACE(sheets[i].constData());
    const QByteArray first = sheets[i].trimmed().split('\n').first(),
                     last = sheets[i].trimmed().split('\n').last();
    EXPECT_TRUE(first.contains("日本 letter.html"));
    EXPECT_TRUE(first.contains(QLocale().toString(QDate::currentDate(), QLocale::ShortFormat).toUtf8()));
    EXPECT_TRUE(QByteArray(last).replace(' ', "").startsWith(QByteArray::number(i + 1) + '/' +
                                                             QByteArray::number(count)));
    EXPECT_TRUE(sheets[i].contains("Paragraph "));
  }
  setup.header.is_shown = setup.footer.is_shown = false;
  widget_->set_page_setup(setup);
  EXPECT_EQ(text_of(pdf()).find("letter.html"), std::string::npos);
}

TEST_F(Paper, HasTheSizeTheOrientationAndTheMarginsOfTheSetup) {
  show(QStringLiteral("<p>Word</p>"));
  QByteArray boxes;
  const auto edge = [&boxes](const char* name) {
    const qsizetype at = boxes.indexOf(name, boxes.indexOf("<word")) + qsizetype(qstrlen(name)) + 2;
    return boxes.mid(at, boxes.indexOf('"', at) - at).toDouble();
  };
  const auto first_word = [&](QMarginsF margins) {
    PageSetup setup;
    setup.layout =
        QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, margins, QPageLayout::Millimeter);
    widget_->set_page_setup(setup);
    const QString path = pdf();
    const QList<QByteArray> size = fact(path, "Page size:").split(' ');
    EXPECT_NEAR(size.value(0).toDouble(), 595, 0.6);
    EXPECT_NEAR(size.value(2).toDouble(), 420, 1.2);
    boxes = ask("pdftotext", {QStringLiteral("-bbox"), path, QStringLiteral("-")});
    return QPointF(edge("xMin"), edge("yMin"));
  };
  const QPointF moved = first_word(QMarginsF(40, 30, 10, 10)) - first_word(QMarginsF(20, 20, 10, 10));
  constexpr double points_per_millimetre = 72 / 25.4;
  EXPECT_NEAR(moved.x(), 20 * points_per_millimetre, 1.5);
  EXPECT_NEAR(moved.y(), 10 * points_per_millimetre, 1.5);
}

// The border of the current element, the caret, selected cells, fields that nobody sees, waves under wrong
// words.
TEST_F(Paper, HasNothingOfWhatIsForTheScreenAlone) {
  const QString plain = QStringLiteral("<p>Wrogn wrods <b>here</b></p><table><tr><td>1<td>2</table>");
  show(plain);
  widget_->set_CheckSpellingAsYouType(false);
  ASSERT_TRUE(settle());
  const QByteArray expected = picture_of(pdf());
  show(
      QStringLiteral("<p>Wrogn wrods <b>here</b><input type=hidden name=a value=b></p>"
                     "<table><tr><td>1<td>2</table>"));
  widget_->set_HighlightDOMSelectionOnClick(true);
  widget_->set_CheckSpellingAsYouType(true);
  widget_->selectText(0, 5);
  widget_->setFocus();
  widget_->FindText(QStringLiteral("here"));
  ASSERT_TRUE(settle());
  QTest::qWait(1500);
  QImage first;
  ASSERT_TRUE(first.loadFromData(expected, "PPM"));
  EXPECT_TRUE(picture_of(pdf()) == expected);
}

// --- to a printer ---

class Printer : public Test {
 protected:
  void SetUp() override {
    QFile lp(folder_.filePath(QStringLiteral("lp")));
    ASSERT_TRUE(lp.open(QIODevice::WriteOnly));
    lp.write("#!/bin/sh\ncat > " + folder_.path().toUtf8() + "/got\necho \"$@\" > " +
             folder_.path().toUtf8() + "/asked\n[ ! -e " + folder_.path().toUtf8() +
             "/broken ] || { echo 'no paper' >&2; exit 1; }\n");
    lp.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", folder_.path().toUtf8() + ":" + before_);
  }
  void TearDown() override { qputenv("PATH", before_); }
  QByteArray read(const char* name) const {
    QFile in(folder_.filePath(QString::fromLatin1(name)));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
  const QByteArray before_ = qgetenv("PATH");
};

TEST_F(Printer, GetsTheSheetsAsTheyAreWithWhatTheUserChose) {
  PrintOrder order;
  order.printer = QStringLiteral("Office");
  order.copies = 3;
  order.options = {QStringLiteral("sides=two-sided-long-edge")};
  EXPECT_EQ(carry_out(order, "%PDF-1.4 any", QStringLiteral("My letter")), QString());
  EXPECT_EQ(read("got"), "%PDF-1.4 any");
  EXPECT_EQ(read("asked"), "-d Office -n 3 -t My letter -o sides=two-sided-long-edge\n");
}

TEST_F(Printer, ThatRefusesIsToldInItsOwnWords) {
  QFile broken(folder_.filePath(QStringLiteral("broken")));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  PrintOrder order;
  order.printer = QStringLiteral("Office");
  EXPECT_EQ(carry_out(order, "%PDF-1.4 any", {}), QStringLiteral("no paper"));
}

TEST_F(Paper, OfWhichSomeSheetsAreChosenHasThoseAlone) {
  show(paragraphs(100));
  QFile whole(pdf());
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  const QString path = folder_.filePath(QStringLiteral("some.pdf"));
  PrintOrder order;
  order.file = path;
  order.ranges = QPageRanges::fromString(QStringLiteral("2"));
  EXPECT_EQ(carry_out(order, whole.readAll(), {}), QString());
  EXPECT_EQ(sheets_of(path), 1);
  EXPECT_EQ(text_of(path).find("Paragraph 0\n"), std::string::npos);
}

TEST(SheetFinish, WhatIsNoPdfIsNone) {
  Sheets sheets;
  EXPECT_TRUE(finished_pdf(sheets, {}).isEmpty());
  sheets.pdf = "nothing of the kind";
  EXPECT_TRUE(finished_pdf(sheets, {}).isEmpty());
}

}  // namespace
}  // namespace tvx::qt
