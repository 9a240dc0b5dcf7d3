#pragma once

#include <QPointer>

#include "tvx/core/events.h"
#include "tvx/htmled_widget.h"

namespace tvx::qt {

/// The control's events as signals of its widget. A widget that is gone emits nothing.
class WidgetEvents final : public core::HTMLedEvents {
 public:
  explicit WidgetEvents(HTMLedWidget& widget) : widget_(&widget) {}

#include "tvx/interface/relay_declarations.inc"

 private:
  template <class Emit>
  void tell(Emit&& emit_signal) {
    if (widget_) emit_signal(*widget_);
  }
  QPointer<HTMLedWidget> widget_;
};

}  // namespace tvx::qt
