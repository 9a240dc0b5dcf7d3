#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "tvx/platform/message_loop.h"

namespace tvx::exported {

/// The loop of timers: the library's own, which a host pumps, and GLib's beside it where the process has
/// that, so that timers run in whichever is run.
class TimerLoop final : public platform::MessageLoop {
 public:
  explicit TimerLoop(platform::MessageLoop& loop) : loop_(loop) {}
  ~TimerLoop() override;
  TimerLoop(const TimerLoop&) = delete;
  TimerLoop& operator=(const TimerLoop&) = delete;

  std::int64_t now() const override { return loop_.now(); }
  void post(Task task) override { loop_.post(std::move(task)); }
  platform::TimerId post_delayed(std::int64_t milliseconds, Task task) override;
  void cancel(platform::TimerId timer) override;
  void pump(std::int64_t max_wait_milliseconds) override { loop_.pump(max_wait_milliseconds); }

  /// GLib may be there by now: what waits is made known to it.
  void look_for_glib();

 private:
  struct Waiting {
    std::int64_t time;
    unsigned source = 0;  // GLib's; 0: none
  };
  void wake_by_glib(Waiting& waiting) const;

  platform::MessageLoop& loop_;
  std::map<platform::TimerId, Waiting> waiting_;
};

}  // namespace tvx::exported
