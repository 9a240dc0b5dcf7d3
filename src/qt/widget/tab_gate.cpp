#include "tvx/qt/widget/tab_gate.h"

#include <QFocusEvent>

namespace tvx::qt {

void TabGate::focusInEvent(QFocusEvent* event) {
  // A dialog that is shown tells the widget that will have the keys of a Tab that nobody has pressed, before
  // its window has them.
  if (hasFocus() && !passing_out_) enter_(event->reason());
}

}  // namespace tvx::qt
