#pragma once

#include <string_view>
#include <vector>

#include "tvx/source/differences.h"

namespace tvx::source {

/// Where two texts differ: by lines, whatever their indentation, then by words and letters within the lines.
///
/// A letter is what isn't white space. Each difference goes from the end of a letter that both texts have to
/// the start of the next one that both have, so that all the white space between the two is in it; the texts'
/// ends count as letters. What stands between two differences is the same but for nothing.
std::vector<Difference> text_differences(std::u16string_view before, std::u16string_view after);

}  // namespace tvx::source
