#pragma once

#include "tvx/enumerations.h"

namespace tvx::core {

using tvx::ed_FTPTransferType;
using tvx::ed_InsertType;
using tvx::EdBorderStyle;
using tvx::EdHighLightStyle;
using tvx::EdToolbar;

}  // namespace tvx::core
