#pragma once

#include <cstdint>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::services {

/// Waits that long while the message loop runs: browser events, timers, the user's input and calls of the
/// host arrive inside. Returns at once, with nothing run, for a time of 0 or less or when the host does not
/// allow windows that aren't modal.
void Wait(platform::MessageLoop& loop, std::int64_t milliseconds);

}  // namespace tvx::services
