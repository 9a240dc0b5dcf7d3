#pragma once

#include "tvx/dom/node.h"

namespace tvx::dom {

/// Says an attribute once more, for what its value names has changed: the tree stays as it is, and who
/// follows it hears of it. Nothing is journalled.
void set_attribute_again(Element& element, Name name);

}  // namespace tvx::dom
