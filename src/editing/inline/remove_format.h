#pragma once

#include <string_view>

namespace tvx::editing {

class Editor;

/// Editing commands standard, section "The removeFormat command".
bool remove_format(Editor& editor, std::u16string_view value);

}  // namespace tvx::editing
