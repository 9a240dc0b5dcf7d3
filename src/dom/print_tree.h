#pragma once

#include <string>

#include "tvx/dom/node.h"

namespace tvx::dom {

/// The tree below `node`, a line a node, in the notation of the public parsing test data: "| " and two
/// blanks a level, attributes sorted by name, `content` below a template. Ends without a line break.
std::u16string print_tree(const Node& node);

}  // namespace tvx::dom
