#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>

#include "tvx/platform/message_loop.h"

namespace tvx::platform {

/// The order of tasks in a message loop that keeps them itself: first come, first run, a delayed task coming
/// when it is due. Knows no clock and no threads; the loop brings both.
class TaskQueue {
 public:
  using Task = MessageLoop::Task;

  void post(Task task);
  TimerId post_at(std::int64_t time, Task task);
  void cancel(TimerId timer);

  /// Queues the delayed tasks that are due, by their time and then by their age.
  void bring_due(std::int64_t time);
  bool has_pending() const { return !pending_.empty(); }
  std::optional<std::int64_t> next_time() const;

  /// The mark that ends a pump begun now.
  std::uint64_t end() const { return next_ticket_; }
  /// The first pending task posted before `end`; nothing if there is none. Nested pumps take from the same
  /// queue.
  std::optional<Task> take_before(std::uint64_t end);

 private:
  struct Pending {
    std::uint64_t ticket;
    TimerId timer;
    Task task;
  };
  using Key = std::pair<std::int64_t, std::uint64_t>;

  std::deque<Pending> pending_;
  std::map<Key, Task> delayed_;
  /// Where each living timer stands in `delayed_`; one that is due but hasn't run stays known here.
  std::unordered_map<TimerId, Key> keys_;
  std::uint64_t next_ticket_ = 0;
  std::uint64_t last_timer_ = 0;
};

}  // namespace tvx::platform
