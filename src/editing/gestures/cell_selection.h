#pragma once

#include <vector>

#include "tvx/editing/editor.h"

/// Cells that are selected: a selection that goes from one cell of a table into another selects the rectangle
/// between them.
namespace tvx::editing {

/// In tree order; empty where the selection isn't one of cells. Those that may not be edited are left out.
std::vector<dom::Ref<dom::Element>> selected_cells(Editor& editor);
/// Takes out what is in the selected cells and puts the caret into the first. False without such a selection.
bool empty_selected_cells(Editor& editor);

/// Selects the cells of a row or of a column, and a table as one thing.
void select_row(Editor& editor, dom::Element& cell);
void select_column(Editor& editor, dom::Element& cell);

/// A command as a writer means it, one undo step: on selected cells it acts in each of them, a list button
/// makes and takes away lists with nothing but items in them. Else it is the command.
bool execute_as_writer(Editor& editor, std::u16string_view command, std::u16string_view value = {});

}  // namespace tvx::editing
