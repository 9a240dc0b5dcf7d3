#pragma once

#include <cstddef>
#include <string_view>

namespace tvx::source {

/// How many tags of a source don't fit, or look as if somebody were still writing them: without an end, or
/// with the next tag in them. Text that is typed between tags adds none.
std::size_t markup_troubles(std::u16string_view source);

}  // namespace tvx::source
