#include "editing/command_table.h"

namespace tvx::editing {

std::span<const CommandDefinition> inline_commands() { return {}; }

}  // namespace tvx::editing
