#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tvx/editing/editor.h"
#include "tvx/editing/inline_command.h"

namespace tvx::editing {

/// A command is a row: what it is called, what it does, and how each question about it is answered.
/// One generic routine (Editor) asks; toolbars, menus, automation and the reference read the same row.
/// An empty member means that the command has no such answer.
struct CommandDefinition {
  std::u16string_view name;   // the standard's spelling: "insertOrderedList"
  std::u16string_view label;  // of its undo step: "Numbered list"
  /// Does it. False: the value was refused and nothing was done.
  bool (*action)(Editor& editor, std::u16string_view value) = nullptr;
  bool (*indeterminate)(Editor& editor) = nullptr;
  bool (*state)(Editor& editor) = nullptr;
  std::u16string (*value)(Editor& editor) = nullptr;
  /// The CSS property that an inline command sets ("font-weight"), empty for all others.
  std::u16string_view css_property = {};
  InlineCommand inline_command = InlineCommand::None;
  /// What it needs beside an editable position; none: nothing.
  bool (*applies)(const Editor& editor) = nullptr;
  /// Commands of the standard's "miscellaneous" section need no editable position.
  bool always_enabled = false;
  /// "Preserves overrides": the caret's pending style outlives it. All block commands do but insertText,
  /// which looks after it itself.
  bool keeps_overrides = false;
  /// Also in a position where there is nothing but text (`contenteditable="plaintext-only"`).
  bool in_plain_text = false;
  /// Changes no tree: opens no undo step.
  bool is_mode = false;
};

// The rows, by subject; each file of commands offers its own, and commands/command_table.h has them all.
std::span<const CommandDefinition> clipboard_commands();  // clipboard_commands.cpp
std::span<const CommandDefinition> inline_commands();     // inline_commands.cpp
std::span<const CommandDefinition> link_commands();       // link_commands.cpp
std::span<const CommandDefinition>
block_commands();  // block_commands.cpp: lists, indent, justify, formatBlock
std::span<const CommandDefinition>
insertion_commands();  // insertion_commands.cpp: insertX, delete, forwardDelete
std::span<const CommandDefinition> form_field_commands();  // form_field_commands.cpp
std::span<const CommandDefinition> table_commands();       // table_commands.cpp: rows, columns, cells
std::span<const CommandDefinition>
miscellaneous_commands();  // miscellaneous_commands.cpp: modes, selectAll, undo, redo

}  // namespace tvx::editing
