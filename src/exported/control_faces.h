#pragma once

#include "tvx/base/error.h"
#include "tvx/tvxhtml.h"

/// The functions of a control's interfaces.
namespace tvx::exported {

extern const tvx_control_functions control_functions;
extern const tvx_dispatch_functions control_dispatch_functions;
extern const tvx_events_functions events_functions;
extern const tvx_frame_functions frame_functions;

/// Thrown where there can be no window, with the reason.
struct NoWindows {
  RuntimeError why;
};

}  // namespace tvx::exported
