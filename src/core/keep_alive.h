#pragma once

#include <memory>
#include <utility>

#include "tvx/core/context.h"
#include "tvx/platform/message_loop.h"

namespace tvx::core {

/// Holds the control while code that is not ours runs. A host may drop its last reference in there, with
/// routines of the control still open around it: the control then dies in a turn of the loop of its own,
/// when all of them have returned.
class KeepAlive {
 public:
  explicit KeepAlive(Context& context) : loop_(context.surroundings().loop), self_(context.hold()) {}
  ~KeepAlive() {
    if (!self_ || self_.use_count() > 1) return;
    loop_.post([last = std::move(self_)] {});
  }
  KeepAlive(const KeepAlive&) = delete;
  KeepAlive& operator=(const KeepAlive&) = delete;

 private:
  platform::MessageLoop& loop_;
  std::shared_ptr<const void> self_;
};

}  // namespace tvx::core
