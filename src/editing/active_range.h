#pragma once

#include "tvx/dom/range.h"

/// Setting the range that commands work on. It is the selection's, and the selection keeps its direction.
namespace tvx::editing {

class Editor;

void set_active_range(Editor& editor, const dom::Range& range);
/// Splits editable texts where the range begins or ends within them, so that it holds whole texts.
void split_text_at_active_range(Editor& editor);

}  // namespace tvx::editing
