#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "htmled/document/document_page.h"
#include "htmled/menus/commands.h"
#include "htmled/tabs.h"
#include "htmled/unsaved/changed_file_dialog.h"
#include "htmled/unsaved/page_keeper.h"
#include "htmled/unsaved/unsaved_dialog.h"
#include "htmled/unsaved/unsaved_folder.h"
#include "htmled/window.h"
#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

/// A window whose program ends without asking, and the next one.
class UnsavedPages : public testing::Test {
 protected:
  UnsavedPages() {
    before_ = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", folder_.path().toLocal8Bit());
    new_window();
  }
  ~UnsavedPages() override {
    window_.reset();
    qputenv("XDG_STATE_HOME", before_);
  }
  void new_window() {
    window_.reset();
    window_ = std::make_unique<Window>(loop_);
    window_->show();
  }
  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop_.now() + 20'000;
    while (!condition() && loop_.now() < end) loop_.pump(20);
    return condition();
  }
  QString file(const QByteArray& bytes = "<!DOCTYPE html>\n<title>T</title>\n<p>one</p>\n<p>two</p>\n") {
    QFile out(folder_.filePath(QStringLiteral("page.html")));
    EXPECT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
    return out.fileName();
  }
  core::HTMLed& control() { return window_->editor().control(); }
  std::string body() {
    const auto document = control().DOM();
    return document && document->body() ? to_utf8(dom::inner_html(*document->body())) : "";
  }
  void edit(std::u16string_view html) {
    dom::set_inner_html(*control().DOM()->body(), html);
    emit window_->editor().property_changed(QStringLiteral("DocumentHTML"));
    EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  }
  /// What is kept for a program that has ended by now.
  std::vector<files::KeptPage> kept() {
    std::vector<files::KeptPage> pages;
    for (const UnsavedFolder& each : UnsavedFolder::abandoned())
      for (auto& [name, page] : each.pages()) pages.push_back(std::move(page));
    return pages;
  }
  /// Answers the question that the next start asks.
  void offer(const char* button, const std::function<void(UnsavedDialog&)>& look = {}) {
    bool asked = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<UnsavedDialog*>(QApplication::activeModalWidget());
      if (!dialog || asked) return;
      asked = true;
      if (look) look(*dialog);
      dialog->findChild<QPushButton*>(QString::fromLatin1(button))->click();
    });
    watch.start(10);
    window_->offer_unsaved();
    EXPECT_TRUE(asked);
  }

  QByteArray before_;
  QTemporaryDir folder_;
  qt::MessageLoop loop_;
  std::unique_ptr<Window> window_;
};

TEST_F(UnsavedPages, AreKeptWhenTheProgramIsEndedAndRestoredAsOneStep) {
  const QString path = file();
  ASSERT_TRUE(window_->start(path));
  edit(u"<P>three</P>");
  window_->keep_everything();
  new_window();
  ASSERT_EQ(kept().size(), 1u);
  ASSERT_TRUE(window_->start({}));
  std::string shown;
  offer("restore", [&](UnsavedDialog& dialog) {
    shown = dialog.findChild<QTextBrowser*>()->toPlainText().toStdString();
  });
  EXPECT_NE(shown.find("− </head><body><p>one</p>"), std::string::npos) << shown;
  EXPECT_NE(shown.find("+ </head><body><p>three</p></body></html>"), std::string::npos) << shown;
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified() && body().find("three") != body().npos; }));
  EXPECT_EQ(window_->front().path(), path);
  EXPECT_EQ(window_->tabs().count(), 1) << "the empty page has made room";
  EXPECT_TRUE(wait_for([&] { return kept().empty(); })) << "nobody is asked twice";
  control().undo_document();
  EXPECT_TRUE(wait_for([&] { return !window_->isWindowModified(); }));
  EXPECT_NE(body().find("one"), std::string::npos);
}

TEST_F(UnsavedPages, OfARestoredPageAreKeptAgainAtOnce) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("restore");
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  new_window();  // ended again, with no change since
  const auto pages = kept();
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_NE(to_utf8(pages[0].page).find("three"), std::string::npos);
}

TEST_F(UnsavedPages, WithoutAFileComeBackWithoutOne) {
  ASSERT_TRUE(window_->start({}));
  edit(u"<P>never saved</P>");
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("restore");
  ASSERT_TRUE(wait_for([&] { return body().find("never saved") != std::string::npos; }));
  EXPECT_TRUE(window_->front().path().isEmpty());
  EXPECT_TRUE(window_->isWindowModified());
}

TEST_F(UnsavedPages, WithoutAFileAllComeBack) {
  ASSERT_TRUE(window_->start({}));
  edit(u"<P>the first</P>");
  window_->new_document();
  ASSERT_TRUE(wait_for(
      [&] { return window_->editor().started() && !window_->front().is_busy() && !body().empty(); }));
  edit(u"<P>the second</P>");
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("restore");
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified() && kept().empty(); }));
  std::vector<std::string> bodies;
  for (DocumentPage* each : window_->tabs().pages()) {
    window_->tabs().bring_to_front(*each);
    ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
    bodies.push_back(body());
  }
  EXPECT_EQ(bodies, (std::vector<std::string>{"<P>the first</P>", "<P>the second</P>"}));
}

TEST_F(UnsavedPages, ComeBackAsTheCodeThatWasBeingTyped) {
  ASSERT_TRUE(window_->start(file()));
  control().show_Code();
  control().txtCode().edit(u"<P>half a <B");
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("restore");
  ASSERT_TRUE(wait_for([&] { return control().InCodeView(); }));
  EXPECT_EQ(to_utf8(control().txtCode().Text()), "<P>half a <B");
}

TEST_F(UnsavedPages, AreOfferedAgainWhereTheUserWantsToDecideLater) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("later");
  EXPECT_EQ(kept().size(), 1u);
  EXPECT_NE(body().find("<P></P>"), std::string::npos) << body();
}

TEST_F(UnsavedPages, ThatTheUserDiscardsAreGone) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("discard");
  EXPECT_TRUE(kept().empty());
}

TEST_F(UnsavedPages, OnlyTheChosenOnesAreRestored) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  new_window();
  ASSERT_TRUE(window_->start({}));
  offer("restore", [](UnsavedDialog& dialog) {
    dialog.findChild<QListWidget*>()->item(0)->setCheckState(Qt::Unchecked);
  });
  EXPECT_EQ(kept().size(), 1u);
}

TEST_F(UnsavedPages, ThatAreSavedAreKeptNoLonger) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  ASSERT_TRUE(window_->front().save());
  window_->keep_everything();
  new_window();
  EXPECT_TRUE(kept().empty());
}

TEST_F(UnsavedPages, ThatAreUndoneAreKeptNoLonger) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  while (window_->isWindowModified() && control().DOM()->tree().journal().can_undo()) {
    control().undo_document();
    for (int i = 0; i < 5; ++i) loop_.pump(5);
  }
  EXPECT_FALSE(window_->isWindowModified());
  window_->keep_everything();
  new_window();
  EXPECT_TRUE(kept().empty());
}

TEST_F(UnsavedPages, OfAProgramThatLivesAreNobodyElses) {
  ASSERT_TRUE(window_->start(file()));
  edit(u"<P>three</P>");
  window_->keep_everything();
  EXPECT_TRUE(kept().empty());
}

TEST_F(UnsavedPages, OfAFileThatIsWrittenWhileItLoadsAreAskedAboutWhenItHasLoaded) {
  const QString path = file();
  ASSERT_TRUE(window_->start(path));
  bool written = false;
  int asked = 0, asked_while_loading = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    const bool busy = window_->front().is_busy();
    if (busy && !std::exchange(written, true)) {
      file("<!DOCTYPE html>\n<title>T</title>\n<p>theirs, and longer</p>\n");
      window_->front().look_at_file();
    }
    auto* dialog = qobject_cast<ChangedFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    ++(busy ? asked_while_loading : asked);
    dialog->reject();
  });
  watch.start(0);
  ASSERT_TRUE(window_->front().open(path));
  ASSERT_TRUE(written);
  EXPECT_EQ(asked_while_loading, 0);
  window_->front().look_at_file();
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(window_->isWindowModified()) << "the document is kept, the file is another";
}

// The editor holds an empty page then, which took the file's place.
TEST_F(UnsavedPages, AFileIsNotSavedOverBeforeItHasLoaded) {
  const QString path = file();
  const auto content = [&] {
    QFile written(path);
    EXPECT_TRUE(written.open(QIODevice::ReadOnly));
    return written.readAll();
  };
  const QByteArray before = content();
  int saves = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (!window_->front().is_busy()) return;
    ++saves;
    EXPECT_FALSE(window_->front().save());
  });
  watch.start(0);
  ASSERT_TRUE(window_->start(path));
  watch.stop();
  ASSERT_GT(saves, 0);
  EXPECT_EQ(content(), before);
  for (int turn = 0; turn < 20; ++turn) loop_.pump(20);
  EXPECT_EQ(content(), before) << "saved as it is once it has loaded";
}

// None but what can be told at once: the page that is written would be the one before.
TEST_F(UnsavedPages, OfAFileThatIsComingNoOtherPageIsWritten) {
  const QString path = file(), copy = folder_.filePath(QStringLiteral("copy.html"));
  int tries = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (!window_->front().is_coming()) return;
    ++tries;
    EXPECT_FALSE(window_->front().save_copy(copy));
    EXPECT_FALSE(window_->front().save_template(copy));
    EXPECT_FALSE(window_->front().save_as()) << "asks when the page is there";
  });
  watch.start(0);
  bool coming_when_asked = false, asked = false;
  QTimer dialogs;
  QObject::connect(&dialogs, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    coming_when_asked |= window_->front().is_coming();
    asked = true;
    dialog->reject();
  });
  dialogs.start(0);
  ASSERT_TRUE(window_->start(path));
  watch.stop();
  ASSERT_GT(tries, 0);
  EXPECT_FALSE(QFile::exists(copy));
  EXPECT_TRUE(wait_for([&] { return asked; }));
  EXPECT_FALSE(coming_when_asked);
  dialogs.stop();
  EXPECT_TRUE(window_->front().save_copy(copy));
  EXPECT_TRUE(QFile::exists(copy));
}

TEST_F(UnsavedPages, OfAPageThatIsComingWaitForItWithEveryCommand) {
  const QString path = file();
  ASSERT_TRUE(window_->start({}));
  bool chosen = false, closed_early = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (!window_->front().is_coming()) return;
    if (!std::exchange(chosen, true)) window_->commands().own("close")->trigger();
    closed_early |= window_->can_reopen();
  });
  watch.start(0);
  ASSERT_TRUE(window_->open_in_tab(path));
  ASSERT_TRUE(chosen);
  EXPECT_FALSE(closed_early);
  EXPECT_TRUE(wait_for([&] { return window_->can_reopen() && window_->front().path().isEmpty(); }));
}

TEST_F(UnsavedPages, AreAllOnTheDiskOnceTheyAreWaitedFor) {
  KeptPages pages;
  constexpr int count = 200;
  for (int i = 0; i < count; ++i) pages.keep(pages.new_name(), {u"/a", 1, u"<p>a", {}});
  pages.finish();
  int found = 0;
  QDirIterator files(folder_.path(), {QStringLiteral("*.page")}, QDir::Files, QDirIterator::Subdirectories);
  for (; files.hasNext(); files.next()) ++found;
  EXPECT_EQ(found, count);
  for (int i = 1; i <= count; ++i) pages.forget(std::to_string(i));
}

/// A program that was started with its input closed gets that number for the first file that it opens.
TEST_F(UnsavedPages, AreKeptWhereTheInputIsClosed) {
  const int input = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
  ::close(STDIN_FILENO);
  {
    UnsavedFolder own;
    EXPECT_NO_THROW(own.keep("1", files::kept_bytes({u"/a", 1, u"<p>a", {}})));
    EXPECT_NE(::fcntl(STDIN_FILENO, F_GETFD), -1) << "it is the folder's lock";
    EXPECT_TRUE(kept().empty());
  }
  EXPECT_EQ(::fcntl(STDIN_FILENO, F_GETFD), -1);
  EXPECT_EQ(kept().size(), 1u);
  if (input >= 0) ::dup2(input, STDIN_FILENO), ::close(input);
}

TEST(UnsavedFolder, IsAbandonedWithWhatIsWholeInIt) {
  const QTemporaryDir state;
  const QByteArray before = qgetenv("XDG_STATE_HOME");
  qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
  {
    UnsavedFolder own;
    own.keep("1", files::kept_bytes({u"/a", 1, u"<p>a", {}}));
    own.keep("2", "half a pa");
    EXPECT_EQ(own.pages().size(), 1u);
    EXPECT_TRUE(UnsavedFolder::abandoned().empty());
  }
  {
    const auto found = UnsavedFolder::abandoned();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].pages().size(), 1u);
    EXPECT_TRUE(UnsavedFolder::abandoned().empty()) << "one asks at a time";
    found[0].forget("1");
  }
  EXPECT_TRUE(UnsavedFolder::abandoned().empty());
  EXPECT_TRUE(QDir(state.filePath(QStringLiteral("tvxHTML/unsaved"))).isEmpty());
  qputenv("XDG_STATE_HOME", before);
}

}  // namespace
}  // namespace tvx::htmled
