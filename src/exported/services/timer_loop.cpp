#include "tvx/exported/services/timer_loop.h"

#include <dlfcn.h>

#include <algorithm>
#include <utility>

#include "tvx/exported/module.h"

namespace tvx::exported {

using platform::TimerId;

namespace {

/// What of GLib is needed, where the process has it: the library itself does without.
struct GLib {
  using Source = int (*)(void*);
  unsigned (*timeout_add)(unsigned milliseconds, Source source, void* data) = nullptr;
  int (*source_remove)(unsigned source) = nullptr;

  explicit operator bool() const { return timeout_add && source_remove; }
};

const GLib& glib() {
  static GLib found;
  if (found) return found;
  // It stays: what a source's data leads to lives in this library, and not the other way round.
  if (void* library = dlopen("libglib-2.0.so.0", RTLD_NOW | RTLD_NOLOAD)) {
    found.timeout_add = reinterpret_cast<decltype(GLib::timeout_add)>(dlsym(library, "g_timeout_add"));
    found.source_remove = reinterpret_cast<decltype(GLib::source_remove)>(dlsym(library, "g_source_remove"));
  }
  return found;
}

/// A timer's time has come in GLib's loop. Where that runs in another thread, the host's Pump has to do.
int run_what_is_due(void* source) {
  const tvx_result result = guarded([&] {
    *static_cast<unsigned*>(source) = 0;  // it goes with this call
    Module::only().loop().pump(0);
    Module::only().timer_loop().look_for_glib();
    return TVX_OK;
  });
  return result == TVX_WRONG_THREAD ? 1 : 0;
}

}  // namespace

TimerLoop::~TimerLoop() {
  for (auto& [timer, waiting] : waiting_)
    if (waiting.source != 0) glib().source_remove(waiting.source);
}

TimerId TimerLoop::post_delayed(std::int64_t milliseconds, Task task) {
  // Its number is known when it runs, and not yet here.
  const auto number = std::make_shared<TimerId>(TimerId::none);
  const TimerId timer = loop_.post_delayed(milliseconds, [this, number, task = std::move(task)] {
    cancel(*number);
    task();
  });
  *number = timer;
  Waiting& waiting = waiting_[timer];
  waiting.time = now() + milliseconds;
  wake_by_glib(waiting);
  return timer;
}

void TimerLoop::cancel(TimerId timer) {
  loop_.cancel(timer);
  const auto found = waiting_.find(timer);
  if (found == waiting_.end()) return;
  if (found->second.source != 0) glib().source_remove(found->second.source);
  waiting_.erase(found);
}

void TimerLoop::look_for_glib() {
  for (auto& [timer, waiting] : waiting_)
    if (waiting.source == 0) wake_by_glib(waiting);
}

void TimerLoop::wake_by_glib(Waiting& waiting) const {
  if (!glib()) return;
  const std::int64_t left = std::clamp<std::int64_t>(waiting.time - now(), 0, 1 << 30);
  waiting.source = glib().timeout_add(static_cast<unsigned>(left), run_what_is_due, &waiting.source);
}

}  // namespace tvx::exported
