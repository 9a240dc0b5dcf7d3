#include "editing/command_table.h"

namespace tvx::editing {

std::span<const CommandDefinition> insertion_commands() { return {}; }

}  // namespace tvx::editing
