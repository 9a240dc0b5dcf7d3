#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <deque>

#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/platform/loaded_dialogs.h"
#include "tvx/qt/web/web_view.h"
#include "tvx/spelling/dictionary_files.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Spelling as a writer meets it: F7 from word to word, waves, and the items of a right press.
namespace tvx::x11 {
namespace {

/// Chooses an item of an open menu by the keys.
void choose_by_keys(QWidget& widget, const QString& caption) {
  auto& menu = *qobject_cast<QMenu*>(&widget);
  bool found = false;
  for (QAction* action : menu.actions()) {
    if (!action->isVisible() || action->isSeparator() || !action->isEnabled()) continue;
    hands::press(QStringLiteral("Down"));
    found = action->text().remove(u'&') == caption;
    if (found) break;
  }
  EXPECT_TRUE(found) << caption.toStdString();
  hands::press(found ? QStringLiteral("Return") : QStringLiteral("Escape"));
  EXPECT_TRUE(wait_for([&] { return !menu.isVisible(); }));
}

class SpellingOnScreen : public EditorOnScreen {
 protected:
  void SetUp() override {
    EditorOnScreen::SetUp();
    if (IsSkipped()) return;
    qputenv("XDG_DATA_HOME", path_of(QStringLiteral("data")).toLocal8Bit());
    qputenv("LC_ALL", "C.UTF-8");
    const auto installed = spelling::installed_dictionaries();
    for (const char16_t* language : {u"en-US", u"de-DE", u"fr"})
      if (!spelling::dictionary_for(installed, language)) GTEST_SKIP() << "SKIPPED: no dictionaries";
  }
  void TearDown() override {
    EditorOnScreen::TearDown();
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("LC_ALL");
  }

  using Answer = std::function<void(QDialog&)>;
  /// F7, and an answer for each word that the dialog asks about. Ends when the run has ended.
  void check(std::deque<Answer> answers) {
    answers_ = std::move(answers);
    asked_.clear();
    answer_next();
    hands::give_focus(*window_);
    hands::press(QStringLiteral("F7"));
    ASSERT_TRUE(wait_for([this] { return !asked_.empty(); })) << "no dialog came";
    ASSERT_TRUE(wait_for([] { return !platform::IsDialogLoaded(u"frmSpelling"); }))
        << "it asks about " << asked_.back().toStdString();
    EXPECT_TRUE(answers_.empty());
    hands::give_focus(*window_);
    ASSERT_TRUE(settle());
  }
  static Answer keys(const QString& pressed) {
    return [pressed](QDialog&) { hands::press(pressed); };
  }
  static QString word_in(const QDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("txtOriginal"))->text();
  }

  /// The words with a wave, as the page has them.
  std::string waves() { return in_page(QStringLiteral("tvxView.marked().join()")); }
  bool has_waves(const std::string& words) {
    return wait_for([&] { return waves() == words; });
  }
  /// How much of the screen has the waves' colour.
  int wave_pixels() {
    const QImage image = window_->screen()->grabWindow(0).toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor colour = image.pixelColor(x, y);
        if (colour.red() > 200 && colour.green() < 90 && colour.blue() < 90) ++count;
      }
    return count;
  }

  std::vector<QString> asked_;

 private:
  void answer_next() {
    if (answers_.empty()) return;
    answer_dialog([this](QDialog& dialog) {
      const Answer answer = std::move(answers_.front());
      answers_.pop_front();
      asked_.push_back(word_in(dialog));
      answer(dialog);
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); })) << asked_.back().toStdString();
      answer_next();
    });
  }
  std::deque<Answer> answers_;
};

TEST_F(SpellingOnScreen, ThreeLanguagesAreCheckedFromStartToEndAndUndoneWordByWord) {
  const std::string before =
      "<P>The wrold is <B>rounnd</B>, says Zaphodia.</P>"
      "<P lang=\"de\">Die Wlet ist ein Tollhaus, sagt Zaphodia. Vielleicth.</P>"
      "<P lang=\"fr\">Le mondde est <I>gr</I>annd, et l'\xC3\xA9t\xC3\xA9 aussi.</P>";
  start("<body>" + QByteArray::fromStdString(before));
  check({keys("Return"),        // wrold: the first suggestion
         [](QDialog& dialog) {  // rounnd: typed
           hands::type("flat");
           ASSERT_TRUE(wait_for([&] { return word_in(dialog) == "flat"; }));
           hands::press("Return");
         },
         [](QDialog& dialog) {  // Zaphodia is a name
           auto* add = dialog.findChild<QPushButton*>(QStringLiteral("cmdAddWord"));
           ASSERT_TRUE(add && add->isEnabled());
           hands::click(middle_of(*add));
         },
         [](QDialog& dialog) {  // Wlet: a double click on "Welt"
           auto* list = dialog.findChild<QListWidget*>(QStringLiteral("lstSuggestions"));
           const auto found = list->findItems(QStringLiteral("Welt"), Qt::MatchExactly);
           ASSERT_FALSE(found.empty());
           const QPoint at = list->viewport()->mapToGlobal(list->visualItemRect(found[0]).center());
           hands::click(at);
           hands::click(at);
         },
         keys("Return"),    // Vielleicth
         keys("Return"),    // mondde
         keys("Escape")});  // grannd: ignored
  EXPECT_EQ(asked_,
            (std::vector<QString>{"wrold", "rounnd", "Zaphodia", "Wlet", "Vielleicth", "mondde", "grannd"}))
      << "a word that was added is right from then on";
  EXPECT_EQ(html(),
            "<P>The world is <B>flat</B>, says Zaphodia.</P>"
            "<P lang=\"de\">Die Welt ist ein Tollhaus, sagt Zaphodia. Vielleicht.</P>"
            "<P lang=\"fr\">Le monde est <I>gr</I>annd, et l'\xC3\xA9t\xC3\xA9 aussi.</P>");
  EXPECT_EQ(file(QStringLiteral("data/tvxHTML/words.txt")), "Zaphodia\n");
  EXPECT_TRUE(has_waves("gr,annd")) << "what was added has none: " << waves();

  hands::press("ctrl+z");
  ASSERT_TRUE(wait_for([this] { return text().find("mondde") != std::string::npos; }));
  EXPECT_NE(text().find("Vielleicht"), std::string::npos) << "one word a step";
  for (const char* word : {"Vielleicth", "Wlet", "rounnd", "wrold"}) {
    EXPECT_EQ(text().find(word), std::string::npos);
    hands::press("ctrl+z");
    ASSERT_TRUE(wait_for([&] { return text().find(word) != std::string::npos; })) << word;
  }
  EXPECT_EQ(html(), before);
  EXPECT_FALSE(document().tree().journal().can_undo());
}

TEST_F(SpellingOnScreen, TheWordIsNeverUnderTheDialog) {
  QByteArray page = "<body>";
  for (int i = 0; i < 60; ++i) page += "<p>Some words, and one that is wrrong in each of them.</p>";
  start(page);
  const auto in_sight = [this](const QDialog& dialog) {
    const QString box = QStringLiteral(
        "(() => { const r = getSelection().getRangeAt(0).getBoundingClientRect();"
        "return [r.left, r.top, r.width, r.height].map(Math.round).join(' '); })()");
    const QWidget& page = *window_->editor().view().input_widget();
    return wait_for([&] {
      const QStringList numbers = QString::fromStdString(in_page(box)).split(' ');
      if (numbers.size() != 4) return false;
      const QRect word(page.mapToGlobal(QPoint(numbers[0].toInt(), numbers[1].toInt())),
                       QSize(numbers[2].toInt(), numbers[3].toInt()));
      const QRect window(page.mapToGlobal(QPoint(0, 0)), page.size());
      return word.width() > 10 && window.contains(word) && !word.intersects(dialog.frameGeometry());
    });
  };
  std::deque<Answer> answers;
  for (int i = 0; i < 60; ++i)
    answers.emplace_back([&, i](QDialog& dialog) {
      if (i % 10 == 0 || i > 56) {
        EXPECT_TRUE(in_sight(dialog)) << i;
      }
      // The user puts it aside, over the lines in the middle.
      if (i == 30) {
        dialog.move(window_->pos() + QPoint(80, window_->height() / 2 - 200));
        EXPECT_TRUE(in_sight(dialog)) << "moved";
      }
      if (i == 31) {
        EXPECT_LT(dialog.frameGeometry().top(), window_->geometry().center().y()) << "it stays there";
      }
      hands::press("Escape");
    });
  check(std::move(answers));
  EXPECT_EQ(asked_.size(), 60u);
}

TEST_F(SpellingOnScreen, AMendedWordHasNoWaveAnyMore) {
  start("<body style='margin:40px'><p>one wrrong word</p>");
  ASSERT_TRUE(has_waves("wrrong"));
  ASSERT_TRUE(wait_for([this] { return wave_pixels() > 10; }));
  answer_menu([](QWidget& menu) { choose_by_keys(menu, QStringLiteral("wrong")); });
  hands::click(place_of_character(QStringLiteral("p"), 6), 3);
  ASSERT_TRUE(wait_for([this] { return text() == "one wrong word"; })) << text();
  ASSERT_TRUE(has_waves(""));
  EXPECT_TRUE(QTest::qWaitFor([this] { return wave_pixels() == 0; }, 3000)) << wave_pixels();
}

TEST_F(SpellingOnScreen, AWordIsAddedByTheMenu) {
  start("<body style='margin:40px'><p>one Zaphodia and another Zaphodia</p>");
  ASSERT_TRUE(has_waves("Zaphodia,Zaphodia")) << waves();
  answer_menu([](QWidget& menu) { choose_by_keys(menu, QStringLiteral("Add to dictionary")); });
  hands::click(place_of_character(QStringLiteral("p"), 6), 3);
  ASSERT_TRUE(wait_for([this] { return waves().empty(); })) << waves();
  EXPECT_EQ(file(QStringLiteral("data/tvxHTML/words.txt")), "Zaphodia\n");
  EXPECT_TRUE(QTest::qWaitFor([this] { return wave_pixels() == 0; }, 3000)) << wave_pixels();
}

TEST_F(SpellingOnScreen, ALongRunShowsHowFarItIsAndIsEnded) {
  // A million words take long on any machine. In few paragraphs: those are what takes the page its time. A
  // run that nobody has ended asks about the last word.
  const QByteArray paragraph =
      "<p>" + QByteArray("Some words that are all right in each of the many lines here. ").repeated(200);
  start("<body>" + paragraph.repeated(400) + "<p>wrrong");
  control().set_CheckSpellingAsYouType(false);
  bool seen = false, alive = false, hidden = false;
  answer_dialog([&](QDialog& dialog) {
    seen = dialog.objectName() == "frmSpellingProgress";
    QTimer::singleShot(0, &dialog, [&] { alive = true; });
    wait_for([&] { return alive; });
    const QPointer<QDialog> shown(&dialog);  // it goes once it is hidden
    hands::press("Escape");
    hidden = wait_for([&] { return !shown || !shown->isVisible(); });
  });
  hands::press("F7");
  ASSERT_TRUE(wait_for([&] { return seen; }));
  ASSERT_TRUE(wait_for([] { return !platform::IsDialogLoaded(u"frmSpelling"); }));
  EXPECT_TRUE(alive);
  EXPECT_TRUE(hidden);
}

}  // namespace
}  // namespace tvx::x11
