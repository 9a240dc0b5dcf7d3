#pragma once

#include "tvx/exported/object_faces.h"

namespace tvx::exported {

/// A new front of the message kit, with one reference.
Counted* make_subclassing();

}  // namespace tvx::exported
