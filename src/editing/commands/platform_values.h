#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace tvx::editing {

class Editor;

/// What a command's value is in the platform's way.
using PlatformValue = std::variant<bool, int, std::u16string, std::monostate>;

/// queryCommandValue as hosts of the platform know it, beside the standard's (Editor::value): whether a
/// toggle or mode is on, a colour as a number with red in the low byte, for all others a text; nothing where
/// the selection has several values. Of the clipboard's commands false. Throws RuntimeError(5) for an unknown
/// command.
PlatformValue platform_value(Editor& editor, std::u16string_view command);

}  // namespace tvx::editing
