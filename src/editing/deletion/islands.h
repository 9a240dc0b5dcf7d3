#pragma once

#include "tvx/editing/editor.h"
#include "tvx/editing/walk/caret.h"

/// Islands: what may not be edited within what may. They are one thing, whatever is in them.
namespace tvx::editing {

/// Deletes the island beside the caret. False where there is none.
bool delete_island(Editor& editor, Direction direction);
/// Deletes the islands that are selected as a whole with what is around them.
void remove_islands(Editor& editor);

}  // namespace tvx::editing
