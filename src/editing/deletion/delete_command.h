#pragma once

#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/editing/tree/surgery.h"

/// One deletion at the caret; editing commands standard, sections "The delete command" and "The forwardDelete
/// command". What is selected goes instead, if anything is. Both answer true.
namespace tvx::editing {

class Editor;

/// Where the text unit that one deletion takes away starts or ends.
using UnitEdge = Offset (*)(std::u16string_view text, Offset from);

/// A node that nobody sees and those after (or before) it that can go at once with it, one after the other
/// coming to the same; empty if it is seen or can't be edited. What a style sheet hides isn't among them once
/// one has gone.
NodeList hidden_run(dom::Node* first, dom::Node* (dom::Node::*next)() const);

bool delete_backward_by(Editor& editor, UnitEdge unit_start);
bool delete_forward_by(Editor& editor, UnitEdge unit_end);

}  // namespace tvx::editing
