#pragma once

#include "tvx/dom/node.h"

/// What a person would write with elements, and a program writes with styles.
namespace tvx::editing {

/// Makes B, I, U, S, SUB and SUP of what SPAN elements say by style, and one FONT of several around a text.
void make_style_elements(dom::Node& content);
/// Takes away what a program puts around or into links to show that they are links.
void drop_link_styles(dom::Node& content);

}  // namespace tvx::editing
