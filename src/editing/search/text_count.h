#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvx::editing {

/// Words as Unicode standard annex 29 finds them, and characters without the lines' ends, white space
/// included.
struct TextCount {
  std::size_t words = 0, characters = 0;
  friend bool operator==(const TextCount&, const TextCount&) = default;
};
TextCount count_text(std::u16string_view text);

/// Counts a text that is edited, again and again: lines that it has counted before cost next to nothing. A
/// long text is counted in several calls, so that nobody waits for it.
class TextCounter {
 public:
  /// Counts from the start; the text stands until the end is reached.
  void begin(std::u16string_view text);
  /// Counts on, over that many units of lines that are new, or a million of those known; true at the end.
  bool go_on(std::size_t units);
  /// Of what was counted so far.
  const TextCount& count() const { return count_; }

 private:
  std::u16string_view rest_;
  TextCount count_;
  // By the lines' hashes: of the text before, and of this one so far.
  std::unordered_map<std::uint64_t, TextCount> known_, seen_;
};

}  // namespace tvx::editing
