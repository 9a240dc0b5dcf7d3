#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::source {

/// What can be written at a position of a source: names of elements or of attributes.
struct Completion {
  Offset from = 0;  // where what is already written of the name begins
  std::vector<std::u16string_view> names;
};

/// Nothing where no name is written: in text, in a value, in a comment.
Completion completion_at(std::u16string_view source, Offset place);

}  // namespace tvx::source
