#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/core/part.h"
#include "tvx/platform/menu.h"

namespace tvx::core {

class Actions;
class ClassMenus;
class ContextMenus;
class FieldSettings;
class Formatting;
class ImageSettings;
class SelectionHighlight;
class SpellingMarks;
class TableTools;
class Toolbars;

/// The right mouse press: which menu opens, and what its items lead to. Some items leave a command pending,
/// which is carried out when the menu has closed.
class MenuCommands final : public Part, private platform::MenuHandler {
 public:
  struct Parts {
    ContextMenus& menus;
    Toolbars& toolbars;
    SelectionHighlight& highlight;
    TableTools& tables;
    Formatting& formatting;
    ClassMenus& classes;
    SpellingMarks& spelling;
    Actions& actions;
    ImageSettings& image_settings;
    FieldSettings& field_settings;
  };
  MenuCommands(Context& context, const Parts& parts);

  /// Which items show, by the property.
  void ApplyContextMenuState();
  /// Refreshes the paste items and what comes and goes, and opens the menu at the mouse.
  void ShowContextMenu(platform::Menu& menu);
  /// What choosing the item does, whether it can be chosen now or not.
  void MenuItemClick(platform::Menu& item) override;
  /// Opens the menu of the current element and carries out what was chosen. Throws where there is no element.
  void open();
  /// The settings of the current element if that is an image, without its menu, which must offer them.
  void edit_image();
  void pend(std::u16string_view command) { pending_command_ = command; }
  void forget_pending_command() { pending_command_.clear(); }
  const std::u16string& pending_command() const { return pending_command_; }

 private:
  void act_after_image_menu();
  void act_after_other_menus();
  void edit_field_or_form();

  const Parts parts_;
  std::u16string pending_command_;
};

/// Opens a menu over the control and returns when it has closed. Without a position: at the mouse.
void popup(const Surroundings& surroundings, platform::Menu& menu,
           const std::optional<platform::PopupPlace>& place = {});

}  // namespace tvx::core
