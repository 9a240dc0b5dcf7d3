#pragma once

#include <algorithm>
#include <deque>
#include <optional>

namespace tvx::headless {

/// What is expected of dialogs, popups and forms, the oldest first. `Expected` has `times`, its uses that are
/// left, and the `id` of who expects it.

/// The oldest that fits. It stays where it is while it has uses left.
template <class Expected, class Fits>
std::optional<Expected> take_expected(std::deque<Expected>& all, Fits fits) {
  const auto place = std::ranges::find_if(all, fits);
  if (place == all.end()) return std::nullopt;
  Expected taken = *place;
  if (--place->times <= 0) all.erase(place);
  return taken;
}

template <class Expected>
void forget_expected(std::deque<Expected>& all, int id) {
  std::erase_if(all, [id](const Expected& expected) { return expected.id == id; });
}

}  // namespace tvx::headless
