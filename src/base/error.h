#pragma once

#include "tvx/error.h"

/// Failures are RuntimeErrors, which hosts know too. A broken invariant is an assert.
namespace tvx {

/// The skipped step: runs `step`; a RuntimeError in it ends the step and nothing else.
/// Returns whether the step came to its end. No routine catches in any other way.
template <class Step>
bool attempt(Step&& step) {
  try {
    step();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace tvx
