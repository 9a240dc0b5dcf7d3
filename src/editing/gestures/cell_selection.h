#pragma once

#include "tvx/editing/editor.h"
#include "tvx/editing/tables/selected_cells.h"

/// What a person does to selected cells.
namespace tvx::editing {

/// Shift and an arrow: where cells are selected the selection grows or shrinks by a cell. False where it has
/// to go by text, or out of the table.
enum class CellStep : std::uint8_t { Backward, Forward, Up, Down };
bool extend_cells(Editor& editor, CellStep step);
/// A selection that was extended from one cell into another takes in both of them whole.
void take_whole_cells(Editor& editor);

/// A command as a writer means it, one undo step: on selected cells it acts in each of them, a list button
/// makes and takes away lists with nothing but items in them. Else it is the command.
bool execute_as_writer(Editor& editor, std::u16string_view command, std::u16string_view value = {});

}  // namespace tvx::editing
