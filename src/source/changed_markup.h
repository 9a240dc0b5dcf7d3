#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/source/preparation.h"

namespace tvx::source {

/// The markup of which `code` was made, after the code has become `left`: where the two codes differ the
/// markup is changed likewise, and nowhere else. `pieces` say which piece of the code is which of the markup;
/// what lies between them in the code is white space that was drawn.
std::u16string changed_markup(std::u16string_view markup, std::u16string_view code,
                              const std::vector<MappedPiece>& pieces, std::u16string_view left);

}  // namespace tvx::source
