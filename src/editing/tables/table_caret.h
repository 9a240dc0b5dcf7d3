#pragma once

#include "tvx/editing/editor.h"

namespace tvx::editing {

/// Where cells or rows have gone, the caret may stand between those that are left. A text there would leave
/// the table as soon as the page is read again: this brings the caret into a cell beside it, or after a
/// table that has none. Any other selection stays.
void leave_table_parts(Editor& editor);

}  // namespace tvx::editing
