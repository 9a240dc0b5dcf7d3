#pragma once

#include "tvx/core/keep_alive.h"
#include "tvx/core/remote/transfers.h"

namespace tvx::core {

/// One operation with the server: while it lasts no other one starts, and the control lives.
class Transfers::Action {
 public:
  explicit Action(Transfers& transfers) : alive_(transfers.context_), transfers_(transfers) {
    transfers_.running_ = true;
  }
  ~Action() { transfers_.running_ = false; }
  Action(const Action&) = delete;
  Action& operator=(const Action&) = delete;

 private:
  const KeepAlive alive_;
  Transfers& transfers_;
};

}  // namespace tvx::core
