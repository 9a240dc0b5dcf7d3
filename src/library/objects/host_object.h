#pragma once

#include "tvx/library/members/value.h"
#include "tvx/object.h"

namespace tvx::library {

/// A value as hosts have it: nothing for an object or a list.
tvx::Value host_value(const Value& value);
Value value_of(const tvx::Value& value);

}  // namespace tvx::library
