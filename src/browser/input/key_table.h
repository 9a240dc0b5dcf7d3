#pragma once

#include <optional>
#include <string_view>

/// What a key is called, and its virtual-key number.
namespace tvx::browser {

/// The number of a key that has none of its own. It isn't 0, which means a key that was taken away.
inline constexpr int unnumbered_key = 255;

/// The number of a key by its name in the UI Events standard ("Enter", "ArrowLeft", "F5"). A blank is called
/// " ". None for keys that are named by what they type.
std::optional<int> named_key_code(std::u16string_view name);
/// The number of the key that types this on the Latin layout, with or without Shift; `unnumbered_key` where
/// that layout has none.
int key_code_of(char16_t typed);

}  // namespace tvx::browser
