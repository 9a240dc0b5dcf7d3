#pragma once

#include <cstdint>

#include "tvx/browser/events.h"

namespace tvx::browser {

/// What a box of text hears of a key beside its number: the character that it types, 1 to 26 for a letter
/// with Control, 8 for Backspace; 0 for a key that types nothing.
std::int16_t typed_character(const KeyInput& key);

}  // namespace tvx::browser
