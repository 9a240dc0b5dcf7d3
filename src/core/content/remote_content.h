#pragma once

#include "tvx/browser/resource_policy.h"

namespace tvx::core {

struct Properties;

/// What the control's documents may bring in from elsewhere, as RemoteContent says.
browser::ResourcePolicy policy_of(const Properties& properties);

}  // namespace tvx::core
