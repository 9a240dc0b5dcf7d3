#pragma once

#include "tvx/platform/window.h"

namespace tvx::platform {

/// While this lives, the next message window that is made in this thread has this number: that of a control,
/// by which hosts know it. Where another window has it by then, the new one gets a number of its own.
class WindowNumber {
 public:
  explicit WindowNumber(WindowHandle number);
  ~WindowNumber();
  WindowNumber(const WindowNumber&) = delete;
  WindowNumber& operator=(const WindowNumber&) = delete;
};

}  // namespace tvx::platform
