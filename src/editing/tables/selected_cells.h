#pragma once

#include <optional>
#include <vector>

#include "tvx/editing/editor.h"
#include "tvx/editing/tables/table_grid.h"

/// Cells that are selected: a selection that goes from one cell of a table into another selects the rectangle
/// between them. The tree knows nothing of it.
namespace tvx::editing {

/// The cells in which a selection starts and ends, in one table: the innermost that holds all of it. They
/// are the same where it stays in one cell.
struct SelectedCorners {
  dom::Element* table = nullptr;
  dom::Element* anchor = nullptr;
  dom::Element* focus = nullptr;

  explicit operator bool() const { return table != nullptr; }
  bool several() const { return anchor != focus; }
};
/// Empty where the selection stands in no cell that may be edited.
SelectedCorners selected_corners(const Editor& editor);

/// What part of a table a selection means: the selected cells, or the cell that it stands in.
struct SelectedPart {
  dom::Ref<dom::Element> table;
  GridPart part;
  dom::Ref<dom::Element> cell;  // at the top left of the part
  bool several = false;
};
std::optional<SelectedPart> selected_part(const Editor& editor);

/// In tree order; empty where the selection stays in one cell. Those that may not be edited are left out.
std::vector<dom::Ref<dom::Element>> selected_cells(const Editor& editor);

/// Takes out what is in the selected cells and puts the caret into the first. False without such a selection.
bool empty_selected_cells(Editor& editor);

/// Selects all that is in a cell, or in the cells from one to another.
void select_cells(Editor& editor, dom::Element& from, dom::Element& to);
/// Selects the cells of the rows, or of the columns, that a part is in.
void select_rows(Editor& editor, const SelectedPart& selected);
void select_columns(Editor& editor, const SelectedPart& selected);

}  // namespace tvx::editing
