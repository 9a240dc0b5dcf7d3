#pragma once

#include <string_view>

namespace tvx::platform {
class Menu;
}

namespace tvx::core {

/// What buttons and menu items do. The control's table is core/actions.cpp; tests bring their own.
class Actions {
 public:
  virtual ~Actions() = default;
  /// Does what the button of Toolbar1 with that key stands for. False: nothing stands for it.
  virtual bool press(std::u16string_view button_key) = 0;
  /// The same of the forms' toolbar; keys in small letters.
  virtual bool press_form(std::u16string_view /*button_key*/) { return false; }
  virtual bool choose(const platform::Menu& item) = 0;
};

}  // namespace tvx::core
