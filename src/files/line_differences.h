#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::files {

/// A line of two texts that are compared.
struct ComparedLine {
  enum class Kind : std::uint8_t { Same, Removed, Added, LeftOut };
  Kind kind;
  std::u16string text;  // without its end; of LeftOut: how many lines
  bool operator==(const ComparedLine&) const = default;
};

/// What became of a text, line by line: first what was taken away and then what came in its place. Of lines
/// that are the same in both, the `around` nearest ones are told and the others counted. Nothing where the
/// texts are the same.
std::vector<ComparedLine> line_differences(std::u16string_view before, std::u16string_view after,
                                           std::size_t around = 2);

}  // namespace tvx::files
