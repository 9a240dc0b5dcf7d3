#include "tvx/headless/menus.h"

#include "tvx/base/strings.h"
#include "tvx/headless/expected.h"

namespace tvx::headless {
namespace {

using platform::Menu;

bool can_be_chosen(const Menu& item) {
  if (item.is_separator() || !item.items().empty()) return false;
  for (const Menu* menu = &item; menu->parent(); menu = menu->parent())
    if (!menu->Visible() || !menu->Enabled()) return false;
  return true;
}

/// By name first; a caption counts where no item has that name.
Menu* item_called(Menu& menu, std::u16string_view wanted) {
  const std::vector<Menu*> items = platform::all_items(menu);
  for (Menu* item : items)
    if (equals_ignoring_ascii_case(platform::name_with_index(*item), wanted)) return item;
  for (Menu* item : items)
    if (item->Caption() == wanted && item->Visible()) return item;
  return nullptr;
}

}  // namespace

void Menus::forget(int id) { forget_expected(expected_, id); }

std::optional<ExpectedPopup> Menus::take(const Menu& menu) {
  return take_expected(expected_, [&](const ExpectedPopup& expected) {
    return expected.menu.empty() || equals_ignoring_ascii_case(expected.menu, menu.Name());
  });
}

Menu* Menus::show(Menu& menu, platform::WindowHandle, const std::optional<platform::PopupPlace>& place) {
  shown_.push_back(menu.Name());
  last_place_ = place;
  // Taken before anything runs: what happens while the popup is open may change the expectations.
  const std::optional<ExpectedPopup> expected = take(menu);
  if (opened_) opened_(menu);
  if (expected && expected->while_open) expected->while_open(menu);
  Menu* chosen = expected && !expected->choose.empty() ? item_called(menu, expected->choose) : nullptr;
  if (chosen && !can_be_chosen(*chosen)) chosen = nullptr;
  if (closed_) closed_(menu, expected ? &*expected : nullptr, chosen);
  return chosen;
}

}  // namespace tvx::headless
