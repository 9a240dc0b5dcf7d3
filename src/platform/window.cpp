#include "tvx/platform/window.h"

#include <unistd.h>

#include <atomic>
#include <utility>

namespace tvx::platform {
namespace {

constexpr std::int64_t handles_a_process = 512;
/// One more than the highest process number Linux gives; times 512 that is the 32-bit range.
constexpr std::int64_t process_numbers = 1 << 22;

std::optional<WindowHandle>& fixed_handle() {
  static std::optional<WindowHandle> handle;
  return handle;
}

}  // namespace

WindowHandle first_window_handle(std::int64_t process) {
  // A low process number, usual in a container, borrows the handles of a very high one: a system that counts
  // its processes from one again and again has none of those.
  if (process * handles_a_process < 1'000'000) process = process_numbers - 1 - process;
  return WindowHandle{static_cast<std::int32_t>(process * handles_a_process)};
}

WindowHandle next_window_handle() {
  if (fixed_handle()) return *std::exchange(fixed_handle(), std::nullopt);
  static std::atomic<std::uint32_t> counter = 0;
  const auto count = static_cast<std::int32_t>(counter++ % handles_a_process);
  return WindowHandle{number_of(first_window_handle(getpid())) + count};
}

void set_next_window_handle(std::optional<WindowHandle> handle) { fixed_handle() = handle; }

}  // namespace tvx::platform
