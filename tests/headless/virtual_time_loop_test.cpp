#include "tvx/headless/virtual_time_loop.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::headless {
namespace {

class VirtualTime : public testing::Test {
 protected:
  platform::MessageLoop::Task say(std::string word) {
    return [this, word] { said += word + "@" + std::to_string(loop.now()) + " "; };
  }

  VirtualTimeLoop loop;
  std::string said;
};

TEST_F(VirtualTime, MovesToTheNextTimerWithinTheWait) {
  loop.post_delayed(3'600'000, say("b"));
  loop.post_delayed(10, say("a"));
  loop.pump(100'000);
  EXPECT_EQ(said, "a@10 ");
  loop.pump(100);
  EXPECT_EQ(loop.now(), 110);
  loop.pump(4'000'000);
  EXPECT_EQ(said, "a@10 b@3600000 ");
}

TEST_F(VirtualTime, StandsWhileThereIsSomethingToDo) {
  loop.post(say("a"));
  loop.pump(50);
  EXPECT_EQ(said, "a@0 ");
}

TEST_F(VirtualTime, NeverGoesBackToALateTimer) {
  loop.post_delayed(10, say("a"));
  loop.pass(30);
  loop.pump(50);
  EXPECT_EQ(said, "a@30 ");
}

TEST_F(VirtualTime, SettlesWhatFollowsWithoutWaiting) {
  loop.post([this] { loop.post(say("b")); });
  loop.post_delayed(1, say("later"));
  EXPECT_TRUE(loop.settle());
  EXPECT_EQ(said, "b@0 ");
  std::function<void()> again = [&] { loop.post(again); };
  loop.post(again);
  EXPECT_FALSE(loop.settle(20));
}

TEST_F(VirtualTime, CancelsTimers) {
  loop.cancel(loop.post_delayed(1, say("x")));
  loop.pump(5);
  EXPECT_EQ(said, "");
  EXPECT_EQ(loop.now(), 5);
}

}  // namespace
}  // namespace tvx::headless
