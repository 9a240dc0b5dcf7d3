#pragma once

#include <optional>
#include <utility>

#include "tvx/base/error.h"

namespace tvx {

/// As `attempt`, for routines that tell their host of a failure: what went wrong in `step`, nothing if it
/// came to its end.
template <class Step>
std::optional<RuntimeError> failure_of(Step&& step) {
  try {
    std::forward<Step>(step)();
    return std::nullopt;
  } catch (const RuntimeError& error) {
    return error;
  }
}

}  // namespace tvx
