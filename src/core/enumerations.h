#pragma once

#include <cstdint>

#include "tvx/enumerations.h"

namespace tvx::core {

using tvx::ed_FTPTransferType;
using tvx::ed_InsertType;
using tvx::EdBorderStyle;
using tvx::EdHighLightStyle;

enum class EdToolbar : std::int32_t { edMainToolbars = 0, edFormToolbar = 1 };

}  // namespace tvx::core
