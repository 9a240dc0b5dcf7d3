#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Editing commands standard, section "The formatBlock command".
namespace tvx::editing {

class Editor;

/// `name` may stand in angle brackets. False if it is no name of a formattable block.
bool format_block(Editor& editor, std::u16string_view name);
/// The same for the lines of a selection alone: lists and paragraphs beside them in their items stay.
bool format_lines(Editor& editor, std::u16string_view name);
bool is_block_format_mixed(Editor& editor);
/// The name of the first line's block, "" if there is none.
std::u16string block_format(Editor& editor);
/// The name of the block that all lines of the selection have, "" if they stand in none; nothing where they
/// have several.
std::optional<std::u16string> format_of_lines(Editor& editor);

}  // namespace tvx::editing
