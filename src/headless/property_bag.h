#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tvx/platform/property_bag.h"

namespace tvx::headless {

/// A store of properties in memory, in the order of writing.
class PropertyBag : public platform::PropertyBag {
 public:
  using Entry = std::pair<std::u16string, platform::PropertyValue>;

  platform::PropertyValue ReadProperty(std::u16string_view key,
                                       const platform::PropertyValue& otherwise) const override;
  void WriteProperty(std::u16string_view key, const platform::PropertyValue& value,
                     const platform::PropertyValue& standard) override;

  /// Stores whatever the value is; a key that is there keeps its position.
  void put(std::u16string_view key, platform::PropertyValue value);
  void clear();
  const std::vector<Entry>& entries() const { return entries_; }
  /// Every key handed to `WriteProperty` since the last `clear`, stored or not, in the order of the calls.
  const std::vector<std::u16string>& written() const { return written_; }

 private:
  std::vector<Entry> entries_;
  std::vector<std::u16string> written_;
};

/// The store as a JSON object, UTF-8, in its order: texts, true and false, whole numbers.
std::string to_json(const PropertyBag& bag);
/// Numbers come back in 16 bits where they fit, which the store can't tell from 32. Fails with RuntimeError
/// `type_mismatch` if the text is no such object.
PropertyBag property_bag_from_json(std::string_view json);

/// The store in a JSON file. Saving is in one step; fails as `save_atomically` does.
void save_property_bag(const PropertyBag& bag, std::u16string_view path);
/// Nothing if the file isn't there or is no store.
std::optional<PropertyBag> load_property_bag(std::u16string_view path);

}  // namespace tvx::headless
