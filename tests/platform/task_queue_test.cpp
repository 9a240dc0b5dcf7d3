#include "tvx/platform/task_queue.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::platform {
namespace {

class Queue : public testing::Test {
 protected:
  TaskQueue::Task say(std::string word) {
    return [this, word] { said += word; };
  }
  void pump(std::int64_t time = 0) {
    queue.bring_due(time);
    const std::uint64_t end = queue.end();
    while (auto task = queue.take_before(end)) (*task)();
  }

  TaskQueue queue;
  std::string said;
};

TEST_F(Queue, RunsInTheOrderOfPosting) {
  queue.post(say("a"));
  queue.post(say("b"));
  pump();
  EXPECT_EQ(said, "ab");
  EXPECT_FALSE(queue.has_pending());
}

TEST_F(Queue, WhatIsPostedMeanwhileWaitsForTheNextPump) {
  queue.post([this] {
    said += "a";
    queue.post(say("c"));
  });
  queue.post(say("b"));
  pump();
  EXPECT_EQ(said, "ab");
  pump();
  EXPECT_EQ(said, "abc");
}

TEST_F(Queue, ANestedPumpTakesTheTasksBehind) {
  queue.post([this] {
    said += "(";
    queue.post(say("c"));
    pump();
    said += ")";
  });
  queue.post(say("b"));
  pump();
  EXPECT_EQ(said, "(bc)");
}

TEST_F(Queue, DelayedTasksComeByTheirTimeThenByTheirAge) {
  queue.post_at(20, say("c"));
  queue.post_at(10, say("a"));
  queue.post_at(10, say("b"));
  EXPECT_EQ(queue.next_time(), 10);
  pump(9);
  EXPECT_EQ(said, "");
  pump(10);
  EXPECT_EQ(said, "ab");
  pump(20);
  EXPECT_EQ(said, "abc");
  EXPECT_EQ(queue.next_time(), std::nullopt);
}

TEST_F(Queue, ACancelledTaskNeverRuns) {
  const TimerId timer = queue.post_at(10, say("x"));
  queue.cancel(timer);
  queue.cancel(timer);
  EXPECT_EQ(queue.next_time(), std::nullopt);
  pump(10);
  EXPECT_EQ(said, "");
}

TEST_F(Queue, ADueTaskCanStillBeCancelled) {
  TimerId second = TimerId::none;
  queue.post_at(10, [&] { queue.cancel(second); });
  second = queue.post_at(10, say("x"));
  queue.post_at(10, say("y"));
  pump(10);
  EXPECT_EQ(said, "y");
}

TEST_F(Queue, CancellingWhatHasRunOrNeverWasIsNoError) {
  const TimerId timer = queue.post_at(10, say("x"));
  pump(10);
  queue.cancel(timer);
  queue.cancel(TimerId::none);
  EXPECT_EQ(said, "x");
}

}  // namespace
}  // namespace tvx::platform
