#pragma once

#include <functional>

namespace tvx::platform {
class Clipboard;
class CommonDialogs;
class Forms;
class PopupMenus;
}  // namespace tvx::platform

namespace tvx::qt {

/// Who takes the desktop's place, for programs that drive the editor: null is the desktop's own. All outlive
/// the widget.
struct Substitutes {
  platform::CommonDialogs* dialogs = nullptr;
  platform::PopupMenus* popups = nullptr;
  platform::Forms* forms = nullptr;
  platform::Clipboard* clipboard = nullptr;
  /// In place of the printer, and of asking for it; what goes into a file goes there all the same.
  std::function<void(bool with_dialog)> print = {};
};

}  // namespace tvx::qt
