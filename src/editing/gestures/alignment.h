#pragma once

#include <string_view>

#include "tvx/editing/editor.h"

/// Alignment as a writer means it: of the paragraphs, items and cells that are selected, each said by the
/// block itself and with nothing put around it. "left", "center", "right" or "justify".
namespace tvx::editing {

/// False, and nothing done, where a selected line stands in no block of its own.
bool align_lines(Editor& editor, std::u16string_view alignment);
/// The same of one block. False where it holds blocks, which are aligned each.
bool align_block(dom::Element& block, std::u16string_view alignment);

}  // namespace tvx::editing
