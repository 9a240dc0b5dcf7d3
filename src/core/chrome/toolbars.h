#pragma once

#include <string_view>

#include "tvx/platform/toolbar.h"

namespace tvx::core {

/// Places on Toolbar1 that commands address by number.
inline constexpr int button_toggle = 1, button_copy = 4, button_cut = 5, button_paste = 6, button_left = 7,
                     button_center = 8, button_right = 9, button_bold = 10, button_italic = 11,
                     button_underline = 12, button_strike = 13, button_find = 18, button_undo = 21,
                     button_redo = 22, button_numbers = 26, button_bullets = 27;

/// The properties that decide what a toolbar shows.
struct ToolbarSettings {
  bool formatting_1 = true;  // places 2 to 19
  bool formatting_2 = true;  // places 20 to the last
  bool form_toolbar = false;
  std::u16string_view hidden_buttons;  // keys between semicolons, not trimmed, in any letters
};

/// The three toolbars of the control with their buttons.
class Toolbars {
 public:
  Toolbars();

  platform::Toolbar Toolbar1, Toolbar2, tlbDOM;

  /// The branch toolbar as it stands before there is a document: one placeholder that fixes its height.
  void prepare_branch_toolbar();
  /// What is visible and enabled. Later rules override earlier ones: the groups, then the hidden buttons.
  void apply_state(bool enabled, const ToolbarSettings& settings);

 private:
  void hide(std::u16string_view keys, bool form_toolbar);
};

}  // namespace tvx::core
