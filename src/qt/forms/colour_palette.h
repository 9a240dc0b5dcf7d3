#pragma once

#include <QLineEdit>

#include "tvx/platform/form.h"

namespace tvx::qt {

/// Lets the user pick a colour that the document has already: by a press on the swatches at the end of the
/// box, or by Alt and the Down key in it. The box outlives its palette.
void add_palette(const platform::FormControl& control, QLineEdit& box);

}  // namespace tvx::qt
