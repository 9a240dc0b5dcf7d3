#include "tvx/services/timer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/services/kit_error.h"

namespace tvx::services {
namespace {

constexpr int marked(int number) { return static_cast<int>(0x8004'0000u | unsigned(number)); }

class Timer : public testing::Test {
 protected:
  ~Timer() override {
    for (const auto& timer : timers) timer->set_Interval(0);
    clear_faults();
  }
  std::shared_ptr<CTimer> make() {
    timers.push_back(CTimer::create(loop));
    return timers.back();
  }
  std::shared_ptr<CTimer> counting(int& times) {
    auto timer = make();
    timer->on_ThatTime([&] { ++times; });
    return timer;
  }
  void run(std::int64_t milliseconds) {
    const std::int64_t end = loop.now() + milliseconds;
    while (loop.now() < end) loop.pump(end - loop.now());
    loop.pump(0);
  }
  static int error_of(const std::function<void()>& call, std::string* text = nullptr) {
    try {
      call();
    } catch (const RuntimeError& error) {
      if (text) *text = to_utf8(error.text());
      return error.number();
    }
    return 0;
  }

  headless::VirtualTimeLoop loop;
  std::vector<std::shared_ptr<CTimer>> timers;
};

TEST_F(Timer, RaisesThatTimeAtItsRate) {
  int times = 0;
  const auto timer = counting(times);
  EXPECT_EQ(timer->Interval(), 0);
  timer->set_Interval(100);
  EXPECT_EQ(timer->Interval(), 100);
  run(99);
  EXPECT_EQ(times, 0);
  run(1);
  EXPECT_EQ(times, 1);
  run(350);
  EXPECT_EQ(times, 4);
  timer->set_Interval(0);
  run(500);
  EXPECT_EQ(times, 4);
}

TEST_F(Timer, ZeroOnAStandingTimerDoesNothing) {
  int times = 0;
  const auto timer = counting(times);
  timer->set_Interval(0);
  timer->set_Interval(-5);
  EXPECT_EQ(timer->Interval(), 0);
  run(100);
  EXPECT_EQ(times, 0);
}

TEST_F(Timer, BelowOneStops) {
  int times = 0;
  const auto timer = counting(times);
  timer->set_Interval(10);
  timer->set_Interval(-1);
  EXPECT_EQ(timer->Interval(), 0);
  run(100);
  EXPECT_EQ(times, 0);
}

TEST_F(Timer, AnotherIntervalStopsTheTimerAndStartsANewOne) {
  int times = 0;
  const auto timer = counting(times);
  timer->set_Interval(100);
  run(90);
  timer->set_Interval(200);
  run(199);
  EXPECT_EQ(times, 0) << "the first hundred are gone";
  run(1);
  EXPECT_EQ(times, 1);
}

TEST_F(Timer, TheSameIntervalLeavesItRunning) {
  int times = 0;
  const auto timer = counting(times);
  timer->set_Interval(100);
  run(90);
  timer->set_Interval(100);
  run(10);
  EXPECT_EQ(times, 1);
}

TEST_F(Timer, TheHundredAndFirstIsRefused) {
  int times = 0;
  for (int i = 0; i < 100; ++i) counting(times)->set_Interval(10);
  const auto one_more = counting(times);
  std::string text;
  EXPECT_EQ(error_of([&] { one_more->set_Interval(10); }, &text), marked(13651));
  EXPECT_EQ(text, "No more than 10 timers allowed per class");
  EXPECT_EQ(one_more->Interval(), 10) << "it counts as started, and runs without effect";
  run(10);
  EXPECT_EQ(times, 100);
  timers.front()->set_Interval(0);
  one_more->set_Interval(0);
  one_more->set_Interval(10);
  run(10);
  EXPECT_EQ(times, 200) << "the free place is taken";
}

TEST_F(Timer, WithoutASystemTimerItFailsAndStands) {
  set_fault(u"SetTimer", {{}, 0});
  const auto timer = make();
  std::string text;
  EXPECT_EQ(error_of([&] { timer->set_Interval(10); }, &text), marked(13652));
  EXPECT_EQ(text, "Can't create system timer");
  EXPECT_EQ(timer->Interval(), 0);
  EXPECT_EQ(KitError::source, u"tvxHTML.WindowProc");
}

TEST_F(Timer, ARunningTimerKeepsItselfAlive) {
  int times = 0;
  auto timer = CTimer::create(loop);
  CTimer* raw = timer.get();
  const std::weak_ptr<CTimer> watch = timer;
  timer->on_ThatTime([&] {
    if (++times == 3) raw->set_Interval(0);
  });
  timer->set_Interval(10);
  timer.reset();
  run(20);
  EXPECT_FALSE(watch.expired());
  run(100);
  EXPECT_EQ(times, 3);
  EXPECT_TRUE(watch.expired());
}

TEST_F(Timer, AHandlerMayChangeTheIntervalOfItsOwnAndOfOthers) {
  int first = 0, second = 0;
  const auto other = counting(second);
  const auto timer = make();
  timer->on_ThatTime([&] {
    ++first;
    timer->set_Interval(50);
    other->set_Interval(0);
  });
  other->set_Interval(100);
  timer->set_Interval(10);
  run(110);
  EXPECT_EQ(first, 3);
  EXPECT_EQ(second, 0);
}

TEST_F(Timer, AHandlerThatPumpsHearsTheNextTimeWithin) {
  int times = 0, within = 0;
  const auto timer = make();
  timer->on_ThatTime([&] {
    if (++times > 1) return;
    run(10);
    within = times;
  });
  timer->set_Interval(10);
  run(10);
  EXPECT_EQ(within, 2);
}

TEST_F(Timer, KeepsAnyItem) {
  const auto timer = make();
  EXPECT_FALSE(timer->item.has_value());
  timer->item = std::u16string(u"mine");
  EXPECT_EQ(std::any_cast<std::u16string>(timer->item), u"mine");
}

TEST_F(Timer, PulsesByHand) {
  int times = 0;
  counting(times)->PulseTimer();
  make()->PulseTimer();
  EXPECT_EQ(times, 1);
}

}  // namespace
}  // namespace tvx::services
