#pragma once

#include "tvx/exported/object_faces.h"

namespace tvx::exported {

/// A new timer, with one reference.
Counted* make_timer();

}  // namespace tvx::exported
