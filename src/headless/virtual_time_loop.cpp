#include "headless/virtual_time_loop.h"

#include <algorithm>

namespace tvx::headless {

platform::TimerId VirtualTimeLoop::post_delayed(std::int64_t milliseconds, Task task) {
  return queue_.post_at(now_ + std::max<std::int64_t>(milliseconds, 0), std::move(task));
}

void VirtualTimeLoop::pump(std::int64_t max_wait_milliseconds) {
  if (!queue_.has_pending()) {
    const std::int64_t latest = now_ + std::max<std::int64_t>(max_wait_milliseconds, 0);
    now_ = std::max(now_, std::min(latest, queue_.next_time().value_or(latest)));
  }
  queue_.bring_due(now_);
  const std::uint64_t end = queue_.end();
  while (auto task = queue_.take_before(end)) (*task)();
}

bool VirtualTimeLoop::settle(int most) {
  for (int pumps = 0; pumps < most; ++pumps) {
    queue_.bring_due(now_);
    if (!queue_.has_pending()) return true;
    pump(0);
  }
  return false;
}

}  // namespace tvx::headless
