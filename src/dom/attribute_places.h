#pragma once

#include <cstddef>

#include "tvx/dom/node.h"

namespace tvx::dom {

/// Where an attribute stands in its element's list. A short list is searched. Of the long list that was
/// searched last a table is kept, so that an element of any number of attributes is read and written in time
/// that grows with their number.
class AttributePlaces {
 public:
  static constexpr std::size_t nowhere = std::size_t(-1);
  static std::size_t find(const Element& element, Name name);

  // --- told by those who change lists of attributes ---
  static void appended(const Element& element);
  /// The attribute that stood there is gone.
  static void erased(const Element& element, Name name, std::size_t place);
  /// The last one stands there now.
  static void moved_forward(const Element& element, std::size_t place);
  /// Its element goes.
  static void forget(const Element& element);
};

}  // namespace tvx::dom
