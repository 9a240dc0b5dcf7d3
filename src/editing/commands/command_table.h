#pragma once

#include "tvx/editing/command_definition.h"

/// Every command of the editor in one table.
namespace tvx::editing {

/// Sorted by name without regard to case.
std::span<const CommandDefinition> command_table();
/// Null if there is no such command.
const CommandDefinition* find_command(std::u16string_view name);

}  // namespace tvx::editing
