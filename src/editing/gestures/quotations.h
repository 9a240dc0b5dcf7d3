#pragma once

#include "tvx/editing/editor.h"

/// Lines that leave the quotation they stand in, as blocks: what is in a line stays in it. The undo step is
/// the caller's.
namespace tvx::editing {

/// Takes the selected lines out of the quotations around them; what comes after them stays quoted. False
/// where there is no quotation.
bool leave_quotations(Editor& editor);

/// Enter in the empty last line of a quotation: the line comes to stand after it.
bool leave_quotation_at_end(Editor& editor);

/// Backspace at the start of a line in a quotation: the line stands in it no more.
bool leave_quotation_at_start(Editor& editor);

}  // namespace tvx::editing
