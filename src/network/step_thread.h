#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace tvx::network {

/// Does one step at a time for somebody who waits for it in short turns, with other things to do between
/// them. The two never work at the same time on what the step touches: who has started a step leaves that
/// alone until it has ended.
class StepThread {
 public:
  StepThread() = default;
  /// Waits for the step that is under way.
  ~StepThread();
  StepThread(const StepThread&) = delete;
  StepThread& operator=(const StepThread&) = delete;

  /// None may be under way.
  void start(std::function<void()> step);
  /// Whether it has ended, within that time.
  bool ended_within(std::chrono::milliseconds time);

 private:
  void run();

  std::mutex mutex_;
  std::condition_variable started_, ended_;
  std::function<void()> step_;
  bool running_ = false, closing_ = false;
  std::thread thread_;  // from the first step on
};

}  // namespace tvx::network
