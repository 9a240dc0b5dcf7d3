#include "tvx/exported/module.h"

#include <algorithm>
#include <new>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/exported/services/timer_loop.h"
#include "tvx/exported/window_part.h"

namespace tvx::exported {

Module& Module::only() {
  static Module module;
  return module;
}

Module::Module() = default;
Module::~Module() = default;

void Module::object_made() {
  if (!is_bound()) thread_ = std::this_thread::get_id();
  ++objects_;
}

bool Module::can_unload() {
  if (in_thread()) sweep();
  return !is_bound() && locks_ == 0;
}

headless::MessageLoop& Module::loop() {
  if (!loop_) loop_ = std::make_unique<headless::MessageLoop>();
  return *loop_;
}

TimerLoop& Module::timer_loop() {
  if (!timer_loop_) timer_loop_ = std::make_unique<TimerLoop>(loop());
  return *timer_loop_;
}

void Module::pump(std::int64_t milliseconds) {
  // Two loops side by side: neither keeps the other waiting for longer than nobody notices.
  constexpr std::int64_t turn = 10;
  headless::MessageLoop& own = loop();
  const std::int64_t end = own.now() + milliseconds;
  for (std::int64_t left = milliseconds; left >= 0; left = end - own.now()) {
    if (WindowPart* windows = windows_) {
      own.pump(0);
      windows->pump(std::min(left, turn));
    } else {
      own.pump(left);
    }
    if (left == 0) return;
  }
}

WindowPart& Module::windows() {
  if (!windows_) {
    windows_ = load_window_part();
    if (timer_loop_) timer_loop_->look_for_glib();  // the toolkit brings it along
  }
  return *windows_;
}

void Module::bury(std::shared_ptr<void> dead) {
  {
    const std::lock_guard lock(mutex_);
    buried_.push_back(std::move(dead));
  }
  if (in_thread()) return sweep();
  // The loop that the host runs. Without one, the next call finds what is buried.
  if (WindowPart* windows = windows_) windows->post([] { only().sweep(); });
}

std::vector<std::shared_ptr<void>> Module::take_buried() {
  const std::lock_guard lock(mutex_);
  return std::exchange(buried_, {});
}

void Module::sweep() noexcept {
  if (depth_ > 0) return;
  // Ending one may release others, and calls of hosts come back here: those find nothing.
  ++depth_;
  for (auto dead = take_buried(); !dead.empty(); dead = take_buried()) dead.clear();
  --depth_;
  if (objects_ > 0) return;
  timer_loop_.reset();
  loop_.reset();
}

void Module::set_failure(std::int32_t number, std::u16string_view text) {
  last_failure_ = {number, std::u16string(text)};
}

tvx_result Module::caught(std::exception_ptr thrown) noexcept {
  try {
    try {
      std::rethrow_exception(thrown);
    } catch (const RuntimeError& error) {
      set_failure(error.number(), error.text());
      return TVX_EXCEPTION;
    } catch (const std::bad_alloc&) {
      return TVX_NO_MEMORY;
    } catch (const std::exception& other) {
      set_failure(errors::invalid_call, from_utf8(other.what()));
    } catch (...) {
      set_failure(errors::invalid_call, u"An unknown failure");
    }
  } catch (...) {  // there is no memory for the text
    return TVX_NO_MEMORY;
  }
  return TVX_FAILED;
}

}  // namespace tvx::exported
