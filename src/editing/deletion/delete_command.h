#pragma once

#include <string_view>

#include "tvx/dom/node.h"

/// One deletion at the caret; editing commands standard, sections "The delete command" and "The forwardDelete
/// command". What is selected goes instead, if anything is. Both answer true.
namespace tvx::editing {

class Editor;

/// Where the text unit that one deletion takes away starts or ends.
using UnitEdge = Offset (*)(std::u16string_view text, Offset from);

bool delete_backward_by(Editor& editor, UnitEdge unit_start);
bool delete_forward_by(Editor& editor, UnitEdge unit_end);

}  // namespace tvx::editing
