#pragma once

class QMenu;

namespace tvx::htmled {

class Window;

/// The classes of the style sheet of the document in front, whenever the menu opens.
void fill_class_menu(Window& window, QMenu& menu);

}  // namespace tvx::htmled
