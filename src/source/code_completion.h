#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::source {

/// What can be written at a position of a source: names of elements, of attributes or of characters.
struct Completion {
  Offset from = 0;  // where what is already written of the name begins
  /// What is written already comes first if it is a name itself, then what pages have most of.
  std::vector<std::u16string_view> names;
  bool of_attributes = false;
};

/// Nothing where no name is written: in text, in a value, in a comment.
Completion completion_at(std::u16string_view source, Offset place);

/// Whether an attribute of that name says nothing without a value.
bool wants_value(std::u16string_view attribute);

}  // namespace tvx::source
