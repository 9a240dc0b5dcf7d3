#include "tvx/base/error.h"
#include "tvx/core/content/remote_content.h"
#include "tvx/core/content/temporary_files.h"
#include "tvx/core/htmled.h"
#include "tvx/core/parts.h"
#include "tvx/dom/tree.h"

/// The container's calls, in the order in which a control lives.
namespace tvx::core {

void HTMLed::UserControl_Initialize() {
  attempt([&] { parts_->toolbars.prepare_branch_toolbar(); });
}

void HTMLed::UserControl_InitProperties() {
  properties_ = Properties();
  browser_->set_resource_policy(policy_of(properties_));
}

void HTMLed::UserControl_ReadProperties(const platform::PropertyBag& bag) {
  attempt([&] { read_properties(properties_, parts_->labels, bag); });
  browser_->set_resource_policy(policy_of(properties_));
  if (run_time() && !docHTML_) StartEditor();
}

void HTMLed::UserControl_WriteProperties(platform::PropertyBag& bag) {
  attempt([&] { write_properties(properties_, bag); });
}

void HTMLed::UserControl_Show() {
  if (run_time()) {
    if (!docHTML_) StartEditor();
    if (!parts_->style_sheet.active()) parts_->style_sheet.ApplyStyleSheet();
  }
  UserControl_Resize();
}

void HTMLed::StartEditor() {
  if (terminated_) return;
  parts_->words.apply_language_file();
  if (terminated_) return;  // by a host that hears of a missing file
  parts_->toolbar_commands.ApplyToolbarState(properties_.EditorEnabled);
  parts_->menu_commands.ApplyContextMenuState();
  parts_->bootstrap.BootstrapDocument();
  if (!properties_.DocumentHTML->empty()) parts_->content.LoadStoredDocumentHTML();
}

void HTMLed::UserControl_EnterFocus() {
  if (!run_time()) return;
  state_changed();  // another program may have copied something
  if (InCodeView()) return txtCode().SetFocus();
  if (parts_->side.shows() && parts_->side.box().has_focus()) return;
  attempt([&] {
    dom::Element& body = body_of(document());
    dom::Element* first = dom::first_child_element(body);
    parts_->highlight.set_element(first ? first : &body);
  });
  parts_->edit_window.focus();
}

void HTMLed::UserControl_ExitFocus() {
  if (!run_time()) return;
  attempt([&] { parts_->highlight.restore(); });
  parts_->highlight.set_element({});
}

void HTMLed::UserControl_Terminate() {
  if (terminated_) return;
  terminated_ = true;
  parts_->transfers.end();
  parts_->dialogs.cancel_all();
  remove_temporary_files(surroundings_.hwnd);
  txtCode().DetachAllMessages();
  drop_references();
}

void HTMLed::drop_references() {
  parts_->style_sheet.forget_classes();
  browser_->Stop();
  parts_->style_sheet.forget_document();
  set_DOM(nullptr);
  parts_->input.forget_event();
  parts_->content.forget_document();
}

}  // namespace tvx::core
