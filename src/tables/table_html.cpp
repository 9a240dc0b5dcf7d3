#include "tvx/tables/table_html.h"

#include <cstdint>

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"

namespace tvx::tables {

namespace {

constexpr int out_of_memory = 7;
/// Code units; far beyond any table that somebody works on.
constexpr std::size_t longest_table = std::size_t{1} << 26;

void add_attribute(std::u16string& tag, std::u16string_view name, std::u16string_view value,
                   std::u16string_view unit = u"") {
  if (value.empty()) return;
  tag += u' ';
  tag += name;
  tag += u'=';
  tag += value;
  tag += unit;
}

std::u16string start_tag(const NewTable& table) {
  std::u16string tag = u"<TABLE";
  add_attribute(tag, u"width", table.width, u"%");
  add_attribute(tag, u"cellSpacing", table.cell_spacing, u"%");
  add_attribute(tag, u"border", table.border, u"%");
  add_attribute(tag, u"bordercolor", table.border_colour);
  add_attribute(tag, u"bgcolor", table.background);
  return tag + u">";
}

std::u16string cell_html(const NewTable& table) {
  std::u16string cell = u"<TD";
  add_attribute(cell, u"bordercolor", table.cell_border_colour);
  add_attribute(cell, u"bgcolor", table.cell_background);
  return cell + u"></TD>";
}

/// The number that counting from 0 ends with: one less than was typed, and rounded only then.
std::int16_t last_of(std::u16string_view count) { return rounded_to_16_bits(typed_number(count) - 1); }

}  // namespace

std::u16string html_of(const NewTable& table) {
  std::u16string html = start_tag(table);
  const int last_row = last_of(table.rows);
  // Without a row the columns don't count.
  const int last_column = last_row < 0 ? -1 : last_of(table.columns);
  const std::u16string cell = cell_html(table);
  std::u16string row = u"<TR>";
  for (int column = 0; column <= last_column && row.size() <= longest_table; ++column) row += cell;
  row += u"</TR>";
  const auto rows = static_cast<std::size_t>(last_row + 1 > 0 ? last_row + 1 : 0);
  if (rows * row.size() > longest_table) throw RuntimeError(out_of_memory, u"Out of memory");
  html.reserve(html.size() + rows * row.size() + 8);
  for (std::size_t i = 0; i < rows; ++i) html += row;
  return html + u"</TABLE>";
}

}  // namespace tvx::tables
