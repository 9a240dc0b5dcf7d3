#include "tvx/windowless/host_events.h"

namespace tvx::windowless {

#include "tvx/interface/host_events.inc"

}  // namespace tvx::windowless
