#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tvx/headless/message_loop.h"
#include "tvx/tvxhtml.h"

namespace tvx::exported {

class TimerLoop;
class WindowPart;

/// What all objects of the library have in common: their thread, their loop, how many there are, and the last
/// failure.
///
/// An object whose last reference goes may have routines of its own open: a host releases it from within an
/// event. So it is buried first, and ends when no call and no event is under way.
class Module {
 public:
  static Module& only();
  Module();
  ~Module();

  /// The first object decides which thread the objects live in.
  void object_made();
  void object_gone() { --objects_; }
  bool in_thread() const { return std::this_thread::get_id() == thread_; }
  /// Whether an object can be made here.
  bool can_make() const { return in_thread() || !is_bound(); }
  void lock(bool on) { locks_ += on ? 1 : -1; }
  bool can_unload();

  /// The loop of controls off screen; it lives while there are objects.
  headless::MessageLoop& loop();
  void pump(std::int64_t milliseconds);
  /// The loop of timers.
  TimerLoop& timer_loop();

  /// The part that needs a desktop and is loaded when first asked for. Throws RuntimeError where it can't be.
  WindowPart& windows();

  /// From any thread.
  void bury(std::shared_ptr<void> dead);
  /// Ends what is buried, unless a call or an event is under way.
  void sweep() noexcept;

  /// A call or an event.
  class UnderWay {
   public:
    UnderWay() { ++only().depth_; }
    ~UnderWay() {
      if (--only().depth_ == 0) only().sweep();
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;
  };

  /// Within one call or event, and not in several around each other.
  bool is_outermost() const { return depth_ <= 1; }

  struct Failure {
    std::int32_t number;
    std::u16string text;
  };
  const std::optional<Failure>& last_failure() const { return last_failure_; }
  void set_failure(std::int32_t number, std::u16string_view text);
  /// Keeps what was thrown as the last failure, and says it as a result.
  tvx_result caught(std::exception_ptr thrown) noexcept;

 private:
  bool is_bound() const { return objects_ > 0 || windows_; }
  std::vector<std::shared_ptr<void>> take_buried();

  std::thread::id thread_;
  std::atomic<int> objects_ = 0;
  std::atomic<int> locks_ = 0;
  int depth_ = 0;
  std::optional<Failure> last_failure_;
  std::unique_ptr<headless::MessageLoop> loop_;
  std::unique_ptr<TimerLoop> timer_loop_;
  std::atomic<WindowPart*> windows_ = nullptr;  // stays until the process ends

  std::mutex mutex_;  // guards buried_ alone
  std::vector<std::shared_ptr<void>> buried_;
};

/// What a host has called: in the objects' thread alone, and nothing that is thrown leaves it.
template <class Call>
tvx_result guarded(Call&& call) noexcept {
  if (!Module::only().in_thread()) return TVX_WRONG_THREAD;
  const Module::UnderWay under_way;
  try {
    return call();
  } catch (...) {
    return Module::only().caught(std::current_exception());
  }
}

}  // namespace tvx::exported
