#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

#include "tvx/platform/message_loop.h"

/// What every message loop does.
namespace tvx::contract {

template <class Loop>
class MessageLoopContract : public testing::Test {
 protected:
  platform::MessageLoop::Task say(std::string word) {
    return [this, word] { said += word; };
  }
  /// Pumps until something was said, or for ten seconds at most.
  void wait() {
    const std::int64_t end = loop().now() + 10'000;
    while (said.empty() && loop().now() < end) loop().pump(100);
  }
  platform::MessageLoop& loop() { return loop_; }

  Loop loop_;
  std::string said;
};

TYPED_TEST_SUITE_P(MessageLoopContract);

TYPED_TEST_P(MessageLoopContract, RunsTasksInOrderAndOnce) {
  this->loop().post(this->say("a"));
  this->loop().post(this->say("b"));
  EXPECT_EQ(this->said, "") << "never within the call";
  this->loop().pump(10'000);
  this->loop().pump(0);
  EXPECT_EQ(this->said, "ab");
}

TYPED_TEST_P(MessageLoopContract, TasksKeepTheirOrderInNestedPumps) {
  this->loop().post([this] {
    this->said += "(";
    this->loop().post(this->say("c"));
    this->loop().pump(0);
    this->said += ")";
  });
  this->loop().post(this->say("b"));
  this->loop().pump(0);
  EXPECT_EQ(this->said, "(bc)");
}

TYPED_TEST_P(MessageLoopContract, ATaskThatPostsItselfDoesNotHoldThePump) {
  int runs = 0;
  std::function<void()> again = [&] {
    if (++runs < 100) this->loop().post(again);
  };
  this->loop().post(again);
  this->loop().pump(0);
  EXPECT_LT(runs, 100);
  for (int i = 0; i < 200 && runs < 100; ++i) this->loop().pump(0);
  EXPECT_EQ(runs, 100);
}

TYPED_TEST_P(MessageLoopContract, ADelayedTaskRunsOnceWhenItsTimeIsOver) {
  const std::int64_t start = this->loop().now();
  this->loop().post_delayed(20, this->say("late"));
  this->loop().post_delayed(5, this->say("early "));
  this->loop().pump(0);
  EXPECT_EQ(this->said, "");
  for (int i = 0; i < 100 && this->said.size() < 10; ++i) this->loop().pump(1'000);
  EXPECT_EQ(this->said, "early late");
  EXPECT_GE(this->loop().now() - start, 20);
}

TYPED_TEST_P(MessageLoopContract, ACancelledTaskNeverRunsAlsoOneThatIsDue) {
  const auto timer = this->loop().post_delayed(1, this->say("x"));
  platform::TimerId due{};
  this->loop().post([&] { this->loop().cancel(due); });
  due = this->loop().post_delayed(0, this->say("due"));
  this->loop().cancel(timer);
  this->loop().cancel(timer);
  for (int i = 0; i < 5; ++i) this->loop().pump(5);
  EXPECT_EQ(this->said, "");
}

TYPED_TEST_P(MessageLoopContract, WaitsNoLongerThanAskedFor) {
  // The desktop's own events may end a wait early; a loop that didn't wait at all would pump without end.
  const std::int64_t start = this->loop().now();
  int pumps = 0;
  for (; this->loop().now() - start < 20 && pumps < 100; ++pumps) this->loop().pump(5);
  EXPECT_LT(pumps, 100);
  EXPECT_LT(this->loop().now() - start, 5'000);
  this->loop().pump(-1);
}

TYPED_TEST_P(MessageLoopContract, TakesTasksFromOtherThreads) {
  const auto mine = std::this_thread::get_id();
  std::thread::id ran_in;
  std::thread other([&] {
    this->loop().post([&] {
      ran_in = std::this_thread::get_id();
      this->said = "x";
    });
  });
  other.join();
  this->wait();
  EXPECT_EQ(ran_in, mine);
}

TYPED_TEST_P(MessageLoopContract, AnExceptionLeavesThePumpAndTheTasksAfterIt) {
  this->loop().post([] { throw std::runtime_error("handler"); });
  this->loop().post(this->say("x"));
  EXPECT_THROW(this->loop().pump(0), std::runtime_error);
  this->loop().pump(0);
  EXPECT_EQ(this->said, "x");
}

REGISTER_TYPED_TEST_SUITE_P(MessageLoopContract, RunsTasksInOrderAndOnce, TasksKeepTheirOrderInNestedPumps,
                            ATaskThatPostsItselfDoesNotHoldThePump, ADelayedTaskRunsOnceWhenItsTimeIsOver,
                            ACancelledTaskNeverRunsAlsoOneThatIsDue, WaitsNoLongerThanAskedFor,
                            TakesTasksFromOtherThreads, AnExceptionLeavesThePumpAndTheTasksAfterIt);

}  // namespace tvx::contract
