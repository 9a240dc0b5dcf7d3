#pragma once

#include "tvx/tvxhtml.h"

namespace tvx::exported {

/// The functions of tvx_library, the same for all objects that have that face.
extern const tvx_library_functions library_functions;

}  // namespace tvx::exported
