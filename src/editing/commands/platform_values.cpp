#include "tvx/editing/commands/platform_values.h"

#include "tvx/base/error.h"
#include "tvx/dom/style/color.h"
#include "tvx/editing/commands/command_table.h"
#include "tvx/editing/editor.h"

namespace tvx::editing {

namespace {

constexpr int white = 0xFFFFFF;

// What has no colour of its own shows the paper.
int colour_number(std::u16string_view text) {
  const auto colour = dom::style::parse_color(text);
  if (!colour || colour->alpha == 0) return white;
  return colour->red | colour->green << 8 | colour->blue << 16;
}

bool is_clipboard_command(std::u16string_view command) {
  for (const std::u16string_view name : {u"copy", u"cut", u"paste"}) {
    if (equals_ignoring_ascii_case(command, name)) return true;
  }
  return false;
}

}  // namespace

PlatformValue platform_value(Editor& editor, std::u16string_view command) {
  if (is_clipboard_command(command)) return false;
  const CommandDefinition* row = find_command(command);
  if (!row) throw RuntimeError(errors::invalid_call, u"Unknown command");
  if (row->state) return editor.state(command);
  if (editor.indeterminate(command)) return std::monostate();
  const std::u16string value = editor.value(command);
  if (row->inline_command == InlineCommand::BackColor || row->inline_command == InlineCommand::ForeColor) {
    return colour_number(value);
  }
  return value;
}

}  // namespace tvx::editing
