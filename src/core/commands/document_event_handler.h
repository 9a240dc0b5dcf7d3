#pragma once

#include <memory>

#include "tvx/browser/events.h"
#include "tvx/core/part.h"

namespace tvx::core {

class ClipboardCommands;
class ElementPath;
class Formatting;
class MenuCommands;
class SelectionCommands;
class FieldSettings;
class SelectionHighlight;

/// What the document tells: keys, presses and clicks, and where the selection went.
class DocumentEventHandler final : public Part, public browser::DocumentHandler {
 public:
  struct Parts {
    ClipboardCommands& clipboard;
    Formatting& formatting;
    SelectionCommands& selection;
    ElementPath& element_path;
    MenuCommands& menus;
    SelectionHighlight& highlight;
    FieldSettings& field_settings;
  };
  DocumentEventHandler(Context& context, const Parts& parts) : Part(context), parts_(parts) {}

  /// The event that the last key or selection handler fetched; null before.
  const browser::Event* last_event() const { return last_event_.get(); }
  void forget_event() { last_event_.reset(); }

  bool user_may_edit() const override;
  void onkeydown() override;
  void onkeyup() override;
  void onuserchange() override;
  bool onclick() override;
  bool ondblclick() override;
  void onmousedown() override;
  bool oncontextmenu() override;
  bool oncontrolselect() override;
  bool onselectstart() override;
  bool ondragstart() override;
  void onselectionchange() override;

 private:
  void fetch_last_event();
  void act_on_key(int key_code, bool shift, bool control);
  void raise_document_click();
  dom::Ref<dom::Element> element_of_last_event() const;
  void follow_selection();

  const Parts parts_;
  std::unique_ptr<browser::Event> last_event_;
};

}  // namespace tvx::core
