#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QScreen>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

#include "htmled/document/document_page.h"
#include "htmled/find_bar.h"
#include "htmled/format/colour_button.h"
#include "htmled/tabs.h"
#include "tvx/platform/loaded_dialogs.h"
#include "tvx/spelling/dictionary_files.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// A newcomer's letter from the empty page to the file, the PDF and back, with nothing but what is to be seen
/// in the window. With TVX_PICTURES a picture of each step goes into that folder: the handbook shows them.
namespace tvx::x11 {
namespace {

/// A hill below an evening sky.
QImage photo_of_the_green() {
  QImage photo(300, 130, QImage::Format_RGB32);
  QPainter painter(&photo);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, 130);
  sky.setColorAt(0, QColor(0x7f, 0xb4, 0xd9));
  sky.setColorAt(1, QColor(0xfb, 0xe3, 0xb6));
  painter.fillRect(photo.rect(), sky);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xff, 0xf4, 0xd2));
  painter.drawEllipse(QPoint(232, 52), 16, 16);
  painter.setBrush(QColor(0x6d, 0x9f, 0x71));
  painter.drawEllipse(QPoint(70, 150), 190, 80);
  painter.setBrush(QColor(0x3b, 0x7d, 0x4f));
  painter.drawEllipse(QPoint(250, 165), 200, 75);
  return photo;
}

class Letter : public EditorOnScreen {
 protected:
  void SetUp() override {
    EditorOnScreen::SetUp();
    if (IsSkipped()) return;
    qputenv("XDG_DATA_HOME", path_of(QStringLiteral("data")).toLocal8Bit());
    if (!spelling::dictionary_for(spelling::installed_dictionaries(), u"en-US"))
      GTEST_SKIP() << "SKIPPED: no dictionary";
    ASSERT_TRUE(photo_of_the_green().save(path_of(QStringLiteral("green.png"))));
    window_ = std::make_unique<htmled::Window>(loop_);
    window_->resize(960, 680);
    window_->show();
    ASSERT_TRUE(window_->start({}));
    hands::give_focus(*window_);
    wait_for_caret();
  }
  void TearDown() override {
    EditorOnScreen::TearDown();
    qunsetenv("XDG_DATA_HOME");
  }

  void picture(const char* name) {
    const QString folder = qEnvironmentVariable("TVX_PICTURES");
    if (folder.isEmpty()) return;
    ASSERT_TRUE(settle());
    QTest::qWait(400);  // the engine paints a frame after the layout
    const QRect shown = window_->frameGeometry();
    const QPixmap screen =
        window_->screen()->grabWindow(0, shown.x(), shown.y(), shown.width(), shown.height());
    ASSERT_TRUE(screen.save(folder + QStringLiteral("/letter-%1.png").arg(QLatin1String(name))));
  }

  // --- what a newcomer does ---
  void press_button(std::u16string_view key) {
    QWidget* button = toolbar_button(key);
    ASSERT_TRUE(wait_for([&] { return button->isEnabled(); }));
    hands::click(middle_of(*button));
    ASSERT_TRUE(settle());
  }
  void write(const char* text) {
    hands::type(QString::fromUtf8(text));
    ASSERT_TRUE(settle());
  }
  void key(const char* name) {
    hands::press(QString::fromLatin1(name));
    ASSERT_TRUE(settle());
  }
  void take_word(const QString& element, int at) {
    const QPoint place = place_of_character(element, at);
    hands::click(place + QPoint(3, 0));
    hands::click(place + QPoint(3, 0));
    ASSERT_TRUE(wait_for([&] { return !document().editor().selection().collapsed(); }));
  }
  void choose_style(const char* name) {
    auto& list = *window_->findChild<QComboBox*>(QStringLiteral("styles"));
    hands::click(middle_of(list));
    ASSERT_TRUE(wait_for([&] { return list.view()->isVisible(); }));
    const QModelIndex line = list.model()->index(list.findText(QString::fromLatin1(name)), 0);
    hands::click(list.view()->viewport()->mapToGlobal(list.view()->visualRect(line).center()));
    ASSERT_TRUE(wait_for([&] { return !list.view()->isVisible(); }));
    ASSERT_TRUE(settle());
  }
  /// Insert, Table, and the size in the grid.
  void draw_table(int rows, int columns) {
    const QPoint cell = place_in_table_grid(rows, columns);
    hands::move(cell);
    picture("table-grid");
    hands::click(cell);
    ASSERT_TRUE(wait_for([&] { return html().find("<TABLE") != std::string::npos; })) << html();
    ASSERT_TRUE(settle());
  }
  /// The next file dialog gets this path.
  void answer_with(const QString& path) {
    answer_dialog([path](QDialog& dialog) {
      auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      ASSERT_TRUE(name && wait_for([&] { return name->hasFocus(); }));
      hands::press(QStringLiteral("ctrl+a"));
      hands::type(path);
      hands::press(QStringLiteral("Return"));
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); })) << path.toStdString();
    });
  }
  bool holds(const char* part) {
    return wait_for([&] { return html().find(part) != std::string::npos; });
  }

  void write_the_text();
  void make_the_table();
  void put_in_picture_and_rule();
  void replace_a_word();
  void check_the_spelling();
};

void Letter::write_the_text() {
  choose_style("Heading 1");
  write("Summer fair");
  key("Return");
  write("Dear neighbors, please bring a cake and a chair to the green on Saturday.");
  take_word(QStringLiteral("p"), 56);
  hands::click(middle_of(*window_->findChildren<htmled::ColourButton*>().constFirst()));
  EXPECT_TRUE(holds("<FONT color=\"#c00000\">green</FONT>")) << html();
  picture("colour");
  key("ctrl+End");
  key("Return");
  press_button(u"unorderedlist");
  write("cakes and pies");
  key("Return");
  write("chairs");
  key("Return");
  key("Return");
  press_button(u"orderedlist");
  write("first we eat");
  key("Return");
  write("then we sing");
  picture("lists");
  key("Return");
  key("Return");
  write("See the map for the way.");
  take_word(QStringLiteral("body > p:last-of-type"), 9);
  answer_dialog([this](QDialog& dialog) {
    hands::type(QStringLiteral("www.example.org/map"));
    picture("link");
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  press_button(u"link");
  EXPECT_TRUE(holds("<A href=\"http://www.example.org/map\">map</A>")) << html();
  EXPECT_NE(html().find("<UL>\n<LI>cakes and pies</LI>\n<LI>chairs</LI>\n</UL>\n"
                        "<OL>\n<LI>first we eat</LI>\n<LI>then we sing</LI>\n</OL>"),
            std::string::npos)
      << html();
}

void Letter::make_the_table() {
  hands::give_focus(*window_);
  key("ctrl+End");
  key("Return");
  draw_table(3, 3);
  for (const char* cell : {"Who", "What", "When", "Anna", "Cake", "noon", "All of us"}) {
    write(cell);
    if (std::string_view(cell) != "All of us") key("Tab");
  }
  choose("HeaderRow");
  EXPECT_TRUE(holds("<TH>Who</TH><TH>What</TH><TH>When</TH>")) << html();
  hands::drag(place_of(QStringLiteral("tbody tr:last-child td:first-child"), 0.5, 0.5),
              place_of(QStringLiteral("tbody tr:last-child td:last-child"), 0.5, 0.5));
  ASSERT_TRUE(settle());
  picture("cells");
  choose("MergeCells");
  EXPECT_TRUE(holds("colspan=\"3\"")) << html();
  picture("table");
}

void Letter::put_in_picture_and_rule() {
  hands::give_focus(*window_);
  key("ctrl+End");
  answer_with(path_of(QStringLiteral("green.png")));
  press_button(u"Image");
  EXPECT_TRUE(holds("green.png\"")) << html();
  key("ctrl+End");
  press_button(u"HR");
  EXPECT_TRUE(holds("<HR>")) << html();
  hands::give_focus(*window_);
  write("Yours, Maria of the gardenn commitee");
  picture("picture");
}

void Letter::replace_a_word() {
  choose("replace");
  auto& bar = *window_->findChild<htmled::FindBar*>();
  auto& sought = *bar.findChild<QLineEdit*>(QStringLiteral("sought"));
  ASSERT_TRUE(wait_for([&] { return sought.hasFocus(); }));
  hands::type(QStringLiteral("Saturday"));
  ASSERT_TRUE(wait_for(
      [&] { return bar.findChild<QLabel*>(QStringLiteral("count"))->text() == QStringLiteral("1 of 1"); }));
  hands::click(middle_of(*bar.findChild<QLineEdit*>(QStringLiteral("replacement"))));
  hands::type(QStringLiteral("Sunday"));
  picture("replace");
  hands::click(middle_of(*bar.findChild<QWidget*>(QStringLiteral("replaceAll"))));
  EXPECT_TRUE(holds("on Sunday.")) << html();
  hands::press(QStringLiteral("Escape"));
}

void Letter::check_the_spelling() {
  int asked = 0;
  std::function<void(QDialog&)> answer = [&](QDialog& dialog) {
    if (++asked == 1) picture("spelling");
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
    answer_dialog(answer);
  };
  answer_dialog(answer);
  hands::give_focus(*window_);
  press_button(u"Spell Check");
  EXPECT_TRUE(wait_for([&] { return asked == 2 && !platform::IsDialogLoaded(u"frmSpelling"); })) << asked;
  answer_dialog(nullptr);
  EXPECT_TRUE(holds("garden committee")) << html();
}

TEST_F(Letter, IsWrittenCheckedSavedAndReadAgain) {
  EXPECT_TRUE(wait_for(
      [&] { return in_page(QStringLiteral("tvxView.drawn().sentence || ''")).find("Start writing") == 0; }));
  picture("empty");
  ASSERT_NO_FATAL_FAILURE(write_the_text());
  ASSERT_NO_FATAL_FAILURE(make_the_table());
  ASSERT_NO_FATAL_FAILURE(put_in_picture_and_rule());
  ASSERT_NO_FATAL_FAILURE(replace_a_word());
  ASSERT_NO_FATAL_FAILURE(check_the_spelling());

  hands::give_focus(*window_);
  answer_with(path_of(QStringLiteral("fair.html")));
  choose("save");
  ASSERT_TRUE(wait_for([&] { return !window_->front().is_modified(); }));
  picture("saved");
  EXPECT_TRUE(file(QStringLiteral("fair.html")).contains("<title>Summer fair</title>"))
      << "nobody has thought of a title";

  hands::give_focus(*window_);
  answer_with(path_of(QStringLiteral("fair.pdf")));
  choose("export-pdf");
  ASSERT_TRUE(wait_for(
      [&] { return window_->statusBar()->currentMessage().startsWith(QStringLiteral("Exported")); }));
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {path_of(QStringLiteral("fair.pdf")), QStringLiteral("-")});
  ASSERT_TRUE(reader.waitForFinished());
  const QByteArray words = reader.readAllStandardOutput();
  EXPECT_TRUE(words.contains("Summer fair") && words.contains("then we sing")) << words.toStdString();

  hands::give_focus(*window_);
  choose("close");
  ASSERT_TRUE(wait_for([&] { return window_->front().path().isEmpty(); }));
  wait_for_caret();
  answer_with(path_of(QStringLiteral("fair.html")));
  choose("open");
  ASSERT_TRUE(wait_for([&] { return window_->front().name() == QStringLiteral("fair.html"); }));
  ASSERT_TRUE(wait_for([&] { return html().find("garden committee") != std::string::npos; })) << html();
  EXPECT_FALSE(window_->front().is_modified());
  EXPECT_EQ(html().find("Saturday"), std::string::npos);
}

}  // namespace
}  // namespace tvx::x11
