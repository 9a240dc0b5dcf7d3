#include "tvx/platform/task_queue.h"

#include <utility>

namespace tvx::platform {

void TaskQueue::post(Task task) { pending_.push_back({next_ticket_++, TimerId::none, std::move(task)}); }

TimerId TaskQueue::post_at(std::int64_t time, Task task) {
  const TimerId timer{++last_timer_};
  const Key key{time, last_timer_};
  delayed_.emplace(key, std::move(task));
  keys_.emplace(timer, key);
  return timer;
}

void TaskQueue::cancel(TimerId timer) {
  const auto place = keys_.find(timer);
  if (place == keys_.end()) return;
  delayed_.erase(place->second);
  keys_.erase(place);  // if it is pending, take_before() now passes it over
}

void TaskQueue::bring_due(std::int64_t time) {
  while (!delayed_.empty() && delayed_.begin()->first.first <= time) {
    auto due = delayed_.extract(delayed_.begin());
    pending_.push_back({next_ticket_++, TimerId{due.key().second}, std::move(due.mapped())});
  }
}

std::optional<std::int64_t> TaskQueue::next_time() const {
  if (delayed_.empty()) return std::nullopt;
  return delayed_.begin()->first.first;
}

std::optional<TaskQueue::Task> TaskQueue::take_before(std::uint64_t end) {
  while (!pending_.empty() && pending_.front().ticket < end) {
    Pending first = std::move(pending_.front());
    pending_.pop_front();
    if (first.timer == TimerId::none || keys_.erase(first.timer) > 0) return std::move(first.task);
  }
  return std::nullopt;
}

}  // namespace tvx::platform
