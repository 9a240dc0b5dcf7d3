#pragma once

#include "tvx/platform/property_bag.h"

namespace tvx::platform {

/// A store with nothing in it: every property has its default, and nothing is kept.
class EmptyStore final : public PropertyBag {
 public:
  PropertyValue ReadProperty(std::u16string_view, const PropertyValue& otherwise) const override {
    return otherwise;
  }
  void WriteProperty(std::u16string_view, const PropertyValue&, const PropertyValue&) override {}
};

}  // namespace tvx::platform
