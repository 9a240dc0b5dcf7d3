#include "tvx/core/chrome/toolbar_commands.h"

#include "tvx/base/error.h"
#include "tvx/base/interruption.h"
#include "tvx/base/strings.h"
#include "tvx/core/chrome/actions.h"
#include "tvx/core/chrome/element_path.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/chrome/veto.h"
#include "tvx/core/views/panes.h"

namespace tvx::core {

ToolbarCommands::ToolbarCommands(Context& context, Toolbars& toolbars, Panes& panes, ElementPath& path,
                                 Actions& actions)
    : Part(context), toolbars_(toolbars), panes_(panes), path_(path), actions_(actions) {
  for (platform::Toolbar* toolbar : {&toolbars.Toolbar1, &toolbars.Toolbar2, &toolbars.tlbDOM})
    toolbar->set_handler(this);
}

void ToolbarCommands::ApplyToolbarState(bool enabled) {
  attempt([&] {
    ToolbarSettings settings;
    settings.formatting_1 = properties_.showFormattingToolbar1;
    settings.formatting_2 = properties_.showFormattingToolbar2;
    settings.form_toolbar = properties_.showFormToolbar;
    settings.hidden_buttons = properties_.HiddenButtons;
    toolbars_.apply_state(enabled, settings);
  });
  context_.state_changed();
  panes_.show_toolbars(enabled);
}

void ToolbarCommands::ButtonClick(platform::Toolbar& toolbar, platform::Button& button) {
  const KeepAlive alive(context_);
  run_interruptible([&] {
    if (&toolbar == &toolbars_.Toolbar1)
      press_formatting_button(button);
    else if (&toolbar == &toolbars_.Toolbar2)
      press_form_button(button);
    else if (&toolbar == &toolbars_.tlbDOM)
      attempt([&] { path_.press(button); });
  });
}

void ToolbarCommands::press_formatting_button(platform::Button& button) {
  if (!host_allows_button(context_, u"Toolbar1", button)) return;
  const std::u16string key = button.Key();
  if ((key == u"Undo" || key == u"Redo") && !properties_.IsDirty) return;
  attempt([&] { actions_.press(key); });
  mark_changed();
}

void ToolbarCommands::press_form_button(platform::Button& button) {
  if (!host_allows_button(context_, u"FormsToolbar", button)) return;
  attempt([&] { actions_.press_form(ascii_lower(button.Key())); });
  mark_changed();
}

}  // namespace tvx::core
