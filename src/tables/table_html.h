#pragma once

#include <string>
#include <string_view>

namespace tvx::tables {

/// A new table as the user described it, each text as typed.
struct NewTable {
  std::u16string_view rows, columns;
  std::u16string_view width, cell_spacing, border;
  std::u16string_view border_colour, background;
  std::u16string_view cell_border_colour, cell_background;
};

/// Its markup. Values stand without quotation marks; width, spacing and border all get a "%", which hosts
/// know new tables by. Counts go by the number at the text's start, a fraction to the nearest, halves
/// to the even one. Throws RuntimeError(6) for a count beyond 16 bits, RuntimeError(7) for a table that no
/// text can hold.
std::u16string html_of(const NewTable& table);

}  // namespace tvx::tables
