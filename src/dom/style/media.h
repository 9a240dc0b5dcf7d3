#pragma once

#include <string_view>

namespace tvx::dom::style {

/// Whether a media query list ("screen, print and (min-width: 20em)") holds for a screen. Widths and heights
/// are those of a screen of 1024 by 768 pixels: the document has no window. Any other feature does not hold.
bool matches_screen(std::u16string_view media);

}  // namespace tvx::dom::style
