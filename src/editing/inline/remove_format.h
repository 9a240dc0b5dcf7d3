#pragma once

#include <string_view>

namespace tvx::editing {

class Editor;

/// Editing commands standard, section "The removeFormat command".
bool remove_format(Editor& editor, std::u16string_view value);
/// At a caret: the next text looks as the block or the link around it does.
bool write_plain_from_here(Editor& editor);

}  // namespace tvx::editing
