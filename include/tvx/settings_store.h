#pragma once

#include <QSettings>

#include "tvx/property_bag.h"

namespace tvx::qt {

/// The properties of a saved control in a QSettings, key by key in its present group. The settings outlive
/// this.
class SettingsStore final : public platform::PropertyBag {
 public:
  explicit SettingsStore(QSettings& settings) : settings_(settings) {}

  /// In the kind that the value was stored in; settings files that hold texts only give a text, which reads
  /// as what it says. Throws RuntimeError(13) for anything that is no value of a control.
  platform::PropertyValue ReadProperty(std::u16string_view key,
                                       const platform::PropertyValue& otherwise) const override;
  /// What equals its standard is taken out of the settings.
  void WriteProperty(std::u16string_view key, const platform::PropertyValue& value,
                     const platform::PropertyValue& standard) override;

 private:
  QSettings& settings_;
};

}  // namespace tvx::qt
