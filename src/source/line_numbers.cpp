#include "tvx/source/line_numbers.h"

#include <algorithm>

namespace tvx::source {

std::vector<LineNumber> line_numbers(const LineMarks& marks, const LinePane& pane) {
  std::vector<LineNumber> rows;
  const int height = std::max(pane.line_height, 1);
  std::uint32_t colour = colour_button_shadow;
  std::size_t line = marks.first_visible;
  int top = 0;
  do {
    if (line == marks.first_selected)
      colour = colour_window_text;
    else if (line == marks.last_selected + 1)
      colour = colour_button_shadow;
    rows.push_back({static_cast<std::int64_t>(line) + 1, colour, top});
    ++line;
    top += height;
  } while (line + 1 <= marks.count && top + height <= pane.height);
  return rows;
}

}  // namespace tvx::source
