#pragma once

#include "tvx/dom/document.h"

namespace tvx::editing {

class Editor;

/// The one table that content is, if it is nothing else; null if not.
dom::Element* only_table(const dom::Node& content);
/// A table of one cell becomes what is in the cell.
void unwrap_single_cell(const dom::Ref<dom::DocumentFragment>& content);

/// A table that is pasted where the caret or a selection of cells is in a table fills that one's cells, from
/// the current one on; the table grows where they don't suffice. False where the selection isn't so, or the
/// content is no table of more than one cell.
bool paste_into_cells(Editor& editor, const dom::Ref<dom::DocumentFragment>& content);

}  // namespace tvx::editing
