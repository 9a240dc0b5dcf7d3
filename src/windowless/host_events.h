#pragma once

#include "tvx/core/events.h"
#include "tvx/core/htmled.h"
#include "tvx/events.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::windowless {

/// The control's events as its host hears them. The control outlives this.
class HostEvents final : public core::HTMLedEvents {
 public:
  explicit HostEvents(core::HTMLed& control) : control_(control) {}
  /// Null: nobody listens.
  void set_host(tvx::HTMLedEvents* host) { host_ = host; }

#include "tvx/interface/relay_declarations.inc"

 private:
  Object object_of(const dom::Ref<dom::Element>& element) const {
    return Object(library::element_object(element.get(), control_.DOM()).to_object());
  }

  core::HTMLed& control_;
  tvx::HTMLedEvents* host_ = nullptr;
};

}  // namespace tvx::windowless
