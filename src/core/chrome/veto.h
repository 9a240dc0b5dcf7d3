#pragma once

#include <string_view>

namespace tvx::platform {
class Button;
}

namespace tvx::core {

class Context;

/// The host hears of each button and item before it acts, and may forbid it.
bool host_allows_button(Context& context, std::u16string_view toolbar, const platform::Button& button);
bool host_allows_item(Context& context, std::u16string_view item);

}  // namespace tvx::core
