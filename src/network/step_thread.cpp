#include "tvx/network/step_thread.h"

#include <signal.h>

#include <utility>

namespace tvx::network {

StepThread::~StepThread() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
  }
  started_.notify_one();
  thread_.join();
}

void StepThread::start(std::function<void()> step) {
  {
    const std::lock_guard lock(mutex_);
    step_ = std::move(step);
    running_ = true;
  }
  if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
  started_.notify_one();
}

bool StepThread::ended_within(std::chrono::milliseconds time) {
  std::unique_lock lock(mutex_);
  return ended_.wait_for(lock, time, [this] { return !running_; });
}

void StepThread::run() {
  // Signals are for the program's own threads.
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
  std::unique_lock lock(mutex_);
  for (;;) {
    started_.wait(lock, [this] { return step_ || closing_; });
    if (!step_) return;
    const std::function<void()> step = std::exchange(step_, nullptr);
    lock.unlock();
    step();
    lock.lock();
    running_ = false;
    ended_.notify_one();
  }
}

}  // namespace tvx::network
