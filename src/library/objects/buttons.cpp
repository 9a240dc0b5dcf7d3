#include "tvx/library/objects/buttons.h"

#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/platform/toolbar.h"

namespace tvx::library {

namespace {

platform::Toolbar* toolbar_named(core::HTMLed& control, std::u16string_view name) {
  for (platform::Toolbar* toolbar : {&control.Toolbar1(), &control.Toolbar2(), &control.tlbDOM()})
    if (equals_ignoring_ascii_case(toolbar->Name(), name)) return toolbar;
  return nullptr;
}

}  // namespace

platform::Button* find_button(core::HTMLed& control, std::u16string_view toolbar, std::u16string_view key) {
  platform::Toolbar* found = toolbar_named(control, toolbar);
  return found ? found->find_ignoring_case(key) : nullptr;
}

bool press_button(core::HTMLed& control, std::u16string_view toolbar, std::u16string_view key) {
  platform::Button* button = find_button(control, toolbar, key);
  return button && toolbar_named(control, toolbar)->press(*button);
}

}  // namespace tvx::library
