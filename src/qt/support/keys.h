#pragma once

#include "tvx/browser/events.h"

class QKeyEvent;

namespace tvx::qt {

/// A key as documents name it: UI Events' `key`, the text that it types, and the virtual-key number by the
/// layout's Latin group, so that Ctrl+V is one on a Cyrillic keyboard too.
browser::KeyInput key_input(const QKeyEvent& event);

/// What the key at this place types on the Latin layout, letters in upper case; 0 where that has nothing to
/// name it by.
char16_t latin_character_of_place(unsigned scan_code);

/// Whether the editor wants this key before the window's shortcuts get it.
bool belongs_to_the_editor(const QKeyEvent& event);

}  // namespace tvx::qt
