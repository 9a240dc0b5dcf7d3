#pragma once

#include "dom/range.h"

namespace tvx::editing {

class Editor;

/// Editing commands standard, section "Deleting the selection". The three flags are the standard's.
struct DeleteOptions {
  bool block_merging = true;
  bool strip_wrappers = true;
  bool backward = false;  // the direction, for where the overrides come from
};
void delete_selection(Editor& editor, DeleteOptions options = {});

/// Editing commands standard, section "Canonical space sequences".
void canonicalize_whitespace(dom::Boundary place, bool fix_collapsed_space = true);

}  // namespace tvx::editing
