#include "tvx/headless/message_loop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <optional>
#include <utility>
#include <vector>

namespace tvx::headless {

using platform::TimerId;

MessageLoop::MessageLoop() : wake_descriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

MessageLoop::~MessageLoop() { close(wake_descriptor_); }

std::int64_t MessageLoop::now() const {
  const auto since_start = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(since_start).count();
}

void MessageLoop::post(Task task) {
  {
    const std::lock_guard lock(mutex_);
    queue_.post(std::move(task));
  }
  wake();
}

TimerId MessageLoop::post_delayed(std::int64_t milliseconds, Task task) {
  const std::int64_t time = now() + std::max<std::int64_t>(milliseconds, 0);
  TimerId timer;
  {
    const std::lock_guard lock(mutex_);
    timer = queue_.post_at(time, std::move(task));
  }
  wake();
  return timer;
}

void MessageLoop::cancel(TimerId timer) {
  const std::lock_guard lock(mutex_);
  queue_.cancel(timer);
}

void MessageLoop::wake() {
  const std::uint64_t one = 1;
  // It fails only when the counter is full, and then the loop is awake.
  [[maybe_unused]] const ssize_t written = write(wake_descriptor_, &one, sizeof one);
}

/// How long to sleep, for poll(): no longer than asked for, and not beyond the next timer.
int MessageLoop::wait_time(std::int64_t max_wait_milliseconds) {
  const std::lock_guard lock(mutex_);
  std::int64_t time = queue_.has_pending() ? 0 : std::max<std::int64_t>(max_wait_milliseconds, 0);
  if (const auto next = queue_.next_time()) time = std::min(time, std::max<std::int64_t>(*next - now(), 0));
  return static_cast<int>(std::min<std::int64_t>(time, INT_MAX));
}

void MessageLoop::wait_for_input(std::int64_t max_wait_milliseconds) {
  std::vector<pollfd> polled = {{wake_descriptor_, POLLIN, 0}};
  std::vector<std::uint64_t> numbers = {0};
  for (const auto& [descriptor, watcher] : watchers_) {
    if (watcher.running) continue;
    polled.push_back({descriptor, POLLIN, 0});
    numbers.push_back(watcher.number);
  }
  // A signal cuts the sleep short, which is allowed: the pump then just finds nothing to do.
  if (poll(polled.data(), polled.size(), wait_time(max_wait_milliseconds)) <= 0) return;
  if (polled[0].revents != 0) {
    std::uint64_t count;
    [[maybe_unused]] const ssize_t got = read(wake_descriptor_, &count, sizeof count);
  }
  for (std::size_t i = 1; i < polled.size(); ++i) {
    if (polled[i].revents != 0) post_reading(polled[i].fd, numbers[i]);
  }
}

void MessageLoop::post_reading(int descriptor, std::uint64_t number) {
  // From here until its task has run the watcher counts as running, or nested pumps would post it again.
  watchers_.at(descriptor).running = true;
  const std::lock_guard lock(mutex_);
  queue_.post([this, descriptor, number] {
    const auto found = watchers_.find(descriptor);
    if (found == watchers_.end() || found->second.number != number) return;
    struct Done {
      MessageLoop& loop;
      int descriptor;
      std::uint64_t number;
      ~Done() {
        const auto watcher = loop.watchers_.find(descriptor);
        if (watcher != loop.watchers_.end() && watcher->second.number == number)
          watcher->second.running = false;
      }
    } done{*this, descriptor, number};
    const Task readable = found->second.readable;  // it may unwatch itself
    readable();
  });
}

void MessageLoop::pump(std::int64_t max_wait_milliseconds) {
  wait_for_input(max_wait_milliseconds);
  std::uint64_t end;
  {
    const std::lock_guard lock(mutex_);
    queue_.bring_due(now());
    end = queue_.end();
  }
  for (;;) {
    std::optional<Task> task;
    {
      const std::lock_guard lock(mutex_);
      task = queue_.take_before(end);
    }
    if (!task) return;
    (*task)();
  }
}

void MessageLoop::watch(int descriptor, Task readable) {
  watchers_[descriptor] = {++last_watcher_, std::move(readable)};
}

void MessageLoop::unwatch(int descriptor) { watchers_.erase(descriptor); }

void MessageLoop::run() {
  quitting_ = false;
  while (!quitting_) pump(60'000);
  quitting_ = false;
}

void MessageLoop::quit() {
  quitting_ = true;
  wake();
}

}  // namespace tvx::headless
