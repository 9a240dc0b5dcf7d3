#include "tvx/headless/message_loop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <thread>

namespace tvx::headless {
namespace {

class Loop : public testing::Test {
 protected:
  platform::MessageLoop::Task say(std::string word) {
    return [this, word] { said += word; };
  }

  MessageLoop loop;
  std::string said;
};

class Pipe {
 public:
  Pipe() {
    if (pipe(ends_) != 0) ADD_FAILURE();
  }
  ~Pipe() {
    close(ends_[0]);
    finish();
  }
  int reader() const { return ends_[0]; }
  void put(std::string_view text) const {
    EXPECT_EQ(write(ends_[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  std::string take() const {
    char buffer[64];
    const ssize_t got = read(ends_[0], buffer, sizeof buffer);
    return {buffer, static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
  }
  void finish() {
    if (ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  int ends_[2] = {-1, -1};
};

TEST_F(Loop, RunsTasksInOrderAndOnce) {
  loop.post(say("a"));
  loop.post(say("b"));
  loop.pump(10'000);
  loop.pump(0);
  EXPECT_EQ(said, "ab");
}

TEST_F(Loop, TasksKeepTheirOrderInNestedPumps) {
  loop.post([this] {
    said += "(";
    loop.post(say("c"));
    loop.pump(0);
    said += ")";
  });
  loop.post(say("b"));
  loop.pump(0);
  EXPECT_EQ(said, "(bc)");
}

TEST_F(Loop, ATaskThatPostsItselfDoesNotHoldThePump) {
  int runs = 0;
  std::function<void()> again = [&] {
    ++runs;
    loop.post(again);
  };
  loop.post(again);
  loop.pump(0);
  loop.pump(0);
  EXPECT_EQ(runs, 2);
}

TEST_F(Loop, WaitsForATimerAndNoLonger) {
  const std::int64_t start = loop.now();
  loop.post_delayed(5, say("x"));
  for (int i = 0; i < 10 && said.empty(); ++i) loop.pump(10'000);
  EXPECT_EQ(said, "x");
  EXPECT_GE(loop.now() - start, 5);
  EXPECT_LT(loop.now() - start, 9'000);
}

TEST_F(Loop, WaitsForNothingNoLongerThanTold) {
  const std::int64_t start = loop.now();
  loop.pump(5);
  EXPECT_GE(loop.now() - start, 4);
  loop.pump(-1);
}

TEST_F(Loop, ACancelledTimerNeverRuns) {
  const auto timer = loop.post_delayed(1, say("x"));
  loop.cancel(timer);
  loop.pump(3);
  EXPECT_EQ(said, "");
}

TEST_F(Loop, IsWokenFromAnotherThread) {
  std::thread other([this] { loop.post(say("x")); });
  for (int i = 0; i < 10 && said.empty(); ++i) loop.pump(10'000);
  other.join();
  EXPECT_EQ(said, "x");
}

TEST_F(Loop, AnExceptionLeavesTheTasksBehindIt) {
  loop.post([] { throw std::runtime_error("handler"); });
  loop.post(say("x"));
  EXPECT_THROW(loop.pump(0), std::runtime_error);
  loop.pump(0);
  EXPECT_EQ(said, "x");
}

TEST_F(Loop, WatchesADescriptor) {
  const Pipe pipe;
  loop.watch(pipe.reader(), [&] { said += pipe.take(); });
  loop.pump(0);
  EXPECT_EQ(said, "");
  pipe.put("one");
  loop.pump(10'000);
  pipe.put("two");
  loop.pump(10'000);
  EXPECT_EQ(said, "onetwo");
  loop.unwatch(pipe.reader());
  pipe.put("three");
  loop.pump(0);
  EXPECT_EQ(said, "onetwo");
}

TEST_F(Loop, AWatcherIsNotCalledInsideItself) {
  const Pipe pipe;
  int depth = 0;
  loop.watch(pipe.reader(), [&] {
    EXPECT_EQ(++depth, 1);
    said += pipe.take();
    pipe.put("y");
    loop.post(say("-"));
    loop.pump(0);
    loop.pump(0);
    --depth;
  });
  pipe.put("x");
  loop.pump(10'000);
  EXPECT_EQ(said, "x-");
  loop.pump(10'000);
  EXPECT_EQ(said, "x-y-");
}

TEST_F(Loop, AFailedWatcherIsCalledAgain) {
  const Pipe pipe;
  pipe.put("x");
  loop.watch(pipe.reader(), [&] {
    said += pipe.take();
    throw std::runtime_error("handler");
  });
  EXPECT_THROW(loop.pump(10'000), std::runtime_error);
  pipe.put("y");
  EXPECT_THROW(loop.pump(10'000), std::runtime_error);
  EXPECT_EQ(said, "xy");
}

TEST_F(Loop, AWatcherMayTakeItselfAwayAtTheEnd) {
  Pipe pipe;
  pipe.finish();
  loop.watch(pipe.reader(), [&] {
    said += pipe.take().empty() ? "end" : "more";
    loop.unwatch(pipe.reader());
    loop.pump(0);
  });
  loop.pump(10'000);
  loop.pump(0);
  EXPECT_EQ(said, "end");
}

TEST_F(Loop, ANewWatcherTakesTheOldOnesPlaceAlsoWhereReadingWasPending) {
  const Pipe pipe;
  pipe.put("x");
  loop.watch(pipe.reader(), say("old"));
  loop.post([&] { loop.watch(pipe.reader(), [&] { said += "new" + pipe.take(); }); });
  loop.pump(10'000);
  for (int i = 0; i < 3; ++i) loop.pump(0);
  EXPECT_EQ(said, "newx");
}

TEST_F(Loop, RunsUntilItIsToldToQuit) {
  loop.post([this] {
    loop.post([this] {
      said += "inner";
      loop.quit();
    });
    loop.run();
    loop.post([this] {
      said += " outer";
      loop.quit();
    });
  });
  loop.run();
  EXPECT_EQ(said, "inner outer");
}

}  // namespace
}  // namespace tvx::headless
