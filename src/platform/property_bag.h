#pragma once

#include <cstdint>
#include <string>

#include "tvx/property_bag.h"

namespace tvx::platform {

// A value in the kind that a property has. What has no such form fails with RuntimeError `type_mismatch`,
// what is too large with `overflow`. Any number but 0 is true.

bool as_bool(const PropertyValue& value);
std::int16_t as_int16(const PropertyValue& value);
std::int32_t as_int32(const PropertyValue& value);
std::u16string as_text(const PropertyValue& value);

}  // namespace tvx::platform
