#pragma once

#include <cstdint>
#include <string>

namespace tvx::transfer {

/// An entry of a remote folder. Dates are days since 1899-12-30 in local time, the time of day as fraction.
struct clsDirectoryItem {
#include "tvx/interface/clsDirectoryItem_fields.inc"
};

}  // namespace tvx::transfer
