#include "tvx/source/rising_pairs.h"

#include <algorithm>

namespace tvx::source {

// By patience sorting: a pair goes onto the first pile whose top isn't below it, and remembers the top of the
// pile before.
std::vector<std::pair<std::size_t, std::size_t>> longest_rise(
    std::span<const std::pair<std::size_t, std::size_t>> pairs) {
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  std::vector<std::size_t> tops, before(pairs.size(), none);
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const auto pile = std::ranges::lower_bound(tops, pairs[i].second, {},
                                               [&](std::size_t top) { return pairs[top].second; });
    if (pile != tops.begin()) before[i] = *(pile - 1);
    if (pile == tops.end())
      tops.push_back(i);
    else
      *pile = i;
  }
  std::vector<std::pair<std::size_t, std::size_t>> rise;
  for (std::size_t i = tops.empty() ? none : tops.back(); i != none; i = before[i]) rise.push_back(pairs[i]);
  std::ranges::reverse(rise);
  return rise;
}

}  // namespace tvx::source
