#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvx::source {

/// How much a text has in common with others: letters in the same order, and pairs of letters in the same
/// order, so that letters count for more where they stand together.
class Likeness {
 public:
  explicit Likeness(std::u16string_view text);

  /// Of this text with itself.
  std::size_t most() const { return letters_.size + pairs_.size; }
  static std::size_t most(std::u16string_view text) { return text.size() + pairs_of(text).size(); }
  std::size_t with(std::u16string_view other) const;

 private:
  using Items = std::vector<std::uint32_t>;
  using Bits = std::vector<std::uint64_t>;

  /// Finds the length of the longest common subsequence, for 64 items at a time.
  struct Sequence {
    explicit Sequence(const Items& items);
    std::size_t common_with(const Items& other) const;

    std::size_t size;
    Bits none;
    std::unordered_map<std::uint32_t, Bits> places;  // of each item
  };

  static Items letters_of(std::u16string_view text) { return {text.begin(), text.end()}; }
  static Items pairs_of(std::u16string_view text);

  const Sequence letters_, pairs_;
};

}  // namespace tvx::source
