#pragma once

#include "tvx/editing/editor.h"

/// Short forms that writers type: "- " or "* " at the start of a paragraph for a list, "1. " for a numbered
/// one, "# " to "###### " for headings, "> " for a quotation, and addresses for links to them.
namespace tvx::editing {

/// Asked after typing: if the blank that was typed last completes such a form, it becomes what it stands for,
/// in an undo step of its own, so that undo gives back what was typed. False where nothing was to be done.
bool format_what_was_typed(Editor& editor);
/// Asked before Enter: an address that was typed up to the caret becomes a link, in the same way.
bool link_what_was_typed(Editor& editor);

}  // namespace tvx::editing
