#pragma once

#include "tvx/browser/events.h"

class QKeyEvent;

namespace tvx::qt {

/// A key as documents name it: UI Events' `key`, the text that it types, and the virtual-key number by the
/// layout's Latin group, so that Ctrl+V is one on a Cyrillic keyboard too.
browser::KeyInput key_input(const QKeyEvent& event);

/// Whether the editor wants this key before the window's shortcuts get it.
bool belongs_to_the_editor(const QKeyEvent& event);

}  // namespace tvx::qt
