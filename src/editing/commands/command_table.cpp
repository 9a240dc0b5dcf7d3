#include "tvx/editing/commands/command_table.h"

#include <algorithm>
#include <vector>

namespace tvx::editing {

namespace {

bool comes_before(std::u16string_view a, std::u16string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char16_t x, char16_t y) { return ascii_lower(x) < ascii_lower(y); });
}

std::vector<CommandDefinition> all_rows() {
  std::vector<CommandDefinition> rows;
  for (const auto part :
       {clipboard_commands(), inline_commands(), link_commands(), block_commands(), insertion_commands(),
        form_field_commands(), table_commands(), miscellaneous_commands()}) {
    rows.insert(rows.end(), part.begin(), part.end());
  }
  std::sort(rows.begin(), rows.end(), [](const CommandDefinition& a, const CommandDefinition& b) {
    return comes_before(a.name, b.name);
  });
  return rows;
}

}  // namespace

std::span<const CommandDefinition> command_table() {
  static const std::vector<CommandDefinition> rows = all_rows();
  return rows;
}

const CommandDefinition* find_command(std::u16string_view name) {
  const auto table = command_table();
  const auto found = std::lower_bound(table.begin(), table.end(), name,
                                      [](const CommandDefinition& row, std::u16string_view wanted) {
                                        return comes_before(row.name, wanted);
                                      });
  return found != table.end() && equals_ignoring_ascii_case(found->name, name) ? &*found : nullptr;
}

}  // namespace tvx::editing
