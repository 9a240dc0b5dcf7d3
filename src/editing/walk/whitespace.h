#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/range.h"

/// The white space around a position: what of it is seen, and how it is written so that it stays seen.
namespace tvx::editing {

/// Editing commands standard, section "Canonical space sequences".
void canonicalize_whitespace(dom::Boundary place, bool fix_collapsed_space = true);
/// Blanks and no-break spaces that show `length` spaces; the flags tell where a blank would collapse.
std::u16string canonical_spaces(Offset length, bool no_break_start, bool no_break_end);
/// Blanks that would show as one become blanks and no-break spaces.
std::u16string with_visible_spaces(std::u16string_view text);

/// Before a line is broken at a position: the spaces beside it are written as those at a line's end and at a
/// line's start, so that none is lost.
void canonicalize_for_break(dom::Boundary place);

/// How white space stood around a position before something was put there.
struct SpacesBeside {
  bool canonical = false;  // no-break spaces that are there only to keep their neighbours seen
  bool hidden = false;     // blanks that nobody sees
};
SpacesBeside spaces_beside(dom::Boundary place);
/// Afterwards: what was seen is seen still, and what need not be a no-break space any more is none.
void settle_spaces(dom::Boundary place, SpacesBeside before);

}  // namespace tvx::editing
