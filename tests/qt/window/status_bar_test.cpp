#include "htmled/status/status_bar.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>
#include <functional>
#include <string>
#include <vector>

#include "htmled/document/document_page.h"
#include "htmled/window.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

class StatusBarTest : public testing::Test {
 protected:
  StatusBarTest() { window_.show(); }

  void open(const QByteArray& bytes) {
    QFile out(path_);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
    out.close();
    ASSERT_TRUE(window_.start(path_));
  }
  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop_.now() + 10'000;
    while (!condition() && loop_.now() < end) loop_.pump(20);
    return condition();
  }
  QByteArray saved() {
    EXPECT_TRUE(window_.front().save());
    QFile in(path_);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }
  std::string counts() { return window_.findChild<QLabel*>(QStringLiteral("counts"))->text().toStdString(); }
  QToolButton* button(const char* name) { return window_.findChild<QToolButton*>(QString::fromLatin1(name)); }
  QList<QAction*> offered(const char* name) {
    QMenu* menu = button(name)->menu();
    emit menu->aboutToShow();
    return menu->actions();
  }
  std::vector<std::string> marked(const char* name) {
    std::vector<std::string> texts;
    for (const QAction* action : offered(name))
      if (action->isChecked()) texts.push_back(action->text().toStdString());
    return texts;
  }
  void choose(const char* name, const QString& item) {
    for (QAction* action : offered(name))
      if (action->text() == item) return action->trigger();
    FAIL() << name << " doesn't offer " << item.toStdString();
  }

  qt::MessageLoop loop_;
  QTemporaryDir folder_;
  const QString path_ = folder_.filePath(QStringLiteral("page.html"));
  Window window_{loop_};
};

TEST_F(StatusBarTest, CountsTheDocumentAndTheSelection) {
  open("<!DOCTYPE html><meta charset=utf-8><p>One two</p><p>three</p>\n");
  EXPECT_TRUE(wait_for([&] { return counts() == "3 words, 12 characters"; })) << counts();
  auto& document = *window_.editor().control().DOM();
  document.select([&](editing::Selection& selection) {
    dom::Node* text = document.body()->first_child()->first_child();
    selection.set({text, 0}, {text, 3});
  });
  EXPECT_TRUE(wait_for([&] { return counts() == "1 of 3 words, 3 of 12 characters"; })) << counts();
  document.select([&](editing::Selection& selection) { selection.collapse({document.body(), 0}); });
  // All of it is no more than all: neither what a list offers nor the tabs between cells are counted.
  dom::set_inner_html(
      *document.body(),
      u"\n<table><tr><td>a</td> <td>b c</td></tr></table>\n<p>d <select><option>e</select> f</p>\n");
  emit window_.editor().property_changed(QStringLiteral("DocumentHTML"));
  EXPECT_TRUE(wait_for([&] { return counts().starts_with("5 words"); })) << counts();
  document.select([&](editing::Selection& selection) {
    selection.set({document.body(), 0}, {document.body(), dom::length_of(*document.body())});
  });
  EXPECT_TRUE(wait_for([&] { return counts() == "5 of 5 words, 6 of 6 characters"; })) << counts();
  document.select([&](editing::Selection& selection) { selection.collapse({document.body(), 0}); });
  dom::set_inner_html(*document.body(), u"<p>four");
  emit window_.editor().property_changed(QStringLiteral("DocumentHTML"));
  EXPECT_TRUE(wait_for([&] { return counts() == "1 word, 4 characters"; })) << counts();
}

// A drag from the midst of one cell to the edge of another shows both as selected.
TEST_F(StatusBarTest, CountsSelectedCellsWhole) {
  open(
      "<!DOCTYPE html><meta "
      "charset=utf-8><p>above</p><table><tr><td>one<td>two<tr><td>three<td>four</table>\n");
  EXPECT_TRUE(wait_for([&] { return counts() == "5 words, 20 characters"; })) << counts();
  auto& document = *window_.editor().control().DOM();
  std::vector<dom::Node*> texts;  // of the cells
  for (dom::Node* node = document.first(dom::Tag::Table); node; node = dom::next_in_order(*node))
    if (node->parent_element() && node->parent_element()->is(dom::Tag::Td)) texts.push_back(node);
  ASSERT_EQ(texts.size(), 4u);
  document.select([&](editing::Selection& selection) { selection.set({texts[0], 2}, {texts[3], 0}); });
  EXPECT_TRUE(wait_for([&] { return counts() == "4 of 5 words, 15 of 20 characters"; })) << counts();
  document.select([&](editing::Selection& selection) { selection.set({texts[1], 3}, {texts[3], 0}); });
  EXPECT_TRUE(wait_for([&] { return counts() == "2 of 5 words, 7 of 20 characters"; })) << counts();
}

TEST_F(StatusBarTest, ForgetsTheCountsOfAnEditorThatIsGone) {
  open("<!DOCTYPE html><p>One two</p>\n");
  ASSERT_TRUE(wait_for([&] { return counts() == "2 words, 7 characters"; })) << counts();
  TextCounts others;
  bool paused = false;
  QObject::connect(&others, &TextCounts::paused, [&] { paused = true; });
  others.set_editor(&window_.editor());
  others.set_editor(nullptr);  // while the first count is waited for
  EXPECT_TRUE(wait_for([&] { return paused; }));
  EXPECT_EQ(others.of_document(), editing::TextCount{});
}

TEST_F(StatusBarTest, LeavesTheCountsWhereAPageHasLostItsBody) {
  open("<!DOCTYPE html><p>One two</p>\n");
  ASSERT_TRUE(wait_for([&] { return counts() == "2 words, 7 characters"; })) << counts();
  bool paused = false;
  QObject::connect(static_cast<StatusBar*>(window_.statusBar()), &StatusBar::outdated,
                   [&] { paused = true; });
  dom::remove(*window_.editor().control().DOM()->body());
  emit window_.editor().property_changed(QStringLiteral("DocumentHTML"));
  EXPECT_TRUE(wait_for([&] { return paused; }));
  EXPECT_EQ(counts(), "2 words, 7 characters");
}

TEST_F(StatusBarTest, ChangesTheCharacterSetInFileAndPage) {
  open("<!DOCTYPE html><meta charset=\"utf-8\"><p>gr\xC3\xBC\xC3\x9F</p>\n");
  EXPECT_EQ(button("charset")->text().toStdString(), "UTF-8");
  choose("charset", QStringLiteral("WINDOWS-1252"));
  EXPECT_EQ(button("charset")->text().toStdString(), "WINDOWS-1252");
  EXPECT_TRUE(wait_for([&] { return window_.isWindowModified(); }));
  EXPECT_EQ(saved(), "<!DOCTYPE html><meta charset=\"windows-1252\"><p>gr\xFC\xDF</p>\n");
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(StatusBarTest, OffersTheFilesOwnCharacterSetOnce) {
  open("<!DOCTYPE html><meta charset=\"koi8-r\"><p>\xC1</p>\n");
  EXPECT_EQ(marked("charset"), std::vector<std::string>{"KOI8-R"});
  const qsizetype with_its_own = offered("charset").size();
  open("<!DOCTYPE html><meta charset=\"windows-1251\"><p>\xC1</p>\n");
  EXPECT_EQ(marked("charset"), std::vector<std::string>{"WINDOWS-1251"});
  EXPECT_EQ(offered("charset").size(), with_its_own - 1);
}

TEST_F(StatusBarTest, ChangesTheLineEnds) {
  open("<!DOCTYPE html>\n<meta charset=\"utf-8\">\n<p>a</p>\n");
  EXPECT_EQ(button("line_end")->text().toStdString(), "LF");
  choose("line_end", QStringLiteral("CR LF"));
  EXPECT_TRUE(window_.isWindowModified());
  choose("line_end", QStringLiteral("LF"));
  EXPECT_TRUE(wait_for([&] { return !window_.isWindowModified(); })) << "as in the file again";
  choose("line_end", QStringLiteral("CR LF"));
  EXPECT_EQ(saved(), "<!DOCTYPE html>\r\n<meta charset=\"utf-8\">\r\n<p>a</p>\r\n");
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(StatusBarTest, ChangesTheLanguageAsOneStep) {
  open("<!DOCTYPE html><html lang=\"de\"><meta charset=\"utf-8\"><p>a</p></html>\n");
  EXPECT_EQ(button("language")->text().toStdString(), "Deutsch");
  window_.front().set_language(QStringLiteral("fr"));
  EXPECT_EQ(button("language")->text().toStdString(), "Français");
  EXPECT_EQ(window_.front().language(), QStringLiteral("fr"));
  window_.editor().control().undo_document();
  EXPECT_EQ(window_.front().language(), QStringLiteral("de"));
  EXPECT_TRUE(wait_for([&] { return button("language")->text() == QStringLiteral("Deutsch"); }));
}

TEST_F(StatusBarTest, ShowsAndSetsTheZoom) {
  open("<!DOCTYPE html><p>a</p>\n");
  EXPECT_EQ(button("zoom")->text().toStdString(), "100 %");
  choose("zoom", QStringLiteral("150 %"));
  EXPECT_TRUE(wait_for([&] { return button("zoom")->text() == QStringLiteral("150 %"); }));
  EXPECT_DOUBLE_EQ(window_.editor().zoom(), 1.5);
  EXPECT_EQ(marked("zoom"), std::vector<std::string>{"150 %"});
}

TEST_F(StatusBarTest, IsThereFromTheStartAndMovesNothing) {
  open("<!DOCTYPE html><p>a</p>\n");
  const QSize before = window_.editor().size();
  EXPECT_TRUE(window_.statusBar()->isVisible());
  window_.statusBar()->showMessage(QStringLiteral("a message"));
  loop_.pump(20);
  window_.statusBar()->clearMessage();
  loop_.pump(20);
  EXPECT_EQ(window_.editor().size(), before);
}

}  // namespace
}  // namespace tvx::htmled
