#pragma once

#include <span>

#include "tvx/library/objects/members_of.h"

namespace tvx::automation {

class ControlObject;

/// Routines that have a name of their own and are no member that hosts see.
std::span<const library::MemberOf<ControlObject>> internal_routines();

}  // namespace tvx::automation
