#pragma once

#include <cstdint>
#include <string>

#include "tvx/dom/node.h"

namespace tvx::core {

/// What a host hears. Arguments go by reference; what a host may change says so. A host may call the
/// control from within every event, and may close it there. Its exceptions end at the control.
class HTMLedEvents {
 public:
  virtual ~HTMLedEvents() = default;
#include "tvx/interface/control_events.inc"
};

}  // namespace tvx::core
