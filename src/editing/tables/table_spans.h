#pragma once

#include <cstddef>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// Over how many rows (`rowspan`) or columns (`colspan`, `span`) an element reaches; one is not written.
void set_span(dom::Element& element, dom::Name name, std::size_t span);

}  // namespace tvx::editing
