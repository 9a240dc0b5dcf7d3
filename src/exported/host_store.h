#pragma once

#include "tvx/platform/property_bag.h"
#include "tvx/tvxhtml.h"

namespace tvx::exported {

/// A store of the host's, which outlives this.
class HostStore final : public platform::PropertyBag {
 public:
  explicit HostStore(tvx_store& store) : store_(store) {}

  platform::PropertyValue ReadProperty(std::u16string_view key,
                                       const platform::PropertyValue& otherwise) const override;
  void WriteProperty(std::u16string_view key, const platform::PropertyValue& value,
                     const platform::PropertyValue& standard) override;

 private:
  tvx_store& store_;
};

}  // namespace tvx::exported
