#include "tvx/services/wait.h"

#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "tvx/platform/message_loop.h"

namespace tvx::services {
namespace {

/// A loop whose clock moves as told: each pump takes the next of `ticks`.
class ScriptedLoop : public platform::MessageLoop {
 public:
  std::int64_t now() const override { return time; }
  void post(Task) override {}
  platform::TimerId post_delayed(std::int64_t, Task) override { return platform::TimerId::none; }
  void cancel(platform::TimerId) override {}
  bool non_modal_allowed() const override { return allowed; }
  void pump(std::int64_t max_wait) override {
    waits.push_back(max_wait);
    if (waits.size() == forbid_after) allowed = false;
    ASSERT_FALSE(ticks.empty()) << "waits on after its time";
    time += ticks.front();
    ticks.pop_front();
  }

  std::deque<std::int64_t> ticks;
  std::vector<std::int64_t> waits;
  std::size_t forbid_after = 0;
  bool allowed = true;
  std::int64_t time = 1'000;
};

using Waits = std::vector<std::int64_t>;

TEST(Wait, EndsWhenItsTimeIsOver) {
  ScriptedLoop loop;
  loop.ticks = {5};
  Wait(loop, 5);
  EXPECT_EQ(loop.waits, Waits({5}));
}

TEST(Wait, GoesOnWithWhatIsLeftAfterEachMessage) {
  ScriptedLoop loop;
  loop.ticks = {2, 0, 7, 1, 5};
  Wait(loop, 15);
  EXPECT_EQ(loop.waits, Waits({15, 13, 13, 6, 5}));
}

TEST(Wait, EndsLateAfterALongHandler) {
  ScriptedLoop loop;
  loop.ticks = {3, 400};
  Wait(loop, 5);
  EXPECT_EQ(loop.waits, Waits({5, 2}));
}

TEST(Wait, TakesAClockThatGoesBackwardsForOneThatStands) {
  ScriptedLoop loop;
  loop.ticks = {4, -500, 3, 3};
  Wait(loop, 10);
  EXPECT_EQ(loop.waits, Waits({10, 6, 6, 3}));
}

TEST(Wait, ReturnsAtOnceWhereOnlyModalWindowsAreAllowed) {
  ScriptedLoop loop;
  loop.allowed = false;
  Wait(loop, 5'000);
  EXPECT_EQ(loop.waits, Waits());
}

TEST(Wait, LooksAgainBeforeEachRound) {
  ScriptedLoop loop;
  loop.forbid_after = 2;
  loop.ticks = {1, 1};
  Wait(loop, 5'000);
  EXPECT_EQ(loop.waits, Waits({5'000, 4'999}));
}

TEST(Wait, NoTimeIsNoWait) {
  ScriptedLoop loop;
  Wait(loop, 0);
  Wait(loop, -5);
  EXPECT_EQ(loop.waits, Waits());
}

}  // namespace
}  // namespace tvx::services
