#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <memory>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::services {

enum class EErrorTimer : std::int32_t {
  eeBaseTimer = 13650,
  eeTooManyTimers = 13651,
  eeCantCreateTimer = 13652
};

/// A timer for hosts: raises ThatTime at a rate, on the thread of its message loop, with no window.
/// While it runs it keeps itself alive: set Interval to 0 to let it go.
class CTimer : public std::enable_shared_from_this<CTimer> {
 public:
  /// The loop outlives the timer.
  static std::shared_ptr<CTimer> create(platform::MessageLoop& loop);
  ~CTimer();
  CTimer(const CTimer&) = delete;
  CTimer& operator=(const CTimer&) = delete;

  /// Milliseconds; 0: it stands.
  std::int32_t Interval() const { return interval_; }
  /// Below 1 it stops. Throws KitError 13652 where the system gives no timer, and 13651 when a hundred run
  /// already: the timer then runs without effect.
  void set_Interval(std::int32_t milliseconds);

  /// Whatever the owner wants to keep with it.
  std::any item;

  void on_ThatTime(std::function<void()> handler) { that_time_ = std::move(handler); }
  /// Raises ThatTime. For the table of running timers.
  void PulseTimer();

 private:
  friend class TimerTable;
  explicit CTimer(platform::MessageLoop& loop) : loop_(loop) {}

  platform::MessageLoop& loop_;
  std::int32_t interval_ = 0;
  std::uint32_t number_ = 0;  // the system timer's
  std::function<void()> that_time_;
};

}  // namespace tvx::services
