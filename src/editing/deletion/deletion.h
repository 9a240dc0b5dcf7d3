#pragma once

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

namespace tvx::editing {

class Editor;

/// Editing commands standard, section "Deleting the selection". The three flags are the standard's.
struct DeleteOptions {
  bool block_merging = true;
  bool strip_wrappers = true;
  bool backward = false;  // to which end of what is left the selection collapses
};
void delete_selection(Editor& editor, DeleteOptions options = {});

/// Takes an element out of its tree; a block that shows nothing any more gets a line for the caret. Gives the
/// position where it stood, as near as a caret can come.
dom::Boundary remove_control(dom::Element& element);

}  // namespace tvx::editing
