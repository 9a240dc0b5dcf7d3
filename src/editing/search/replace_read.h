#pragma once

#include <span>
#include <string_view>

#include "tvx/editing/search/read_text.h"

namespace tvx::editing {

/// Whether the pieces of a stretch may be changed: all of them are editable, in one editing host.
bool may_replace(std::span<const ReadText::Piece> pieces);

/// Puts a text where the stretch stands, in the style of its first letter; blanks stay seen. What it leaves
/// empty goes: elements within the line, but for those that somebody may point at. A line that holds nothing
/// any more keeps its height. Positions before the stretch stay what they are. The position
/// after the text. Within an undo step.
dom::Boundary replace_read(std::span<const ReadText::Piece> pieces, std::u16string_view text);

}  // namespace tvx::editing
