#pragma once

#include <string>
#include <string_view>

namespace tvx::files {

/// Carries the changes from `base` to `edited` over into `source`: tag by tag, word by word. `base` and
/// `source` are two ways to write the same page: tags that `source` leaves out stay out, and what wasn't
/// edited keeps its letters, quotes and references. A proposal: whoever needs the result to mean `edited`
/// looks whether it does.
std::u16string merge_markup(std::u16string_view base, std::u16string_view source, std::u16string_view edited);

}  // namespace tvx::files
