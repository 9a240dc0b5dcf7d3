#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "tvx/dom/style/property_values.h"

namespace tvx::dom::style {

/// What surrounds an element, for values that depend on it.
struct Surroundings {
  const ComputedValues* parent = nullptr;  // null: the element is a root
  double root_font_size = 16;
  bool quirks = false;
  /// The engine's number for a list of font families.
  std::function<std::uint32_t(const std::u16string&)> family_number;
};

/// Finds the value that counts for each property of one element. Declarations are given from the weakest to
/// the strongest; what is kept are addresses, so they must live until compute().
class Cascade {
 public:
  void take(const std::vector<PropertyValue>& values, bool important);
  /// What was taken so far is the default sheet's: "revert" goes back to it.
  void end_of_defaults() { defaults_ = winners_; }
  ComputedValues compute(const Surroundings& surroundings) const;

 private:
  std::array<const StyleValue*, std::size_t(Property::Count)> winners_{}, defaults_{};
};

}  // namespace tvx::dom::style
