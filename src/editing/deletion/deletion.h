#pragma once

namespace tvx::editing {

class Editor;

/// Editing commands standard, section "Deleting the selection". The three flags are the standard's.
struct DeleteOptions {
  bool block_merging = true;
  bool strip_wrappers = true;
  bool backward = false;  // to which end of what is left the selection collapses
};
void delete_selection(Editor& editor, DeleteOptions options = {});

}  // namespace tvx::editing
