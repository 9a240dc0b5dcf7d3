#pragma once

#include "tvx/browser/html_document.h"
#include "tvx/platform/window.h"

namespace tvx::browser {
class BrowserWindow;
}
namespace tvx::platform {
class Clipboard;
class CommonDialogs;
class Container;
class Forms;
class MessageLoop;
class PopupMenus;
class RemoteNetwork;
}  // namespace tvx::platform

namespace tvx::core {

/// What surrounds a control. All of it outlives the control.
struct Surroundings {
  platform::MessageLoop& loop;
  platform::Container& container;
  platform::CommonDialogs& dialogs;
  platform::WindowHandle hwnd = platform::WindowHandle::none;  // none: the control takes the next free one
  const browser::Geometry* geometry = nullptr;
  browser::BrowserWindow* window = nullptr;
  platform::Clipboard* clipboard = nullptr;    // null: there is none to copy to
  platform::PopupMenus* popups = nullptr;      // null: every popup counts as dismissed
  platform::Forms* forms = nullptr;            // null: every dialog of the control counts as cancelled
  platform::RemoteNetwork* network = nullptr;  // null: the system's own
};

}  // namespace tvx::core
