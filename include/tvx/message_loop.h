#pragma once

#include <cstdint>
#include <functional>

namespace tvx::platform {

enum class TimerId : std::uint64_t { none = 0 };

/// The loop of the one thread in which the control lives. Handlers nest: a task may pump, and the tasks
/// after it then run inside it. Whoever holds something across a pump must expect all else to have changed.
class MessageLoop {
 public:
  using Task = std::function<void()>;

  virtual ~MessageLoop() = default;

  /// Milliseconds of a clock that stands still at no time but has no known start.
  virtual std::int64_t now() const = 0;

  /// Runs `task` at the next pump, after all that was posted before it: the zero timer. Tasks keep their
  /// order also where pumps nest. May be called from other threads; the task runs in the loop's own.
  virtual void post(Task task) = 0;

  /// Runs `task` once, at the first pump after `milliseconds` are over.
  virtual TimerId post_delayed(std::int64_t milliseconds, Task task) = 0;
  /// Takes a delayed task back, also one that is due. One that has run or was cancelled is no error.
  virtual void cancel(TimerId timer) = 0;

  /// Waits until there is something to do, but no longer than `max_wait_milliseconds`; then does what is
  /// pending at that moment and returns. What is posted meanwhile waits for the next pump. An exception of
  /// a task leaves the pump; the tasks after it stay.
  virtual void pump(std::int64_t max_wait_milliseconds) = 0;

  /// Whether the host can do with windows that aren't modal at this moment. While it can't, nobody waits.
  virtual bool non_modal_allowed() const { return true; }
};

}  // namespace tvx::platform
