#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_sheet.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/typing.h"

/// What the browser tells, and what goes to its inner window.
namespace tvx::core {

void HTMLed::BeforeNavigate2(const browser::Navigation& navigation, bool& cancel) {
  if (!run_time()) return;
  if (opening_document_ || contains(navigation.url, to_text(hwnd()))) {
    cancel = false;
    return;
  }
  std::u16string url = navigation.url, frame = navigation.target_frame;
  bool refuse = true;
  raise([&](HTMLedEvents& host) { host.BeforeNavigate(url, frame, refuse); });
  cancel = refuse;
}

void HTMLed::NavigateComplete2(bool, const std::u16string&) { FindEditWindow(); }

void HTMLed::DocumentComplete(bool top, const std::u16string&) {
  if (!run_time() || !top || terminated_) return;
  const KeepAlive alive(*this);
  attempt([&] {
    browser_document();  // throws if there is none
    set_docHTML(browser_->Document());
  });
  attempt([&] {
    const dom::MutationScope scope(document().tree(), dom::MutationKind::Load);
    document().set_title(properties_.DocumentTitle);
  });
  attempt([&] { document().tree().journal().clear(); });
  attempt([&] { LoadStyleClasses(); });
  attempt([&] {
    const dom::MutationScope scope(document().tree(), dom::MutationKind::Load);
    apply_base_url(document());
  });
}

void HTMLed::DownloadBegin() {
  if (watch_download_) download_done_ = false;
}

void HTMLed::DownloadComplete() {
  if (watch_download_) download_done_ = true;
}

void HTMLed::NavigateError(const browser::Navigation& navigation, std::int32_t) {
  raise_error(20000, u"Cant find document : " + navigation.url);
}

// The window that takes keyboard input is there as soon as the browser has one.
void HTMLed::FindEditWindow() { edit_window_found_ = browser_->window() != nullptr; }

void HTMLed::ShowEditCaret() {
  attempt([&] {
    if (browser_->window()) browser_->window()->show_caret();
  });
}

void HTMLed::WBrowser_GotFocus() {
  FindEditWindow();
  if (!properties_.isAccessContained || !edit_window_found_) return;
  browser_->window()->focus();
  ShowEditCaret();
}

// A click on a toolbar doesn't take the caret from the document.
void HTMLed::WBrowser_LostFocus(std::u16string_view active_control) {
  if (active_control.empty() || inCodeView_ || !browser_->window()) return;
  if (contains(active_control, u"Picture") || active_control == u"txtCode") browser_->window()->focus();
}

// Both keys that this sends go to the document's typing at once. As messages they would come back as an
// onkeydown of Enter, which isAccessContained would send again, without end.
void HTMLed::sendCR(bool bBR) {
  FindEditWindow();
  attempt([&] {
    const auto kept = docHTML_;
    editing::Editor& editor = document().editor();
    const dom::UndoStep step(document().tree().journal(), u"Line break");
    if (bBR) {
      attempt([&] { editor.execute(u"insertHTML", u"<BR>&nbsp;"); });
      editing::delete_backward(editor);
    } else {
      editing::press_enter(editor);
    }
  });
}

void HTMLed::scrollToTop() {
  if (browser_->window()) browser_->window()->scroll_to(0, 0);
}

void HTMLed::scrollToBottom() {
  if (browser_->window()) browser_->window()->scroll_to(0, 999999);
}

}  // namespace tvx::core
