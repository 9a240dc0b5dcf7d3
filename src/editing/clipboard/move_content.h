#pragma once

#include <functional>
#include <string_view>

#include "tvx/dom/range.h"

namespace tvx::editing {

class Editor;

enum class KeepSource : bool { No, Yes };

/// Takes what is selected to another place (or a copy of it), as one undo step; it is selected there. False,
/// and nothing happens, where the position can't be edited, and within what is selected.
bool move_selection(Editor& editor, dom::Boundary to, KeepSource keep);

/// Puts something in at a position, as one undo step: `insert` writes at the caret, which stands there. What
/// was inserted is selected. False where the position can't be edited.
bool insert_selected(Editor& editor, dom::Boundary at, std::u16string_view label,
                     const std::function<void(Editor&)>& insert);

}  // namespace tvx::editing
