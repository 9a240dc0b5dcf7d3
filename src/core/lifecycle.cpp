#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/style/style_sheet.h"
#include "tvx/dom/tree.h"

/// The container's calls, in the order in which a control lives.
namespace tvx::core {

void HTMLed::UserControl_Initialize() {
  attempt([&] { toolbars_->prepare_branch_toolbar(); });
}

void HTMLed::UserControl_InitProperties() { properties_ = Properties(); }

void HTMLed::UserControl_ReadProperties(const platform::PropertyBag& bag) {
  attempt([&] { read_properties(properties_, labels_, bag); });
  if (run_time() && !docHTML_) StartEditor();
}

void HTMLed::UserControl_WriteProperties(platform::PropertyBag& bag) {
  attempt([&] { write_properties(properties_, bag); });
}

void HTMLed::UserControl_Show() {
  if (run_time()) {
    if (!docHTML_) StartEditor();
    if (!active_style_sheet_) ApplyStyleSheet();
  }
  UserControl_Resize();
}

void HTMLed::StartEditor() {
  if (terminated_) return;
  apply_language_file();
  if (terminated_) return;  // by a host that hears of a missing file
  ApplyToolbarState(properties_.EditorEnabled);
  ApplyContextMenuState();
  BootstrapDocument();
  if (!properties_.DocumentHTML->empty()) LoadStoredDocumentHTML();
}

void HTMLed::LoadStoredDocumentHTML() {
  const SharedText html = properties_.DocumentHTML;
  if (run_time()) {
    attempt([&] { wait_until_complete(); });
    write_body(*html);
    txtCode_.set_Text(html);
    original_html_ = html;
    attempt([&] { set_design_mode_of_browser(); });
  }
  PropertyChanged(u"DocumentHTML");
  properties_.IsDirty = false;
}

void HTMLed::UserControl_EnterFocus() {
  if (!run_time()) return;
  if (inCodeView_) return txtCode_.SetFocus();
  attempt([&] {
    dom::Element& body = body_of(document());
    dom::Element* first = dom::first_child_element(body);
    highlight_->set_element(first ? first : &body);
  });
  if (edit_window_found_ && browser_->window()) browser_->window()->focus();
}

void HTMLed::UserControl_ExitFocus() {
  if (!run_time()) return;
  attempt([&] { highlight_->restore(); });
  highlight_->set_element({});
}

void HTMLed::UserControl_Terminate() {
  if (terminated_) return;
  terminated_ = true;
  cancel_open_dialogs();
  for (std::u16string_view name : {style_sheet_file, document_file}) {
    std::error_code ignored;  // a file that is gone already is none of our business
    attempt([&] { std::filesystem::remove(file_system_path(temporary_file(name)), ignored); });
  }
  txtCode_.DetachAllMessages();
  drop_references();
}

void HTMLed::drop_references() {
  style_classes_.clear();
  browser_->Stop();
  active_style_sheet_.reset();
  set_docHTML(nullptr);
  last_event_.reset();
  base_element_ = {};
}

}  // namespace tvx::core
