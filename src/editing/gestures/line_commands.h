#pragma once

#include <string>
#include <string_view>

/// Commands on lines as a writer means them: lists hold nothing but items, an item moves with its list, and a
/// page or block that is still empty has a first line.
namespace tvx::editing {

class Editor;

/// Alignment, lists, indents and the style of paragraphs.
bool acts_on_lines(std::u16string_view command);
/// "center" for "justifyCenter"; empty for a command that doesn't align.
std::u16string alignment_of_command(std::u16string_view command);

/// One undo step. False if nothing could be done.
bool execute_on_lines(Editor& editor, std::u16string_view command, std::u16string_view value);

}  // namespace tvx::editing
