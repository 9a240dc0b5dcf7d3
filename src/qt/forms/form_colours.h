#pragma once

#include <QColor>

#include "tvx/platform/form_control.h"

class QPalette;
class QWidget;

namespace tvx::qt {

/// A form's colour with the desktop's own colours, where it names one of those, from this palette.
QColor to_qt_colour(platform::FormColour colour, const QPalette& desktop);

/// Gives the widget the control's background, and letters that can be read on it. A control that has its
/// kind's usual one is as the desktop wants it.
void show_back_colour(const platform::FormControl& control, QWidget& widget);

}  // namespace tvx::qt
