#pragma once

#include <string_view>

#include "tvx/core/chrome/menus.h"

namespace tvx::editing {
class Editor;
}

/// The submenu "Table" of the menus that open on a cell's content: rows, columns and cells at the selection.
/// Its items have their names and words in the menu of everything else; in the menus of links and images an
/// array shows the same.
namespace tvx::core {

/// The submenus, which are there while the selection is in a table.
void add_cell_menus(ContextMenus& menus);
/// Shows them, unless the host's list hides them, and what of them can be done. Null: nobody edits.
void show_cell_menus(ContextMenus& menus, editing::Editor* editor, std::u16string_view hidden);

/// How an item stands with the selection where it is.
struct CellItemState {
  bool can_be_on = false, on = false;
  std::u16string_view obstacle;  // empty: it can act
};
CellItemState cell_item_state(const platform::Menu& item, editing::Editor& editor);

/// The command that an item gives, and what hosts are told; empty for all others.
std::u16string_view cell_command_of(const platform::Menu& item);
/// What an item opens the dialog of.
enum class CellDialogOf { None, Cells, Table };
CellDialogOf cell_dialog_of(const platform::Menu& item);
std::u16string_view cell_key_of(const platform::Menu& item);

}  // namespace tvx::core
