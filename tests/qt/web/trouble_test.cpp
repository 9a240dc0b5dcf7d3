#include <signal.h>

#include <QDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QWebEnginePage>
#include <iostream>
#include <random>

#include "qt/real_view.h"
#include "tvx/base/strings.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/services/wait.h"

namespace tvx::qt {
namespace {

/// Writes down the order in which input reaches the document's control.
class Ear final : public browser::DocumentHandler {
 public:
  explicit Ear(browser::HTMLDocument& document) : document_(document) { document.connect(this); }
  ~Ear() override { document_.connect(nullptr); }
  void onkeydown() override {
    heard_.push_back(document_.event()->key_code);
    run("keydown");
  }
  bool onkeypress() override { return run("keypress"); }
  void onkeyup() override { run("keyup"); }
  void onmousedown() override {
    heard_.push_back(-1);
    run("mousedown");
  }
  bool onclick() override { return run("click"); }
  void onselectionchange() override { run("selectionchange"); }

  std::vector<int> heard_;
  std::function<void(const std::string&)> act_;

 private:
  bool run(const std::string& kind) {
    if (act_) act_(kind);
    return true;
  }
  browser::HTMLDocument& document_;
};

class Trouble : public RealView {
 protected:
  void signal_view(int signal) {
    const auto pid = static_cast<pid_t>(view_->page()->renderProcessPid());
    ASSERT_GT(pid, 1);
    ASSERT_EQ(::kill(pid, signal), 0);
  }
  std::string text_shown() { return in_page("document.body.innerText"); }
  dom::Node& first_text() { return *document_->body()->first_child()->first_child(); }
};

TEST_F(Trouble, ABurstOfKeysAndPressesArrivesWholeAndInOrder) {
  open(u"<!DOCTYPE html><p>The first paragraph of this page.</p><p>The second one, a little longer.</p>");
  document_->editor().selection().collapse({&first_text(), 3});
  settle();
  // Never twice at one place: that would be a double click, which selects a word.
  std::vector<QPoint> places;
  for (int i = 0; i < 4; ++i)
    places.insert(places.end(), {place_of("p", 3 + 6 * i), place_of("p + p", 2 + 7 * i)});
  std::size_t next_place = 0;
  Ear ear(*document_);
  std::vector<int> posted;
  std::string letters;
  std::mt19937 random(11);
  for (int i = 0; i < 500; ++i) {
    switch (random() % 12) {
      case 0: post_key(Qt::Key_Up), posted.push_back(38); break;
      case 1: post_key(Qt::Key_Down), posted.push_back(40); break;
      case 2: post_key(Qt::Key_End), posted.push_back(35); break;
      case 3: post_key(Qt::Key_Left), posted.push_back(37); break;
      case 4:
        if (i % 3 == 0) {
          post_press(places[next_place++ % places.size()]);
          posted.push_back(-1);
          break;
        }
        [[fallthrough]];
      default: {
        const char letter = static_cast<char>('a' + random() % 26);
        post_text(std::string(1, letter));
        posted.push_back(letter - 32);
        letters += letter;
      }
    }
  }
  ASSERT_TRUE(settle(60'000));
  EXPECT_EQ(ear.heard_, posted);
  const std::string before = "The first paragraph of this page.The second one, a little longer.";
  EXPECT_EQ(in_page("document.body.textContent").size(), before.size() + letters.size());
  EXPECT_EQ(shown(), expected());
}

TEST_F(Trouble, TheViewAnswersUnderAMenuADialogAndAWaitFromEachKindOfEvent) {
  open(u"<!DOCTYPE html><p>Some words to press on.</p>");
  const QPoint point = place_of("p", 5);
  Ear ear(*document_);
  int number = 0;
  for (const std::string kind : {"keydown", "keypress", "keyup", "mousedown", "click", "selectionchange"}) {
    for (const std::string way : {"menu", "dialog", "wait"}) {
      const std::string mark = "mark" + std::to_string(++number);
      bool answered = false, acted = false;
      ear.act_ = [&](const std::string& event) {
        if (event != kind || std::exchange(acted, true)) return;
        auto text = document_->tree().create_text(from_utf8(mark));
        dom::insert(*document_->body(), text);
        if (way == "menu") {
          QMenu menu(window_.get());
          menu.addAction(QStringLiteral("item"));
          QTimer::singleShot(60, &menu, &QMenu::close);
          menu.exec(QPoint(10, 10));
        } else if (way == "dialog") {
          QDialog dialog(window_.get());
          QTimer::singleShot(60, &dialog, &QDialog::accept);
          dialog.exec();
        } else {
          services::Wait(loop_, 60);
        }
        answered = text_shown().find(mark) != std::string::npos;
      };
      post_press(point);
      post_text("k");
      ASSERT_TRUE(settle()) << kind << ", " << way;
      EXPECT_TRUE(acted) << kind << ", " << way;
      EXPECT_TRUE(answered) << kind << ", " << way;
      ear.act_ = nullptr;
    }
  }
  EXPECT_EQ(shown(), expected());
}

TEST_F(Trouble, AKilledProcessLosesNothing) {
  open(u"<!DOCTYPE html><p>one</p><p>two</p>");
  document_->editor().selection().collapse({&first_text(), 3});
  settle();
  const QPoint point = place_of("p + p", 1);
  post_text("a");
  post_key(Qt::Key_Home);  // a question
  post_press(point);       // and a ticket
  post_text("bc");
  signal_view(SIGKILL);
  ASSERT_TRUE(wait_for([&] { return html().find("bc") != std::string::npos; })) << html();
  ASSERT_TRUE(settle());
  EXPECT_NE(html().find('a'), std::string::npos);
  EXPECT_EQ(shown(), expected());
  // The new process takes input as the old one did.
  post_press(place_of("p + p", 0));
  post_text("z");
  ASSERT_TRUE(settle());
  EXPECT_NE(html().find("<P>z"), std::string::npos) << html();
  EXPECT_EQ(shown(), expected());
}

TEST_F(Trouble, AStoppedProcessLosesNothing) {
  open(u"<!DOCTYPE html><p>one</p><p>two</p>");
  document_->editor().selection().collapse({&first_text(), 3});
  settle();
  const QPoint point = place_of("p + p", 1);
  signal_view(SIGSTOP);
  post_text("a");
  post_key(Qt::Key_Down);
  post_text("b");
  post_press(point);
  post_text("c");
  EXPECT_TRUE(wait_for([&] { return html() == "<P>oneabc</P><P>two</P>"; }, 5000)) << html();
  signal_view(SIGCONT);
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>oneabc</P><P>two</P>");  // what comes too late moves no caret
  EXPECT_EQ(shown(), expected());
}

/// Columns within columns: each level lays out the next one several times, without end for who waits for it.
std::u16string page_without_end() {
  std::u16string page = u"<!DOCTYPE html><p>before</p>";
  for (int i = 0; i < 60; ++i)
    page += u"<div style=\"columns:3;column-fill:balance;height:" +
            std::u16string(i % 2 ? u"auto" : u"30em") + u"\">text <span>and</span>";
  return page;
}

TEST_F(Trouble, AProcessThatWorksIsGivenTime) {
  view_->set_heartbeat(200);
  open(u"<!DOCTYPE html><p>one</p>");
  const auto process = view_->page()->renderProcessPid();
  // Longer than one that does nothing may be silent.
  EXPECT_EQ(in_page("(function(){const end = performance.now() + 2000; while (performance.now() < end); "
                    "return 'done';})()"),
            "done");
  EXPECT_EQ(view_->page()->renderProcessPid(), process);
}

TEST_F(Trouble, AProcessThatDoesNothingIsEndedAndTheDocumentComesBack) {
  view_->set_heartbeat(100);
  open(u"<!DOCTYPE html><p>one</p>");
  const auto process = view_->page()->renderProcessPid();
  signal_view(SIGSTOP);
  ASSERT_TRUE(wait_for([&] { return view_->page()->renderProcessPid() != process; }));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(document_view_->shows_notice());
  EXPECT_EQ(shown(), expected());
}

TEST_F(Trouble, ALayoutWithoutEndIsGivenUpAndGoesWithItsContent) {
  view_->set_heartbeat(60);
  open(page_without_end(), false);
  ASSERT_TRUE(wait_for([&] { return document_view_->shows_notice(); }, 60'000));
  EXPECT_TRUE(document_view_->settled());
  open(u"<!DOCTYPE html><p>another</p>");
  EXPECT_FALSE(document_view_->shows_notice());
  EXPECT_EQ(shown(), expected());
  document_->editor().selection().collapse({&first_text(), 0});
  post_text("x");
  ASSERT_TRUE(wait_for([&] { return html() == "<P>xanother</P>"; }, 5000)) << html();
}

TEST_F(Trouble, AnotherContentDoesNotWaitForAProcessThatIsLost) {
  view_->set_heartbeat(200);
  open(page_without_end(), false);
  wait_for([] { return false; }, 800);  // until it is deep in it
  const std::int64_t since = loop_.now();
  open(u"<!DOCTYPE html><p>another</p>");
  EXPECT_LT(loop_.now() - since, 2500) << "sooner than a working process is ended";
  EXPECT_EQ(shown(), expected());
}

TEST_F(Trouble, ThirtyDeathsLoseNoLetter) {
  open(u"<!DOCTYPE html><p>x</p><p>y</p>");
  document_->editor().selection().collapse({&first_text(), 1});
  ASSERT_TRUE(settle());
  std::mt19937 random(5);
  std::string typed;
  for (int death = 0; death < 30; ++death) {
    for (std::size_t letters = 1 + random() % 6; letters > 0; --letters) {
      const std::string letter(1, static_cast<char>('a' + random() % 26));
      post_text(letter);
      typed += letter;
    }
    if (random() % 2) loop_.pump(static_cast<int>(random() % 30));
    signal_view(SIGKILL);
    ASSERT_TRUE(wait_for([&] { return html().find("x" + typed) != std::string::npos; })) << html();
    ASSERT_TRUE(settle());
    // A user who doesn't give up.
    if (document_view_->shows_notice()) view_->widget()->findChild<QPushButton*>()->click();
    ASSERT_TRUE(wait_for([&] { return !document_view_->shows_notice(); }));
    ASSERT_TRUE(settle());
    view_->input_widget()->setFocus();
  }
  std::cout << "[ COUNTED  ] 30 deaths, " << typed.size() << " letters\n";
  EXPECT_EQ(html(), "<P>x" + typed + "</P><P>y</P>");
  EXPECT_EQ(shown(), expected());
}

TEST_F(Trouble, AfterTwoDeathsThereIsANoticeAndAWayBack) {
  open(u"<!DOCTYPE html><p>one</p>");
  signal_view(SIGKILL);
  ASSERT_TRUE(wait_for([&] { return !document_view_->settled(); }, 5000));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(document_view_->shows_notice());
  signal_view(SIGKILL);
  ASSERT_TRUE(wait_for([&] { return document_view_->shows_notice(); }, 5000));
  dom::insert(*document_->body(), document_->tree().create_text(u"more"));
  EXPECT_EQ(html(), "<P>one</P>more");
  auto* again = view_->widget()->findChild<QPushButton*>();
  ASSERT_NE(again, nullptr);
  again->click();
  ASSERT_TRUE(wait_for([&] { return !document_view_->shows_notice(); }, 5000));
  ASSERT_TRUE(settle());
  EXPECT_EQ(shown(), expected());
}

}  // namespace
}  // namespace tvx::qt
