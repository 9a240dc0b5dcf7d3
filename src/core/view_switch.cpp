#include "base/error.h"
#include "browser/html_document.h"
#include "commands/selection_highlight.h"
#include "core/htmled.h"
#include "core/keep_alive.h"
#include "dom/inner_html.h"
#include "dom/journal.h"

/// The switch between the design view and the source.
namespace tvx::core {

void HTMLed::show_Code() {
  const KeepAlive alive(*this);
  bool wysiwyg = !inCodeView_, cancel = false;
  raise([&](HTMLedEvents& host) { host.BeforeCodeViewChange(wysiwyg, cancel); });
  if (!cancel) {
    const bool done = attempt([&] { inCodeView_ ? leave_code_view() : enter_code_view(); });
    if (done) {
      inCodeView_ = !inCodeView_;
      for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->view_switched(inCodeView_);
    } else {
      raise_error(106, u"the editor cannot parse the code and cant show the code");
    }
  }
  UserControl_Resize();
}

void HTMLed::enter_code_view() {
  highlight_->restore();
  ApplyToolbarState(false);
  entered_code_ = share(text_of_body());
  txtCode_.set_Text(entered_code_);
  txtCode_.set_Visible(true);
  txtCode_.SetFocus();
}

void HTMLed::leave_code_view() {
  const auto kept = docHTML_;
  ApplyToolbarState(true);
  // Source that nobody has touched leaves the document as it is, with its undo and its caret.
  if (txtCode_.untouched_text() != entered_code_) {
    dom::Element& body = body_of(document());
    const dom::UndoStep step(document().tree().journal(), u"Source");
    dom::set_inner_html(body, txtCode_.Text());
  }
  entered_code_.reset();
  txtCode_.DetachAllMessages();
  txtCode_.set_Visible(false);
  if (browser_->window()) browser_->window()->focus();
  if (dom::inner_html(body_of(document())) != *original_html_) mark_changed();
}

}  // namespace tvx::core
