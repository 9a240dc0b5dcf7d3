#pragma once

#include <string>
#include <string_view>

#include "tvx/core/part.h"

namespace tvx::localise {
class XmlElement;
}

namespace tvx::core {

class ContextMenus;
class Toolbars;

/// The words of toolbars and menus, and those of dialogs, from the language file.
class Words final : public Part {
 public:
  Words(Context& context, Toolbars& toolbars, ContextMenus& menus, TableLabels& labels)
      : Part(context), toolbars_(toolbars), menus_(menus), labels_(labels) {}

  /// Of toolbars and menus; does nothing where no file is set. The host hears of a file that can't be read.
  void apply_language_file();
  /// Of a dialog, from its section of the file. Silently: a dialog whose words are missing opens in its own.
  void localise(platform::Form& dialog, std::u16string_view section) const;

 private:
  void translate_chrome(const localise::XmlElement& root);
  void translate_menu_item(std::u16string_view name, const std::u16string& text);

  Toolbars& toolbars_;
  ContextMenus& menus_;
  TableLabels& labels_;
};

}  // namespace tvx::core
