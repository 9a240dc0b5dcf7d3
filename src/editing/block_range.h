#pragma once

#include "dom/range.h"

namespace tvx::editing {

/// Editing commands standard, section "Block-extending a range".
dom::Range block_extend(dom::Range range);

}  // namespace tvx::editing
