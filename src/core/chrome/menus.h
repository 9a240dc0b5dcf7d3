#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/core/content/style_classes.h"
#include "tvx/platform/clipboard.h"
#include "tvx/platform/menu.h"

namespace tvx::core {

/// The words of the cell and row submenu, which a language file may replace.
struct CellRowLabels {
  std::u16string_view cell, row, delete_row, delete_cell;
};

/// Whether a host's list names the menu or item: names without their first three letters, between semicolons,
/// in any letters.
bool is_hidden(const platform::Menu& menu, std::u16string_view list);

/// The popup menus of the control with their items: what is in them and when an item shows or can be chosen.
/// What an item does is the control's.
class ContextMenus {
 public:
  ContextMenus();

  platform::Menu mnuT, mnuLinks, mnuMisc, mnuImg, mnuCSS, mnuToolProp;

  /// All menus at the top, in their order.
  std::array<platform::Menu*, 6> tops() {
    return {&mnuT, &mnuLinks, &mnuMisc, &mnuImg, &mnuCSS, &mnuToolProp};
  }
  /// A menu or item by its name, of an array the one with that index; null if there is none.
  platform::Menu* find(std::u16string_view name, std::optional<int> index = {});
  /// Throws RuntimeError(438) where there is none.
  platform::Menu& item(std::u16string_view name);
  void set_handler(platform::MenuHandler* handler);

  /// What a host is told when the item is chosen; empty for what tells nothing.
  static std::u16string_view key_of(const platform::Menu& item);

  /// Hides what the list names, and shows all else. An empty list brings nothing back. Separators follow what
  /// they separate.
  void apply_hidden(std::u16string_view list);

  /// Sets whether something can be pasted from `menu`, by what the clipboard has.
  void refresh_paste(platform::Menu& menu, const std::function<bool(platform::ClipboardFormat)>& has);
  /// The items for fields and forms, of the mouse's menu or the element path's, show where they are for one,
  /// unless the host's list hides them.
  void show_form_items(const platform::Menu& menu, bool of_field, bool of_form, std::u16string_view hidden);
  /// What a wrong word at the caret could be and what else can be done with it, at the top of its menu; null:
  /// there is none. What `hidden` names, in the form of apply_hidden(), stays away.
  void show_spelling(platform::Menu& menu, const std::vector<std::u16string>* suggestions,
                     std::u16string_view hidden);
  /// "Paste as Plain Text" is there while the clipboard has a text.
  void show_paste_text(bool has_text, std::u16string_view hidden);
  /// The link items of an image that stands in a link, or doesn't.
  void show_image_link(bool in_link);
  /// Fills both class menus after "(none)"; items have the indexes of their classes.
  void show_classes(std::span<const StyleClass> classes);
  /// The submenu of the branch toolbar's menu for an element with that tag, in lower case.
  void prepare_cell_row_actions(std::u16string_view tag, const CellRowLabels& labels);
};

}  // namespace tvx::core
