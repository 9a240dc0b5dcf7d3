#pragma once

#include <string_view>

#include "tvx/core/part.h"

namespace tvx::core {

/// The window that takes the document's keyboard input: its focus, its caret and what it scrolls to.
class EditWindow final : public Part {
 public:
  explicit EditWindow(Context& context) : Part(context) {}

  /// Looks whether it is there by now.
  void FindEditWindow();
  bool found() const { return found_; }
  void ShowEditCaret();
  /// The focus came to the browser, or left it for the part of the control that is named.
  void got_focus();
  void lost_focus(std::u16string_view active_control, bool in_code_view);
  void focus();
  void scroll_to_line(int y);

 private:
  bool found_ = false;
};

}  // namespace tvx::core
