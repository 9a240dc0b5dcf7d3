#pragma once

#include "tvx/dom/node.h"

/// Elements that are taken as wholes: images, tables, form fields.
namespace tvx::editing {

/// Elements that a click can select as a whole.
bool is_control(const dom::Element& element);
/// What a click on an element takes as a whole: the control that it is or lies in. A table only by itself,
/// where its border or the space between its cells was hit. Null: the click sets a caret.
dom::Element* control_at(dom::Element& element);

}  // namespace tvx::editing
