#pragma once

#include <string>
#include <string_view>

namespace tvx::files {

/// Carries the changes from `base` to `edited` over into `source`, line by line. `base` and `source` are two
/// ways to write the same; where a changed line is written differently in the two, the edited line counts.
/// Costs as sorting the lines does. A proposal: whoever needs the result to mean `edited` looks whether it
/// does.
std::u16string merge_lines(std::u16string_view base, std::u16string_view source, std::u16string_view edited);

}  // namespace tvx::files
