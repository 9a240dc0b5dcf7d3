#pragma once

#include <cstdint>
#include <optional>

namespace tvx::platform {

/// The number by which a control, a window or a dialog is known: 0 is no window. A control's number stands in
/// the names of its temporary files.
enum class WindowHandle : std::int32_t { none = 0 };

constexpr std::int32_t number_of(WindowHandle handle) { return static_cast<std::int32_t>(handle); }

/// A number that no other living control of this machine has: process number x 512 + a counter. It has at
/// least seven digits, so that no address in a document contains it by chance. After 512 controls in one
/// process the numbers come round again.
WindowHandle next_window_handle();

/// The handle that `next_window_handle` gives next; nothing: back to the system's own. For tests.
void set_next_window_handle(std::optional<WindowHandle> handle);

/// The first handle of a process.
WindowHandle first_window_handle(std::int64_t process);

}  // namespace tvx::platform
