#pragma once

#include <map>
#include <mutex>

#include "tvx/platform/message_loop.h"
#include "tvx/platform/task_queue.h"

namespace tvx::headless {

/// A message loop in real time for programs without a screen. Beside its tasks it watches descriptors, so
/// that a program can read its standard input and go on pumping.
class MessageLoop : public platform::MessageLoop {
 public:
  MessageLoop();
  ~MessageLoop() override;
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

  std::int64_t now() const override;
  void post(Task task) override;
  platform::TimerId post_delayed(std::int64_t milliseconds, Task task) override;
  void cancel(platform::TimerId timer) override;
  void pump(std::int64_t max_wait_milliseconds) override;

  /// Runs `readable` in a pump whenever the descriptor has something to read or has come to its end. While
  /// `readable` runs, nested pumps leave the descriptor alone: it is never called inside itself. One
  /// watcher a descriptor; a new one replaces the old one.
  void watch(int descriptor, Task readable);
  void unwatch(int descriptor);

  /// Pumps until `quit`. A quit within nested runs ends the innermost one.
  void run();
  void quit();

 private:
  struct Watcher {
    std::uint64_t number;
    Task readable;
    bool running = false;
  };

  int wait_time(std::int64_t max_wait_milliseconds);
  void wait_for_input(std::int64_t max_wait_milliseconds);
  void post_reading(int descriptor, std::uint64_t number);
  void wake();

  /// Guards the queue alone: other threads post.
  std::mutex mutex_;
  platform::TaskQueue queue_;
  std::map<int, Watcher> watchers_;
  std::uint64_t last_watcher_ = 0;
  int wake_descriptor_;
  bool quitting_ = false;
};

}  // namespace tvx::headless
