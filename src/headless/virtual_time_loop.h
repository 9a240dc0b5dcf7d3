#pragma once

#include <mutex>

#include "tvx/platform/message_loop.h"
#include "tvx/platform/task_queue.h"

namespace tvx::headless {

/// A message loop whose clock moves only where a pump waits: it jumps to the next timer, or to the end of
/// the wait. An hour of waiting takes no time, and every run is the same, but for what other threads post.
class VirtualTimeLoop : public platform::MessageLoop {
 public:
  std::int64_t now() const override { return now_; }
  void post(Task task) override;
  platform::TimerId post_delayed(std::int64_t milliseconds, Task task) override;
  void cancel(platform::TimerId timer) override;
  void pump(std::int64_t max_wait_milliseconds) override;
  bool non_modal_allowed() const override { return non_modal_allowed_; }

  /// Moves the clock without running anything, as a task that takes its time does.
  void pass(std::int64_t milliseconds) { now_ += milliseconds; }
  void allow_non_modal(bool allowed) { non_modal_allowed_ = allowed; }

  /// Runs what is due now and all that follows from it without waiting; timers of later stay. False if
  /// that hasn't come to an end after `most` pumps.
  bool settle(int most = 1'000);

 private:
  void run_pending();

  /// Guards the queue alone: other threads post.
  std::mutex mutex_;
  platform::TaskQueue queue_;
  std::int64_t now_ = 0;
  bool non_modal_allowed_ = true;
};

}  // namespace tvx::headless
