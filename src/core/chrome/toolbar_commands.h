#pragma once

#include "tvx/core/part.h"
#include "tvx/platform/toolbar.h"

namespace tvx::core {

class Actions;
class ElementPath;
class Panes;
class Toolbars;

/// From a pressed button, with the host's veto between, to its action; and which buttons can be pressed.
class ToolbarCommands final : public Part, private platform::ToolbarHandler {
 public:
  ToolbarCommands(Context& context, Toolbars& toolbars, Panes& panes, ElementPath& path, Actions& actions);

  /// What is visible and enabled, by the properties, with editing on or off.
  void ApplyToolbarState(bool enabled);
  /// What a press on the button does, whether it is there to be pressed or not.
  void ButtonClick(platform::Toolbar& toolbar, platform::Button& button) override;

 private:
  void press_formatting_button(platform::Button& button);
  void press_form_button(platform::Button& button);

  Toolbars& toolbars_;
  Panes& panes_;
  ElementPath& path_;
  Actions& actions_;
};

}  // namespace tvx::core
