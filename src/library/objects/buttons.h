#pragma once

#include <string_view>

namespace tvx::core {
class HTMLed;
}
namespace tvx::platform {
class Button;
}

namespace tvx::library {

/// A toolbar's button by the toolbar's name and its own key, both without regard to case; null if there is
/// none.
platform::Button* find_button(core::HTMLed& control, std::u16string_view toolbar, std::u16string_view key);
/// Does what the user's press on it does. False: there is none, or it doesn't answer.
bool press_button(core::HTMLed& control, std::u16string_view toolbar, std::u16string_view key);

}  // namespace tvx::library
