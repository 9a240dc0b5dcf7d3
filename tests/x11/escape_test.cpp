#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QTest>

#include "htmled/find_bar.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// What takes long is stopped with Escape, and then it hasn't been.
namespace tvx::x11 {
namespace {

/// Makes changes of the document slow, and a user press Escape in the midst of them.
class SlowChanges final : public dom::MutationObserver {
 public:
  SlowChanges(dom::Document& document, QWidget& window) : document_(document), window_(window) {
    document_.add_observer(*this);
  }
  ~SlowChanges() override { document_.remove_observer(*this); }
  bool pressed() const { return pressed_; }
  bool said_so() const { return said_so_; }

 private:
  void mutated(const dom::Mutation& mutation) override {
    if (mutation.kind != dom::MutationKind::Step) return;
    ++changes_;
    // Long enough that the window says what stops it.
    if (changes_ == 1) QTest::qSleep(700);
    if (changes_ == 100) {
      const auto* note = window_.findChild<QLabel*>(QStringLiteral("escapeNote"));
      said_so_ = note && note->isVisible() && QGuiApplication::overrideCursor();
      // Waits for nothing: no loop of the program runs meanwhile.
      QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Escape")});
      pressed_ = true;
    }
    if (changes_ > 100 && changes_ % 50 == 0) QTest::qSleep(20);
  }

  dom::Document& document_;
  QWidget& window_;
  int changes_ = 0;
  bool pressed_ = false, said_so_ = false;
};

/// Escapes that come through to the window.
class Escapes final : public QObject {
 public:
  Escapes() { qApp->installEventFilter(this); }
  int count = 0;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched->isWindowType() && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
      ++count;
    return false;
  }
};

class EscapeOnScreen : public EditorOnScreen {
 protected:
  static QByteArray long_page() {
    QByteArray page = "<!DOCTYPE html><html><body>";
    for (int i = 0; i < 1000; ++i) page += "<p>word <i>of</i> a line</p>";
    return page + "</body></html>";
  }
  /// Written as no program would write it, so that what is written anew is seen.
  static QByteArray oddly_written_page() {
    QByteArray page = "<!doctype HTML>\r\n<HTML>\r\n<Body BGCOLOR=white>\r\n";
    for (int i = 0; i < 4'000; ++i)
      page += "<P Class=a   title='b'>word <I>of</i> a\t line &eacute; &#38;<BR>\r\n<img alt=\"\">\r\n";
    return page + "<p id=last>end</body>\r\n";
  }
  void expect_a_letter_is_all_that_is_saved(const QString& name) {
    QByteArray wanted = file(name);
    hands::press(QStringLiteral("ctrl+End"));
    hands::type(QStringLiteral("x"));
    ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
    hands::press(QStringLiteral("ctrl+s"));
    ASSERT_TRUE(wait_for([&] { return !window_->isWindowModified(); }));
    EXPECT_TRUE(file(name) == wanted.replace("end</body>", "endx</body>"));
  }
  void select_all() {
    hands::press(QStringLiteral("ctrl+a"));
    ASSERT_TRUE(wait_for([&] { return !document().editor().selection().collapsed(); }));
    ASSERT_TRUE(settle());
  }
  /// Something to redo.
  void undo_a_letter() {
    hands::type(QStringLiteral("x"));
    ASSERT_TRUE(wait_for([&] { return document().tree().journal().can_undo(); }));
    hands::press(QStringLiteral("ctrl+z"));
    ASSERT_TRUE(wait_for([&] { return document().tree().journal().can_redo(); }));
    ASSERT_TRUE(settle());
  }
  void expect_stopped(const std::function<void()>& act) {
    const std::string before = html();
    const bool modified = window_->isWindowModified();
    const dom::Journal& journal = document().tree().journal();
    const bool undoes = journal.can_undo(), redoes = journal.can_redo();
    const Escapes escapes;
    {
      const SlowChanges slow(document().tree(), *window_);
      act();
      EXPECT_TRUE(wait_for([&] { return slow.pressed() && !journal.is_open(); }));
      EXPECT_TRUE(slow.said_so());
      EXPECT_TRUE(settle());
    }
    EXPECT_TRUE(html() == before);
    EXPECT_EQ(window_->isWindowModified(), modified);
    EXPECT_EQ(journal.can_undo(), undoes);
    EXPECT_EQ(journal.can_redo(), redoes);
    EXPECT_EQ(escapes.count, 0);
    EXPECT_EQ(window_->findChild<QLabel*>(QStringLiteral("escapeNote")), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    // The next one means what it always does.
    hands::press(QStringLiteral("Escape"));
    EXPECT_TRUE(wait_for([&] { return escapes.count == 1; }));
  }
};

TEST_F(EscapeOnScreen, StopsACommandOnAllAndTheNextOneWorks) {
  start(long_page());
  undo_a_letter();
  select_all();
  expect_stopped([] { hands::press(QStringLiteral("ctrl+b")); });
  const std::string before = html();
  hands::press(QStringLiteral("ctrl+b"));
  EXPECT_TRUE(wait_for([&] { return html() != before; }));
  EXPECT_TRUE(settle());
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return html() == before; }));
}

// Undo of what was done to all is as long as that was.
TEST_F(EscapeOnScreen, StopsAnUndoAndARedo) {
  start(long_page());
  const std::string plain = html();
  select_all();
  hands::press(QStringLiteral("ctrl+b"));
  ASSERT_TRUE(wait_for([&] { return html() != plain; }));
  ASSERT_TRUE(settle());
  const std::string bold = html();
  expect_stopped([] { hands::press(QStringLiteral("ctrl+z")); });
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([&] { return html() == plain; }));
  EXPECT_TRUE(settle());
  expect_stopped([] { hands::press(QStringLiteral("ctrl+y")); });
  hands::press(QStringLiteral("ctrl+y"));
  EXPECT_TRUE(wait_for([&] { return html() == bold; }));
  EXPECT_TRUE(settle());
}

// What a stopped command has touched and put back isn't written anew: the file has the letter typed
// afterwards, and all else as somebody wrote it.
TEST_F(EscapeOnScreen, LeavesTheFileAsItWasWritten) {
  start(oddly_written_page());
  for (const char* keys : {"ctrl+b", "ctrl+u", "Delete", "q"}) {
    SCOPED_TRACE(keys);
    select_all();
    expect_stopped([keys] { hands::press(QString::fromLatin1(keys)); });
  }
  expect_a_letter_is_all_that_is_saved(QStringLiteral("page.html"));
}

// Opening isn't stopped by it; neither is what comes in after the window has been filled.
TEST_F(EscapeOnScreen, WhileAPageComesInItDoesNoHarm) {
  start("<!DOCTYPE html><p>first</p>");
  QFile big(path_of(QStringLiteral("big.html")));
  ASSERT_TRUE(big.open(QIODevice::WriteOnly) && big.write(oddly_written_page()) > 0);
  big.close();
  hands::press(QStringLiteral("Escape"));
  ASSERT_TRUE(window_->open_in_tab(big.fileName()));
  for (int i = 0; i < 5; ++i) {
    hands::press(QStringLiteral("Escape"));
    loop_.pump(100);
  }
  wait_for_caret();
  expect_a_letter_is_all_that_is_saved(QStringLiteral("big.html"));
}

TEST_F(EscapeOnScreen, StopsAKeyThatDeletesAll) {
  start(long_page());
  undo_a_letter();
  select_all();
  expect_stopped([] { hands::press(QStringLiteral("Delete")); });
}

TEST_F(EscapeOnScreen, StopsWhatIsPasted) {
  start("<!DOCTYPE html><html><body><p>here</p></body></html>");
  undo_a_letter();
  auto* data = new QMimeData;
  data->setHtml(QString::fromLatin1(long_page()));
  QGuiApplication::clipboard()->setMimeData(data);
  expect_stopped([] { hands::press(QStringLiteral("ctrl+v")); });
}

TEST_F(EscapeOnScreen, StopsReplacingAllAndTheBarStays) {
  start(long_page());
  undo_a_letter();
  hands::press(QStringLiteral("ctrl+h"));
  auto& bar = *window_->findChild<htmled::FindBar*>();
  auto* sought = bar.findChild<QLineEdit*>(QStringLiteral("sought"));
  ASSERT_TRUE(wait_for([&] { return bar.isVisible() && sought->hasFocus(); }));
  hands::type(QStringLiteral("word"));
  auto* button = bar.findChild<QPushButton*>(QStringLiteral("replaceAll"));
  ASSERT_TRUE(wait_for([&] { return control().FindCount() == 1000 && button->isVisible(); }));
  const std::string before = html();
  const Escapes escapes;
  const SlowChanges slow(document().tree(), *window_);
  hands::click(middle_of(*button));
  EXPECT_TRUE(wait_for([&] { return slow.pressed() && !document().tree().journal().is_open(); }));
  EXPECT_TRUE(settle());
  EXPECT_TRUE(html() == before);
  EXPECT_FALSE(window_->isWindowModified());
  EXPECT_TRUE(bar.isVisible());
  EXPECT_EQ(control().FindCount(), 1000);
  EXPECT_EQ(escapes.count, 0);
}

TEST_F(EscapeOnScreen, DoesNotStopWhatAHostCalls) {
  start(long_page());
  select_all();
  const std::string before = html();
  const Escapes escapes;
  const SlowChanges slow(document().tree(), *window_);
  EXPECT_TRUE(document().execCommand(u"bold", false, u""));
  EXPECT_TRUE(slow.pressed());
  EXPECT_FALSE(slow.said_so());
  EXPECT_TRUE(html() != before);
  EXPECT_TRUE(wait_for([&] { return escapes.count == 1; }));
}

// The menu bar has the keys until it is left, and gives them back to whoever had them.
TEST_F(EscapeOnScreen, AMenuThatWasLeftByItDoesntSendTheSourcesKeysToThePage) {
  start("<!DOCTYPE html><p>one</p>");
  hands::press(QStringLiteral("alt+v"));
  ASSERT_TRUE(wait_for([&] { return QApplication::activePopupWidget() != nullptr; }));
  hands::press(QStringLiteral("Escape"));
  ASSERT_TRUE(wait_for([&] { return !QApplication::activePopupWidget(); }));
  hands::press(QStringLiteral("F9"));
  ASSERT_TRUE(wait_for([&] { return control().InCodeView(); }));
  QTest::qWait(500);
  hands::type(QStringLiteral("xy"));
  EXPECT_TRUE(wait_for([&] { return control().txtCode().Text().find(u"xy") != std::u16string::npos; }));
  EXPECT_EQ(html(), "<P>one</P>");
}

}  // namespace
}  // namespace tvx::x11
