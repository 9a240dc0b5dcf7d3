#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tvx::source {

/// A stretch of one sequence that stands as another stretch in a second one.
struct Difference {
  std::size_t begin, end;          // in the first
  std::size_t new_begin, new_end;  // in the second
  bool operator==(const Difference&) const = default;
};

/// How the items are found that two sequences share: what stands once in each; as many as can be, where few
/// differ; or the first and then, between these, the second.
enum class Matching : std::uint8_t { Unique, Most, Both };

/// Where two sequences differ, in order.
std::vector<Difference> differences(std::span<const std::uint32_t> before,
                                    std::span<const std::uint32_t> after, Matching matching = Matching::Both);

}  // namespace tvx::source
