#pragma once

#include <string_view>

#include "tvx/core/part.h"

namespace tvx::core {

class CodePane;
class EditWindow;
class Toolbars;

/// The public formatting operations: each names its command to the document and marks it changed.
class Formatting final : public Part {
 public:
  Formatting(Context& context, Toolbars& toolbars, CodePane& code, EditWindow& edit_window)
      : Part(context), toolbars_(toolbars), code_(code), edit_window_(edit_window) {}

  void bold();
  void italic();
  void underline();
  void strike();
  void undo();
  void redo();
  /// Asks for an address and makes the selection a link.
  void insert_Link();
  /// A line break, or a paragraph's end.
  void sendCR(bool bBR);
  /// A command of the document without a value.
  void run_command(std::u16string_view command);
  /// The buttons of commands that can be on, as the selection has them.
  void show_state();

 private:
  void run_toggle(std::u16string_view command, bool guarded, int button, std::u16string_view query);
  void show_paragraph_state();
  void show_pressed(int button, std::u16string_view query);
  void make_link_under_mouse_relative();

  Toolbars& toolbars_;
  CodePane& code_;
  EditWindow& edit_window_;
};

}  // namespace tvx::core
