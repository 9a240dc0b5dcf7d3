#pragma once

#include <string>

#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"

namespace tvx {

/// The number that an act fails with; 0 if it doesn't fail.
template <class Act>
int number_of_failure(Act&& act) {
  const auto failure = failure_of(act);
  return failure ? failure->number() : 0;
}

/// Number and text, as "13 Type mismatch"; "none" if it doesn't fail.
template <class Act>
std::string words_of_failure(Act&& act) {
  const auto failure = failure_of(act);
  return failure ? std::to_string(failure->number()) + " " + to_utf8(failure->text()) : "none";
}

}  // namespace tvx
