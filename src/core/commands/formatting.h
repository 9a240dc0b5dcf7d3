#pragma once

#include <string_view>

#include "tvx/core/part.h"

namespace tvx::core {

class CodePane;
class EditWindow;
class Toolbars;

/// A host's call gets what the command says, a person's press what a writer means by it: on selected cells it
/// acts in each of them, a list button makes and takes away whole lists.
enum class AskedBy : bool { Host, Writer };

/// The public formatting operations: each names its command to the document and marks it changed.
class Formatting final : public Part {
 public:
  Formatting(Context& context, Toolbars& toolbars, CodePane& code, EditWindow& edit_window)
      : Part(context), toolbars_(toolbars), code_(code), edit_window_(edit_window) {}

  void bold(AskedBy by = AskedBy::Host);
  void italic(AskedBy by = AskedBy::Host);
  void underline(AskedBy by = AskedBy::Host);
  void strike(AskedBy by = AskedBy::Host);
  void undo();
  void redo();
  /// Asks for an address and makes the selection a link.
  void insert_Link();
  /// A line break and nothing else, or a paragraph's end, on behalf of the host.
  void sendCR(bool bBR);
  /// The Enter key, as `useEnterAsBR` has it. It leaves the caret on the new line, which a break alone
  /// doesn't begin at a line's end.
  void press_enter();
  /// A command of the document without a value.
  void run_command(std::u16string_view command, AskedBy by = AskedBy::Host);
  /// What an item of the table submenu stands for. Only what changes something marks the document.
  void act_on_cells(std::u16string_view command);
  /// The buttons of commands that can be on, as the selection has them.
  void show_state();

 private:
  void execute(std::u16string_view command, AskedBy by);
  void run_toggle(std::u16string_view command, AskedBy by, bool guarded, int button,
                  std::u16string_view query);
  void show_paragraph_state();
  void show_pressed(int button, std::u16string_view query);
  void make_link_under_mouse_relative();
  void type(bool (*key)(editing::Editor&));

  Toolbars& toolbars_;
  CodePane& code_;
  EditWindow& edit_window_;
};

}  // namespace tvx::core
