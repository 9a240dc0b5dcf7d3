#pragma once

#include <string>

#include "tvx/dom/node.h"

namespace tvx::dom::test {

/// The kind of tree that HTML text cannot express, of those that the HTML standard names (section 13.3, the
/// warning after the serialisation algorithm): the first one found below `root`, "" for none.
std::string inexpressible_kind(const Node& root);

}  // namespace tvx::dom::test
