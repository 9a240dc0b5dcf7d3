#pragma once

#include <string>

#include "dom/range.h"

namespace tvx::editing {

class Editor;

/// Editing commands standard, section "Deleting the selection". The three flags are the standard's.
struct DeleteOptions {
  bool block_merging = true;
  bool strip_wrappers = true;
  bool backward = false;  // to which end of what is left the selection collapses
};
void delete_selection(Editor& editor, DeleteOptions options = {});

/// Editing commands standard, section "Canonical space sequences".
void canonicalize_whitespace(dom::Boundary place, bool fix_collapsed_space = true);
/// Blanks and no-break spaces that show `length` spaces; the flags tell where a blank would collapse.
std::u16string canonical_spaces(Offset length, bool no_break_start, bool no_break_end);

}  // namespace tvx::editing
