#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace tvx::platform {

/// A stored value: a text in UTF-16, a truth value, a 16-bit or a 32-bit number.
using PropertyValue = std::variant<std::u16string, bool, std::int16_t, std::int32_t>;

/// Whether two values are one for a store: a text equals only a text, a true bool is the number -1.
bool equal_in_store(const PropertyValue& a, const PropertyValue& b);

/// Where a container keeps the properties of a saved control. Either call can fail as a RuntimeError; readers
/// and writers step over a key that fails.
class PropertyBag {
 public:
  virtual ~PropertyBag() = default;

  /// The stored value, or `otherwise` where none is stored.
  virtual PropertyValue ReadProperty(std::u16string_view key, const PropertyValue& otherwise) const = 0;

  /// Stores `value` unless it equals `standard`; then the key isn't in the store. The two are compared as
  /// they stand: true, which is -1, differs from a standard value of 1.
  virtual void WriteProperty(std::u16string_view key, const PropertyValue& value,
                             const PropertyValue& standard) = 0;
};

}  // namespace tvx::platform
