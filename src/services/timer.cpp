#include "tvx/services/timer.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "tvx/base/fault.h"
#include "tvx/platform/message_loop.h"
#include "tvx/services/kit_error.h"

namespace tvx::services {
namespace {

/// The system's timers, made of the message loop's single ones: they come again until they are killed.
class SystemTimers {
 public:
  using Procedure = void (*)(std::uint32_t number);

  /// 0 on failure.
  std::uint32_t SetTimer(platform::MessageLoop& loop, std::int32_t interval, Procedure procedure) {
    if (const auto fault = fault_point(u"SetTimer"); fault && *fault == 0) return 0;
    const std::uint32_t number = ++last_;
    running_[number] = {&loop, interval, procedure, platform::TimerId::none};
    arm(number);
    return number;
  }

  void KillTimer(std::uint32_t number) {
    const auto found = running_.find(number);
    if (found == running_.end()) return;
    found->second.loop->cancel(found->second.pending);
    running_.erase(found);
  }

 private:
  struct Running {
    platform::MessageLoop* loop;
    std::int32_t interval;
    Procedure procedure;
    platform::TimerId pending;
  };

  void arm(std::uint32_t number) {
    Running& timer = running_[number];
    timer.pending = timer.loop->post_delayed(timer.interval, [this, number] { fire(number); });
  }

  // The next one is ordered first: the procedure may pump, or kill the timer.
  void fire(std::uint32_t number) {
    const auto found = running_.find(number);
    if (found == running_.end()) return;
    const Procedure procedure = found->second.procedure;
    arm(number);
    procedure(number);
  }

  std::unordered_map<std::uint32_t, Running> running_;
  std::uint32_t last_ = 0;
};

SystemTimers& system_timers() {
  thread_local SystemTimers timers;
  return timers;
}

[[noreturn]] void fail(EErrorTimer error) {
  throw KitError(static_cast<int>(error), error == EErrorTimer::eeTooManyTimers
                                              ? u"No more than 10 timers allowed per class"
                                              : u"Can't create system timer");
}

}  // namespace

/// The running timers of this thread.
class TimerTable {
 public:
  static TimerTable& of_thread() {
    thread_local TimerTable table;
    return table;
  }

  /// False: the system gives no timer.
  bool start(CTimer& timer) {
    timer.number_ = system_timers().SetTimer(timer.loop_, timer.interval_,
                                             [](std::uint32_t number) { of_thread().fire(number); });
    if (timer.number_ == 0) {
      timer.interval_ = 0;
      return false;
    }
    const auto empty = std::ranges::find(slots_, nullptr);
    if (empty == slots_.end()) fail(EErrorTimer::eeTooManyTimers);
    *empty = timer.shared_from_this();
    highest_ = std::max(highest_, static_cast<std::int16_t>(empty - slots_.begin() + 1));
    return true;
  }

  void stop(CTimer& timer) {
    for (std::int16_t i = 0; i < highest_; ++i) {
      if (!slots_[std::size_t(i)] || slots_[std::size_t(i)]->number_ != timer.number_) continue;
      system_timers().KillTimer(timer.number_);
      slots_[std::size_t(i)].reset();
    }
  }

  void fire(std::uint32_t number) {
    for (std::int16_t i = 0; i < highest_; ++i) {
      const std::shared_ptr<CTimer> timer = slots_[std::size_t(i)];
      if (timer && timer->number_ == number) return timer->PulseTimer();
    }
  }

 private:
  std::array<std::shared_ptr<CTimer>, 100> slots_;
  std::int16_t highest_ = 0;
};

std::shared_ptr<CTimer> CTimer::create(platform::MessageLoop& loop) {
  return std::shared_ptr<CTimer>(new CTimer(loop));
}

// A timer in the table can't come here: the table holds it.
CTimer::~CTimer() = default;

void CTimer::set_Interval(std::int32_t milliseconds) {
  const auto alive = shared_from_this();  // the table may hold the last reference
  if (milliseconds >= 1 && milliseconds != interval_) {
    if (interval_ != 0) TimerTable::of_thread().stop(*this);
    interval_ = milliseconds;
    if (!TimerTable::of_thread().start(*this)) fail(EErrorTimer::eeCantCreateTimer);
  } else if (milliseconds < 1 && interval_ > 0) {
    interval_ = 0;
    TimerTable::of_thread().stop(*this);
  }
}

void CTimer::PulseTimer() {
  const auto handler = that_time_;  // it may give the timer another one
  if (handler) handler();
}

}  // namespace tvx::services
