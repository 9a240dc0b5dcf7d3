#pragma once

#include "tvx/core/htmled.h"
#include "tvx/core/parts.h"

namespace tvx::core {

/// The way into a control for scripts and tests: its parts. Nothing of the control itself uses it.
struct Inside {
  static Parts& parts(const HTMLed& control) { return *control.parts_; }
  static const Properties& properties(const HTMLed& control) { return control.properties_; }
  static bool terminated(const HTMLed& control) { return control.terminated_; }
  static void StartEditor(HTMLed& control) { control.StartEditor(); }
};

}  // namespace tvx::core
