#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "tvx/core/enumerations.h"
#include "tvx/core/properties.h"

namespace tvx::core {

/// The properties as hosts read and set them. A setter that has something to do beside storing has its row in
/// property_effects.cpp; one with a rule of its own is in property_face.cpp. Setters end with the container's
/// PropertyChanged. Those that are [[noreturn]] refuse: the property is read alone.
class PropertyFace {
 public:
#include "tvx/interface/property_members.inc"

 protected:
  ~PropertyFace() = default;

  virtual bool run_time() const = 0;
  /// A property has been set: it takes effect, and the container hears of it.
  virtual void property_set(std::u16string_view key) = 0;

  template <class T, class V>
  void store(T Properties::*member, V&& value, std::u16string_view key) {
    properties_.*member = T(std::forward<V>(value));
    property_set(key);
  }
  [[noreturn]] void refuse_read_only() const;
  void refuse_at_run_time() const;

  Properties properties_;
};

}  // namespace tvx::core
