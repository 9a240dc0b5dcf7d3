#include "tvx/qt/widget/tab_gate.h"

#include <QFocusEvent>

namespace tvx::qt {

void TabGate::focusInEvent(QFocusEvent* event) {
  if (!passing_out_) enter_(event->reason());
}

}  // namespace tvx::qt
