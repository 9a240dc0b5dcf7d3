#include "tvx/services/wait.h"

#include "tvx/platform/message_loop.h"

namespace tvx::services {

void Wait(platform::MessageLoop& loop, std::int64_t milliseconds) {
  std::int64_t noted = loop.now();
  std::int64_t remaining = milliseconds;
  while (remaining > 0 && loop.non_modal_allowed()) {
    loop.pump(remaining);
    const std::int64_t present = loop.now();
    // A clock that was set back says nothing about the time that has passed: this round counts as none.
    const std::int64_t elapsed = present < noted ? 0 : present - noted;
    remaining -= elapsed;
    noted = present;
  }
}

}  // namespace tvx::services
