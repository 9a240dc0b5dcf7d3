#pragma once

#include <vector>

#include "tvx/dom/mutation.h"

namespace tvx::browser {

/// Whether a row of mutations has changed anything. A gesture that shows no change is taken back, the last
/// mutation first: what is left in the end is nothing.
class NetChange {
 public:
  void note(const dom::Mutation& mutation);
  void clear();
  bool any() const { return many_ || !open_.empty(); }

 private:
  std::vector<dom::Mutation> open_;  // not taken back
  bool many_ = false;                // more than are worth remembering
};

}  // namespace tvx::browser
