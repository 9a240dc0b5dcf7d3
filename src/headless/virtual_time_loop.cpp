#include "tvx/headless/virtual_time_loop.h"

#include <algorithm>
#include <utility>

namespace tvx::headless {

void VirtualTimeLoop::post(Task task) {
  const std::lock_guard lock(mutex_);
  queue_.post(std::move(task));
}

platform::TimerId VirtualTimeLoop::post_delayed(std::int64_t milliseconds, Task task) {
  const std::lock_guard lock(mutex_);
  return queue_.post_at(now_ + std::max<std::int64_t>(milliseconds, 0), std::move(task));
}

void VirtualTimeLoop::cancel(platform::TimerId timer) {
  const std::lock_guard lock(mutex_);
  queue_.cancel(timer);
}

void VirtualTimeLoop::pump(std::int64_t max_wait_milliseconds) {
  {
    const std::lock_guard lock(mutex_);
    if (!queue_.has_pending()) {
      const std::int64_t latest = now_ + std::max<std::int64_t>(max_wait_milliseconds, 0);
      now_ = std::max(now_, std::min(latest, queue_.next_time().value_or(latest)));
    }
  }
  run_pending();
}

void VirtualTimeLoop::run_pending() {
  const auto with_queue = [this](auto&& act) {
    const std::lock_guard lock(mutex_);
    return act();
  };
  const std::uint64_t end = with_queue([this] {
    queue_.bring_due(now_);
    return queue_.end();
  });
  while (auto task = with_queue([&] { return queue_.take_before(end); })) (*task)();
}

bool VirtualTimeLoop::settle(int most) {
  for (int pumps = 0; pumps < most; ++pumps) {
    {
      const std::lock_guard lock(mutex_);
      queue_.bring_due(now_);
      if (!queue_.has_pending()) return true;
    }
    pump(0);
  }
  return false;
}

}  // namespace tvx::headless
