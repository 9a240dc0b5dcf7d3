#pragma once

#include <memory>

#include "tvx/core/htmled.h"
#include "tvx/platform/message_loop.h"

namespace tvx::core {

/// Holds the control while code that is not ours runs. A host may drop its last reference in there, with
/// routines of the control still open around it: the control then dies in a turn of the loop of its own,
/// when all of them have returned.
struct HTMLed::KeepAlive {
  explicit KeepAlive(HTMLed& control) : self(control.weak_from_this().lock()) {}
  ~KeepAlive() {
    if (!self || self.use_count() > 1) return;
    platform::MessageLoop& loop = self->loop_;
    loop.post([last = std::move(self)] {});
  }
  KeepAlive(const KeepAlive&) = delete;
  KeepAlive& operator=(const KeepAlive&) = delete;

  std::shared_ptr<HTMLed> self;
};

}  // namespace tvx::core
