#include "tvx/browser/input/input_queue.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

/// Writes down what reaches it. Keys named "Arrow..." ask a question.
class InputQueueTest : public testing::Test, public InputHandler {
 protected:
  std::optional<QuestionId> handle_key(const ViewKey& key) override {
    log_ += to_utf8(key.key.key) + (key.down ? " " : "^ ");
    if (during_) during_();
    if (!key.down || !key.key.key.starts_with(u"Arrow")) return {};
    return QuestionId(++asked_);
  }
  void handle_text(const ViewText& input) override { log_ += "(" + to_utf8(input.text) + ") "; }
  void handle_drag(const ViewDrag& drag) override {
    log_ += drag.phase == ViewDrag::Phase::Begin ? "drag " : "dropped ";
  }
  std::optional<QuestionId> handle_drop(const ViewDrop& drop) override {
    log_ += "<" + to_utf8(drop.data.text) + "> ";
    return {};
  }
  std::optional<QuestionId> handle_mouse(const ViewTicket& ticket,
                                         const std::vector<ViewMouse>& reports) override {
    log_ += ticket.type == ViewTicket::Type::Press ? "press:" : "release:";
    for (const ViewMouse& mouse : reports) log_ += std::to_string(int(mouse.element)) + ",";
    log_ += " ";
    return {};
  }
  void handle_select(const ViewSelect& select) override {
    log_ += "select:" + std::to_string(select.focus.offset) + " ";
  }
  std::optional<QuestionId> handle_answer(const ViewAnswer* answer) override {
    log_ += answer ? "answer " : "none ";
    return {};
  }

  QuestionId ask_for_ping() override {
    log_ += "ping? ";
    return ping_ = QuestionId(1000 + ++pings_);
  }
  void give_ping() { queue_.answer({.id = ping_}); }

  void key(std::u16string name) { queue_.push(ViewKey{{.key = std::move(name)}}); }
  void press(int x) { queue_.push(ViewTicket{.x = x}); }
  void release(int x) { queue_.push(ViewTicket{.type = ViewTicket::Type::Release, .x = x}); }
  void tell(ViewMouse::Type type, int x, unsigned element) {
    queue_.reported({.type = type, .x = x, .element = dom::NodeId(element)});
  }
  std::string take() {
    loop_.settle();
    return std::exchange(log_, {});
  }

  headless::VirtualTimeLoop loop_;
  InputQueue queue_{loop_, *this};
  std::string log_;
  unsigned asked_ = 0, pings_ = 0;
  QuestionId ping_{};
  std::function<void()> during_;
};

TEST_F(InputQueueTest, NothingHappensWithinTheCallThatBringsInput) {
  key(u"a");
  EXPECT_EQ(log_, "");
  EXPECT_EQ(take(), "a ");
}

TEST_F(InputQueueTest, KeysWaitForThePressBeforeThem) {
  key(u"a");
  press(5);
  key(u"b");
  EXPECT_EQ(take(), "a ");
  tell(ViewMouse::Type::Press, 5, 7);
  EXPECT_EQ(take(), "press:7, b ");
  EXPECT_TRUE(queue_.idle());
}

TEST_F(InputQueueTest, AViewThatLivesAndTellsNothingHasNothingToTell) {
  press(5);
  key(u"b");
  EXPECT_EQ(take(), "");
  loop_.pass(249);
  EXPECT_EQ(take(), "");
  loop_.pass(1);
  EXPECT_EQ(take(), "ping? ");
  give_ping();
  EXPECT_EQ(take(), "press: b ");
  tell(ViewMouse::Type::Press, 5, 7);
  EXPECT_EQ(take(), "") << "the last caret holds, and the late answer is dropped";
}

TEST_F(InputQueueTest, ABusyViewIsWaitedFor) {
  press(5);
  key(u"b");
  take();
  loop_.pass(900);
  EXPECT_EQ(take(), "ping? ");
  tell(ViewMouse::Type::Press, 5, 7);
  give_ping();
  EXPECT_EQ(take(), "press:7, b ");
}

TEST_F(InputQueueTest, ASignThatComesLateMeansNoOtherPress) {
  press(5);
  take();
  loop_.pass(300);
  EXPECT_EQ(take(), "ping? ");
  tell(ViewMouse::Type::Press, 5, 7);
  EXPECT_EQ(take(), "press:7, ");
  press(60);
  key(u"b");
  give_ping();
  EXPECT_EQ(take(), "");
  tell(ViewMouse::Type::Press, 60, 8);
  EXPECT_EQ(take(), "press:8, b ");
}

TEST_F(InputQueueTest, TheTimeThatTheEditorIsBusyItselfIsNotTheViewsFault) {
  press(5);
  key(u"b");
  take();
  loop_.pass(5000);  // within one turn
  EXPECT_EQ(take(), "ping? ");
  tell(ViewMouse::Type::Press, 5, 7);
  EXPECT_EQ(take(), "press:7, b ");
}

TEST_F(InputQueueTest, PatienceHasAnEndAndComesBackWithTheView) {
  press(5);
  key(u"b");
  take();
  loop_.pass(250);
  EXPECT_EQ(take(), "ping? ");
  loop_.pass(1749);
  EXPECT_EQ(take(), "");
  loop_.pass(1);
  EXPECT_EQ(take(), "press: b ");
  press(60);
  key(u"c");
  loop_.pass(250);
  EXPECT_EQ(take(), "press: c ") << "nothing was heard since";
  tell(ViewMouse::Type::Press, 60, 8);
  EXPECT_EQ(take(), "");
  press(90);
  loop_.pass(250);
  EXPECT_EQ(take(), "ping? ");
  give_ping();
  EXPECT_EQ(take(), "press: ");
}

TEST_F(InputQueueTest, AQuestionHoldsBackWhatComesLater) {
  key(u"ArrowDown");
  key(u"a");
  queue_.push(ViewText{u"text"});
  EXPECT_EQ(take(), "ArrowDown ");
  queue_.answer({.id = QuestionId(99)});
  EXPECT_EQ(take(), "");
  queue_.answer({.id = QuestionId(1)});
  EXPECT_EQ(take(), "answer a (text) ");
}

TEST_F(InputQueueTest, AQuestionHasADeadline) {
  key(u"ArrowDown");
  key(u"a");
  take();
  loop_.pass(1999);
  EXPECT_EQ(take(), "");
  loop_.pass(1);
  EXPECT_EQ(take(), "none a ");
  key(u"ArrowDown");
  EXPECT_EQ(take(), "ArrowDown ");
  loop_.pass(250);
  EXPECT_EQ(take(), "none ") << "nothing was heard since";
  queue_.answer({.id = QuestionId(1)});
  EXPECT_EQ(take(), "");
}

TEST_F(InputQueueTest, TheDeathOfTheViewAnswersAllWithNothing) {
  key(u"ArrowDown");
  key(u"a");
  press(1);
  key(u"b");
  take();
  queue_.end_waiting();
  EXPECT_EQ(take(), "none a press: b ");
}

TEST_F(InputQueueTest, AClickComesWithItsRelease) {
  press(1);
  release(1);
  key(u"a");
  tell(ViewMouse::Type::Press, 1, 3);
  EXPECT_EQ(take(), "press:3, ");
  tell(ViewMouse::Type::Release, 1, 3);
  tell(ViewMouse::Type::Click, 1, 3);
  EXPECT_EQ(take(), "release:3,3, a ");
}

TEST_F(InputQueueTest, ASwallowedPressDoesNotShiftTheOnesBehindIt) {
  press(1);  // on a scroll bar: the page tells nothing
  press(50);
  tell(ViewMouse::Type::Press, 50, 8);
  EXPECT_EQ(take(), "");
  loop_.pass(250);
  EXPECT_EQ(take(), "ping? ");
  give_ping();
  EXPECT_EQ(take(), "press: press:8, ");
}

TEST_F(InputQueueTest, ADragsSelectionComesBeforeItsRelease) {
  press(1);
  tell(ViewMouse::Type::Press, 1, 3);
  release(9);
  key(u"a");
  queue_.push(ViewSelect{.focus = {.offset = 4}});
  tell(ViewMouse::Type::Release, 9, 3);
  EXPECT_EQ(take(), "press:3, select:4 release:3, a ");
}

TEST_F(InputQueueTest, AHandlerThatWaitsHoldsTheKeysBack) {
  during_ = [this] {
    during_ = nullptr;
    key(u"b");
    loop_.pump(10);
    log_ += "| ";
  };
  key(u"a");
  key(u"c");
  EXPECT_EQ(take(), "a | c b ");
}

TEST_F(InputQueueTest, AnExceptionOfAHandlerLosesNoKey) {
  during_ = [this] {
    during_ = nullptr;
    throw std::runtime_error("host");
  };
  key(u"a");
  key(u"b");
  EXPECT_THROW(loop_.settle(), std::runtime_error);
  EXPECT_EQ(take(), "a b ");
}

// Whatever the view does with its answers, each item is handled once and in order.
TEST_F(InputQueueTest, NoInputIsLostOrReordered) {
  for (unsigned seed = 1; seed <= 50; ++seed) {
    std::mt19937 random(seed);
    std::string expected;
    int x = 0;
    for (int i = 0; i < 200; ++i) {
      const auto kind = random() % 6;
      if (kind == 0) {
        x += 10;
        press(x);
        expected += "press ";
      } else {
        const std::u16string name = kind == 1 ? u"ArrowUp" : std::u16string(1, u'a' + random() % 26);
        key(name);
        expected += to_utf8(name) + " ";
      }
      if (random() % 4 == 0) {
        loop_.pass(random() % 300);
        loop_.settle();
      }
      if (random() % 3 == 0) tell(ViewMouse::Type::Press, x, 1);
      if (random() % 2 == 0) queue_.answer({.id = QuestionId(asked_)});
      if (random() % 2 == 0) give_ping();
    }
    for (int i = 0; i < 4000 && !queue_.idle(); ++i) {
      loop_.pass(300);
      loop_.settle();
    }
    EXPECT_TRUE(queue_.idle());
    std::string got;
    for (std::size_t at = 0; at < log_.size();) {
      const std::size_t end = log_.find(' ', at);
      std::string word = log_.substr(at, end - at);
      at = end + 1;
      if (word.starts_with("press:")) word = "press";
      if (word != "answer" && word != "none" && word != "ping?") got += word + " ";
    }
    EXPECT_EQ(got, expected) << "seed " << seed;
    log_.clear();
  }
}

}  // namespace
}  // namespace tvx::browser
