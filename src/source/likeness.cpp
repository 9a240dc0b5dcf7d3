#include "tvx/source/likeness.h"

#include <bit>

namespace tvx::source {

Likeness::Likeness(std::u16string_view text) : letters_(letters_of(text)), pairs_(pairs_of(text)) {}

std::size_t Likeness::with(std::u16string_view other) const {
  return letters_.common_with(letters_of(other)) + pairs_.common_with(pairs_of(other));
}

Likeness::Items Likeness::pairs_of(std::u16string_view text) {
  Items pairs;
  for (std::size_t at = 1; at < text.size(); ++at)
    pairs.push_back(std::uint32_t{text[at - 1]} << 16 | text[at]);
  return pairs;
}

Likeness::Sequence::Sequence(const Items& items) : size(items.size()), none((items.size() + 63) / 64) {
  for (std::size_t at = 0; at < items.size(); ++at)
    places.try_emplace(items[at], none).first->second[at / 64] |= std::uint64_t{1} << at % 64;
}

// A bit stands for an item of this sequence, and is 0 where the common subsequence of what has been read of
// the other one and of this one up to there grows by one (Hyyrö).
std::size_t Likeness::Sequence::common_with(const Items& other) const {
  Bits bits(none.size(), ~std::uint64_t{0});
  for (const std::uint32_t item : other) {
    const auto found = places.find(item);
    if (found == places.end()) continue;
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < bits.size(); ++i) {
      const std::uint64_t met = bits[i] & found->second[i];
      const std::uint64_t sum = bits[i] + met, with_carry = sum + carry;
      carry = (sum < met || with_carry < sum) ? 1 : 0;
      bits[i] = with_carry | (bits[i] & ~found->second[i]);
    }
  }
  std::size_t ones = 0;
  for (const std::uint64_t word : bits) ones += static_cast<std::size_t>(std::popcount(word));
  const std::size_t unused = 64 * bits.size() - size;  // they stay 1
  return size - (ones - unused);
}

}  // namespace tvx::source
