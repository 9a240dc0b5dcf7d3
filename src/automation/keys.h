#pragma once

#include <string_view>

#include "tvx/browser/events.h"

namespace tvx::automation {

struct Modifiers {
  bool control = false, shift = false, alt = false;
};

/// A key as the window system would have delivered it: `key` by its name in the UI Events standard
/// ("Enter", "ArrowLeft", "a", "A", " "), the number and the text that belong to it on a US keyboard. What
/// that keyboard hasn't (an umlaut, an emoji) is a key without a number of its own, which types it. Throws
/// RuntimeError(5) for a name that is neither a key nor one character.
browser::KeyInput key_input(std::u16string_view key, Modifiers modifiers);

}  // namespace tvx::automation
