#pragma once

#include <cstdint>
#include <vector>

namespace tvx::source {

/// Colours of the desktop by their numbers.
inline constexpr std::uint32_t colour_button_shadow = 0x80000010, colour_window_text = 0x80000008;

/// Which lines a box shows and has selected, counted from 0.
struct LineMarks {
  std::size_t count = 1, first_visible = 0, first_selected = 0, last_selected = 0;
};

/// The pane in which the numbers stand, in whatever unit its face paints with.
struct LinePane {
  int height = 0, line_height = 16;
};

struct LineNumber {
  std::int64_t number = 1;  // counted from 1
  std::uint32_t colour = colour_button_shadow;
  int top = 0;
  bool operator==(const LineNumber&) const = default;
};

/// The numbers from the first visible line down, as far as whole lines fit, one at least. Those of the
/// selected lines stand dark. The colour changes at the first selected line: where that is above the pane,
/// all stay grey.
std::vector<LineNumber> line_numbers(const LineMarks& marks, const LinePane& pane);

}  // namespace tvx::source
