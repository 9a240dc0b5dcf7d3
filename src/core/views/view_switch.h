#pragma once

#include <functional>

#include "tvx/core/part.h"

namespace tvx::core {

class CodePane;
class Content;
class Panes;
class SelectionHighlight;
class SideSource;
class ToolbarCommands;

/// From the design view to the code view and back, and what is done in the code view.
class ViewSwitch final : public Part {
 public:
  ViewSwitch(Context& context, Content& content, CodePane& code, SideSource& side, Panes& panes,
             ToolbarCommands& toolbars, SelectionHighlight& highlight)
      : Part(context),
        content_(content),
        code_(code),
        side_(side),
        panes_(panes),
        toolbars_(toolbars),
        highlight_(highlight) {}

  /// To the other view, if the host doesn't forbid it.
  void show_Code();
  /// A call of the host's that changes the document. While the code shows, what was typed into it goes into
  /// the document before, and the code shows what the document has become.
  void change_document(const std::function<void()>& change);
  /// Turns editing on or off; the code view is left where it goes off.
  void switch_editing(bool enabled);

 private:
  void capture_selected_html();
  void enter_code_view();
  void leave_code_view();
  void write_code_to_body();

  Content& content_;
  CodePane& code_;
  SideSource& side_;
  Panes& panes_;
  ToolbarCommands& toolbars_;
  SelectionHighlight& highlight_;
};

}  // namespace tvx::core
