#include "tvx/core/chrome/veto.h"

#include "tvx/core/context.h"
#include "tvx/core/events.h"
#include "tvx/platform/toolbar.h"

namespace tvx::core {

bool host_allows_button(Context& context, std::u16string_view toolbar, const platform::Button& button) {
  std::u16string name(toolbar), key = button.Key();
  std::int16_t index = std::int16_t(button.Index());
  bool cancel = false;
  context.raise([&](HTMLedEvents& host) { host.ToolButtonClick(name, index, key, cancel); });
  return !cancel;
}

bool host_allows_item(Context& context, std::u16string_view item) {
  std::u16string name(item);
  bool cancel = false;
  context.raise([&](HTMLedEvents& host) { host.MenuClick(name, cancel); });
  return !cancel;
}

}  // namespace tvx::core
