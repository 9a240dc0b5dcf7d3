#pragma once

#include <utility>

#include "tvx/core/context.h"
#include "tvx/core/keep_alive.h"

namespace tvx::core {

/// What the parts of the control have in common: short names for what the context offers.
class Part {
 public:
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

 protected:
  explicit Part(Context& context) : context_(context), properties_(context.properties()) {}
  ~Part() = default;

  bool run_time() const { return context_.run_time(); }
  const std::shared_ptr<browser::HTMLDocument>& DOM() const { return context_.DOM(); }
  browser::Browser& browser() const { return context_.browser(); }
  browser::HTMLDocument& document() const { return context_.document(); }
  browser::HTMLDocument& browser_document() const { return context_.browser_document(); }
  template <class Event>
  void raise(const Event& event) {
    context_.raise(event);
  }
  void raise_error(std::int32_t number, std::u16string text) {
    context_.raise_error(number, std::move(text));
  }
  void mark_changed() { context_.mark_changed(); }
  const Surroundings& surroundings() const { return context_.surroundings(); }

  Context& context_;
  Properties& properties_;
};

}  // namespace tvx::core
