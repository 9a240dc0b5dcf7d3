#include "htmled/window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/tree.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::htmled {
namespace {

constexpr char real_page[] = "/usr/share/doc/ccache/manual.html";
constexpr char small_page[] =
    "<html>\n<head>\n<title>T</title>\n</head>\n<body>\n<p>A paragraph of some "
    "length.</p>\n</body>\n</html>\n";
constexpr char small_page_edited[] =
    "<html>\n<head>\n<title>T</title>\n</head>\n<body>\n<p>A paragraphnew of some "
    "length.</p>\n</body>\n</html>\n";

QByteArray bytes_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

dom::Ref<dom::Document> parsed(const QByteArray& bytes) {
  return dom::parse_document(from_utf8(std::string_view(bytes.constData(), std::size_t(bytes.size()))));
}

/// The texts of the body that have words in them, in order.
std::vector<dom::Text*> texts_of(dom::Document& document) {
  std::vector<dom::Text*> texts;
  dom::Node* body = document.body();
  for (dom::Node* node = body; node; node = dom::next_in_order(*node, body)) {
    auto* text = dom::as<dom::Text>(node);
    if (text && trimmed(text->data()).size() > 20) texts.push_back(text);
  }
  return texts;
}

class WindowTest : public testing::Test {
 protected:
  WindowTest() { window_.show(); }

  bool settle() {
    const std::int64_t end = loop_.now() + 20'000;
    for (int i = 0; i < 3; ++i) loop_.pump(0);
    while (!window_.editor().document_view().settled() && loop_.now() < end) loop_.pump(20);
    return window_.editor().document_view().settled();
  }

  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop_.now() + 10'000;
    while (!condition() && loop_.now() < end) loop_.pump(20);
    return condition();
  }

  bool has_caret() {
    QWidget* input = window_.editor().view().input_widget();
    return input && input->hasFocus() &&
           document().editor().selection().type() == editing::SelectionType::Text;
  }

  void post_text(const QString& text) {
    QWidget* input = window_.editor().view().input_widget();
    ASSERT_NE(input, nullptr);
    for (const QChar letter : text) {
      const int key = letter.toUpper().unicode();
      QCoreApplication::postEvent(input, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, letter));
      QCoreApplication::postEvent(input, new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier, letter));
    }
  }

  /// A page of one paragraph in a file of its own, with a word typed into it.
  QString edited_page() {
    const QString path = folder_.filePath(QStringLiteral("page.html"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(small_page) > 0);
    file.close();
    EXPECT_TRUE(window_.start(path));
    EXPECT_TRUE(settle());
    dom::Text* text = texts_of(document().tree()).at(0);
    document().select([&](editing::Selection& selection) { selection.collapse({text, 11}); });
    EXPECT_TRUE(settle());
    post_text(QStringLiteral("new"));
    EXPECT_TRUE(settle());
    EXPECT_TRUE(window_.isWindowModified());
    return path;
  }

  /// Chooses an item of a menu; `answer` is given the dialog that it opens.
  bool choose(const QString& item, const std::function<void(QWidget&)>& answer = {}) {
    bool asked = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      // A file dialog takes a typed name from the field that has the keyboard, else the file that is marked.
      if (!dialog || !dialog->isActiveWindow() || asked) return;
      asked = true;
      if (answer) {
        answer(*dialog);
      } else {
        dialog->close();
      }
    });
    watch.start(10);
    for (QAction* action : window_.findChildren<QAction*>())
      if (action->text().remove(u'&').remove(u'…') == item) {
        action->trigger();
        break;  // what it does may take others away
      }
    return asked;
  }

  static void press(QWidget& dialog, QMessageBox::StandardButton button) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr);
    box->button(button)->click();
  }

  std::string text_shown() { return to_utf8(dom::text_content(*document().body())); }

  browser::HTMLDocument& document() { return *window_.editor().control().DOM(); }

  qt::MessageLoop loop_;
  QTemporaryDir folder_;
  Window window_{loop_};
};

TEST_F(WindowTest, ARealPageTakesTypingInItsMiddleAndSavesWithNothingElseChanged) {
  const QByteArray original = bytes_of(QString::fromLatin1(real_page));
  if (original.isEmpty()) GTEST_SKIP() << "SKIPPED: " << real_page << " is not installed";
  ASSERT_GT(original.size(), 100'000);
  const QString path = folder_.filePath(QStringLiteral("page.html"));
  ASSERT_TRUE(QFile::copy(QString::fromLatin1(real_page), path));
  ASSERT_TRUE(window_.start(path));
  ASSERT_TRUE(settle());

  const std::vector<dom::Text*> texts = texts_of(document().tree());
  const std::size_t middle = texts.size() / 2;
  document().select([&](editing::Selection& selection) { selection.collapse({texts[middle], 10}); });
  ASSERT_TRUE(settle());
  post_text(QStringLiteral("typed"));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(window_.isWindowModified());

  const QString saved = folder_.filePath(QStringLiteral("saved.html"));
  ASSERT_TRUE(window_.save_copy(saved));
  const dom::Ref<dom::Document> expected = parsed(original);
  dom::replace_data(*texts_of(*expected)[middle], 10, 0, u"typed");
  EXPECT_TRUE(dom::print_tree(*parsed(bytes_of(saved))) == dom::print_tree(*expected));
}

TEST_F(WindowTest, AnUneditedPageIsSavedByteForByte) {
  const QString path = folder_.filePath(QStringLiteral("page.html"));
  const QByteArray page =
      "<!-- kept -->\r\n<!DOCTYPE html>\r\n<html><head><title>T</title><script>x = '<b>';</script></head>\r\n"
      "<body onload=\"run()\"><P =x><a\"b><a href='javascript:go()'>go</a></body></html>\r\n<!-- end -->";
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(page) == page.size());
  file.close();
  ASSERT_TRUE(window_.start(path));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  const QString saved = folder_.filePath(QStringLiteral("saved.html"));
  ASSERT_TRUE(window_.save_copy(saved));
  EXPECT_EQ(bytes_of(saved), page);
}

TEST_F(WindowTest, AFileThatCannotBeReadLeavesANewPage) {
  EXPECT_FALSE(window_.start(folder_.filePath(QStringLiteral("absent.html"))));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_TRUE(texts_of(document().tree()).empty());
}

TEST_F(WindowTest, APictureIsNoPage) {
  const QString path = folder_.filePath(QStringLiteral("a.png"));
  QImage picture(20, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(path));
  EXPECT_FALSE(window_.start(path));
  EXPECT_EQ(window_.statusBar()->currentMessage(), QStringLiteral("Not a page: ") + path);
  ASSERT_TRUE(settle());
  EXPECT_EQ(window_.front().path(), QString());
  EXPECT_TRUE(texts_of(document().tree()).empty());
}

TEST_F(WindowTest, AllFilesThatCannotBeReadAreTold) {
  QStringList paths;
  for (const char* name : {"one.html", "page.html", "two.html"})
    paths << folder_.filePath(QString::fromLatin1(name));
  QFile file(paths[1]);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(small_page) > 0);
  file.close();
  EXPECT_FALSE(window_.start_with(paths));
  const auto told = [&] { return window_.statusBar()->currentMessage(); };
  EXPECT_TRUE(told().contains(paths[0]) && told().contains(paths[2])) << told().toStdString();
  EXPECT_FALSE(told().contains(paths[1]));
  EXPECT_EQ(window_.tabs().count(), 2);
  window_.statusBar()->clearMessage();
  window_.open_all({paths[2], paths[0]});
  EXPECT_TRUE(told().contains(paths[0]) && told().contains(paths[2])) << told().toStdString();
}

TEST_F(WindowTest, NewLeavesTheChangedDocumentInItsTab) {
  const QString path = edited_page();
  EXPECT_FALSE(choose(QStringLiteral("New"))) << "nothing is lost, nothing to ask";
  ASSERT_TRUE(
      wait_for([&] { return window_.editor().started() && settle() && !window_.isWindowModified(); }));
  EXPECT_EQ(text_shown().find("paragraph"), std::string::npos);
  EXPECT_EQ(bytes_of(path), small_page);
  window_.tabs().step(1);
  EXPECT_NE(text_shown().find("paragraphnew"), std::string::npos);
  EXPECT_TRUE(window_.isWindowModified());
}

TEST_F(WindowTest, ClosingSavesWhenToldTo) {
  const QString path = edited_page();
  bool closed = true;
  QTimer::singleShot(50, [] {
    if (QWidget* box = QApplication::activeModalWidget()) press(*box, QMessageBox::Save);
  });
  closed = window_.close();
  EXPECT_TRUE(closed);
  EXPECT_EQ(bytes_of(path), small_page_edited);
}

TEST_F(WindowTest, SaveWritesTheFile) {
  const QString path = edited_page();
  EXPECT_FALSE(choose(QStringLiteral("Save")));
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_EQ(bytes_of(path), small_page_edited);
}

TEST_F(WindowTest, UndoingEverythingTakesTheMarkAway) {
  edited_page();
  window_.editor().control().undo_document();
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  window_.editor().control().redo_document();
  ASSERT_TRUE(settle());
  EXPECT_TRUE(window_.isWindowModified());
}

TEST_F(WindowTest, UndoingToWhatWasSavedTakesTheMarkAway) {
  edited_page();
  EXPECT_FALSE(choose(QStringLiteral("Save")));
  ASSERT_FALSE(window_.isWindowModified());
  post_text(QStringLiteral("er"));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(window_.isWindowModified()) << "typing goes on, in a step of its own";
  window_.editor().control().undo_document();
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  window_.editor().control().undo_document();
  ASSERT_TRUE(settle());
  EXPECT_TRUE(window_.isWindowModified()) << "the file holds the word";
}

TEST_F(WindowTest, AsManyStepsAsThenMayStillBeOthers) {
  edited_page();
  EXPECT_FALSE(choose(QStringLiteral("Save")));
  window_.editor().control().undo_document();
  ASSERT_TRUE(settle());
  dom::Text* text = texts_of(document().tree()).at(0);
  document().select([&](editing::Selection& selection) { selection.collapse({text, 0}); });
  post_text(QStringLiteral("z"));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(window_.isWindowModified());
}

TEST_F(WindowTest, AFileThatAnotherProgramHasWrittenIsNotOverwrittenUnasked) {
  const QString path = edited_page();
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("<p>Theirs</p>") > 0);
  file.close();
  EXPECT_TRUE(choose(QStringLiteral("Save"), [](QWidget& box) { press(box, QMessageBox::Cancel); }));
  EXPECT_EQ(bytes_of(path), "<p>Theirs</p>");
  EXPECT_TRUE(choose(QStringLiteral("Save"), [](QWidget& box) { press(box, QMessageBox::Yes); }));
  EXPECT_NE(bytes_of(path).indexOf("paragraphnew"), -1);
}

/// Types a name over the one that a file dialog proposes, if any, and agrees.
void type_name(QWidget& dialog, const QString& name) {
  auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  ASSERT_NE(field, nullptr);
  EXPECT_TRUE(field->hasFocus());
  field->selectAll();
  QTest::keyClicks(field, name);
  QTest::keyClick(field, Qt::Key_Return);
}

TEST_F(WindowTest, SaveAsWritesAnotherFileAndGoesOnWithThat) {
  const QString path = edited_page();
  EXPECT_TRUE(choose(QStringLiteral("Save as"),
                     [&](QWidget& dialog) { type_name(dialog, QStringLiteral("other")); }));
  EXPECT_EQ(bytes_of(folder_.filePath(QStringLiteral("other.html"))), small_page_edited);
  EXPECT_EQ(bytes_of(path), small_page);
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_EQ(window_.windowTitle(), QStringLiteral("other.html[*] – HTMLed"));
}

TEST_F(WindowTest, SaveAsAsksBeforeItWritesOverAFile) {
  const QString path = edited_page();
  QFile other(folder_.filePath(QStringLiteral("other.html")));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly) && other.write("theirs") > 0);
  other.close();
  EXPECT_TRUE(choose(QStringLiteral("Save as"), [&](QWidget& dialog) {
    QTimer::singleShot(200, &dialog, [&dialog] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      box->button(QMessageBox::No)->click();
      dialog.close();
    });
    type_name(dialog, QStringLiteral("other.html"));
  }));
  EXPECT_EQ(bytes_of(other.fileName()), "theirs");
  EXPECT_TRUE(window_.isWindowModified());
}

TEST_F(WindowTest, OpenShowsTheFileThatIsChosen) {
  ASSERT_TRUE(window_.start({}));
  ASSERT_TRUE(settle());
  QFile file(folder_.filePath(QStringLiteral("page.html")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(small_page) > 0);
  file.close();
  EXPECT_TRUE(choose(QStringLiteral("Open"), [&](QWidget& dialog) { type_name(dialog, file.fileName()); }));
  ASSERT_TRUE(settle());
  EXPECT_NE(text_shown().find("A paragraph of some"), std::string::npos);
}

// --- where the keys go ---

/// Keys as the window system sends them: to the window, which gives them to the widget that has the focus.
void type_into(QWindow* window, const QString& text) {
  for (const QChar letter : text) QTest::keyClick(window, letter.toLatin1());
}

TEST_F(WindowTest, AfterAStartTypingWorksWithoutAClick) {
  ASSERT_TRUE(window_.start({}));
  const auto typed = [&](const std::string& text) {
    return wait_for([&] { return text_shown().find(text) != std::string::npos; });
  };
  ASSERT_TRUE(settle());
  window_.activateWindow();
  ASSERT_TRUE(wait_for([&] { return has_caret(); }));
  type_into(window_.windowHandle(), QStringLiteral("first"));
  EXPECT_TRUE(typed("first")) << text_shown();
}

TEST_F(WindowTest, TheCodeViewHasTheKeyboardAsSoonAsItOpens) {
  edited_page();
  auto& control = window_.editor().control();
  ASSERT_TRUE(control.press(control.Toolbar1(), u"toggle"));
  ASSERT_TRUE(control.InCodeView());
  auto* box = window_.findChild<QPlainTextEdit*>(QStringLiteral("TextBox1"));
  ASSERT_NE(box, nullptr);
  ASSERT_TRUE(wait_for([&] { return box->hasFocus(); }));
  type_into(window_.windowHandle(), QStringLiteral("x y"));
  EXPECT_TRUE(control.InCodeView()) << "the blank has pressed the button";
  EXPECT_NE(box->toPlainText().indexOf(QStringLiteral("x y")), -1);
}

// --- what counts as a change ---

TEST_F(WindowTest, LookingAtTheCodeIsNoChange) {
  edited_page();
  EXPECT_FALSE(choose(QStringLiteral("Save")));
  auto& control = window_.editor().control();
  ASSERT_TRUE(control.press(control.Toolbar1(), u"toggle"));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  auto* box = window_.findChild<QPlainTextEdit*>(QStringLiteral("TextBox1"));
  QTest::keyClick(box, Qt::Key_Right);
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  QTest::keyClicks(box, QStringLiteral("x"));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(window_.isWindowModified());
}

TEST_F(WindowTest, LeavingTheCodeAsItWasIsNoChange) {
  edited_page();
  EXPECT_FALSE(choose(QStringLiteral("Save")));
  auto& control = window_.editor().control();
  ASSERT_TRUE(control.press(control.Toolbar1(), u"toggle"));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(control.press(control.Toolbar1(), u"toggle"));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(WindowTest, WhatIsTypedInTheCodeAndTakenBackByHandIsNoChange) {
  edited_page();
  EXPECT_FALSE(choose(QStringLiteral("Save")));
  auto& control = window_.editor().control();
  control.show_Code();
  auto* box = window_.findChild<QPlainTextEdit*>(QStringLiteral("TextBox1"));
  QTest::keyClicks(box, QStringLiteral("x"));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(window_.isWindowModified());
  QTest::keyClick(box, Qt::Key_Backspace);
  control.show_Code();
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(WindowTest, RevertGoesBackToTheFileAndAsksInTheProgramsName) {
  const QString path = edited_page();
  auto& control = window_.editor().control();
  const auto revert = [&](QMessageBox::StandardButton answer) {
    bool asked = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box || asked) return;
      asked = true;
      EXPECT_EQ(box->icon(), QMessageBox::Question);
      EXPECT_EQ(box->windowTitle(), QStringLiteral("HTMLed"));
      press(*box, answer);
    });
    watch.start(10);
    control.menu(u"mnuMiscRevert")->choose();
    return wait_for([&] { return asked; }) && settle();
  };
  ASSERT_TRUE(revert(QMessageBox::Cancel));
  EXPECT_NE(text_shown().find("paragraphnew"), std::string::npos);
  EXPECT_TRUE(window_.isWindowModified());
  ASSERT_TRUE(revert(QMessageBox::Discard));
  EXPECT_EQ(text_shown().find("paragraphnew"), std::string::npos);
  EXPECT_NE(text_shown().find("A paragraph of some"), std::string::npos);
  EXPECT_FALSE(window_.isWindowModified());
}

// --- another document ---

TEST_F(WindowTest, PathAndButtonsAreThoseOfTheDocumentThatWasOpened) {
  edited_page();
  auto& control = window_.editor().control();
  window_.activateWindow();
  document().select([&](editing::Selection& selection) {
    selection.collapse({texts_of(document().tree()).at(0), 2});
  });
  document().execCommand(u"Bold", false, u"");
  ASSERT_TRUE(settle());
  const QString other = folder_.filePath(QStringLiteral("other.html"));
  QFile file(other);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) &&
              file.write("<ul><li>An item with enough words in it</ul>") > 0);
  file.close();
  ASSERT_TRUE(window_.open(other));
  ASSERT_TRUE(settle());
  const auto path = [&] {
    std::u16string captions;
    for (int i = 1; i <= control.tlbDOM().Count(); ++i) captions += control.tlbDOM().Item(i).Caption() + u" ";
    return to_utf8(captions);
  };
  EXPECT_TRUE(wait_for([&] { return path().find("LI") != std::string::npos; })) << path();
  EXPECT_TRUE(document().editor().selection().collapsed());
}

}  // namespace
}  // namespace tvx::htmled
