#include <algorithm>
#include <functional>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/source/preparation.h"
#include "tvx/source/untouched.h"

/// The switch between the design view and the code view, and what is done in the code view. The text moves at
/// the switch; while the code shows, the document isn't touched.
namespace tvx::core {

namespace {

constexpr std::int16_t control_bit = 2;

/// Counted from 1; 0: it isn't there. No text makes the search grow faster than both lengths do.
std::int32_t position_of(const std::u16string& part, const std::u16string& text) {
  if (part.empty()) return 1;
  const auto found =
      std::search(text.begin(), text.end(), std::boyer_moore_searcher(part.begin(), part.end()));
  return found == text.end() ? 0 : static_cast<std::int32_t>(found - text.begin()) + 1;
}

}  // namespace

/// What the code view tells of its user.
struct HTMLed::CodeViewHandler final : source::CodeViewEvents {
  explicit CodeViewHandler(HTMLed& owner) : control(owner) {}

  void GotFocus() override {
    if (!control.run_time()) return;
    source::OrvelCV& code = control.txtCode_;
    platform::SendMessage(code.hwnd(), platform::WM_SETFOCUS);
    code.set_SelStart(control.code_selection_start_ - 1);
    code.set_SelLength(static_cast<std::int32_t>(control.selected_html_.size()));
  }

  void Change() override {
    const KeepAlive alive(control);
    if (control.run_time()) control.mark_changed();
  }

  // Every key that comes here counts as a change, also the arrows. The box has its own keys for undo.
  void KeyDown(std::int16_t& KeyCode, std::int16_t Shift) override {
    const KeepAlive alive(control);
    if (!control.run_time()) return;
    if (control.properties_.isAccessContained && Shift == control_bit) {
      if (KeyCode == u'C') return;
      if (KeyCode == u'Z') control.txtCode_.Undo();
      if (KeyCode == u'Y') control.txtCode_.Redo();
    }
    control.mark_changed();
  }

  HTMLed& control;
};

void HTMLed::connect_code_view() {
  code_view_handler_ = std::make_unique<CodeViewHandler>(*this);
  txtCode_.set_events(code_view_handler_.get());
  txtCode_.set_clipboard(clipboard_);
}

void HTMLed::show_Code() {
  const KeepAlive alive(*this);
  bool wysiwyg = !inCodeView_, cancel = false;
  raise([&](HTMLedEvents& host) { host.BeforeCodeViewChange(wysiwyg, cancel); });
  if (!cancel) {
    const bool done = attempt([&] {
      capture_selected_html();
      inCodeView_ ? leave_code_view() : enter_code_view();
    });
    if (done) {
      inCodeView_ = !inCodeView_;
      for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->view_switched(inCodeView_);
    } else {
      raise_error(106, u"the editor cannot parse the code and cant show the code");
    }
  }
  UserControl_Resize();
}

// With no element that is the current one, or one that has left the document, what was selected before stays.
void HTMLed::capture_selected_html() {
  const std::u16string_view type = editing::selection_type_name(document().editor());
  if (type == u"None") return;
  const dom::Element* current = highlight_->element();
  const bool here = current && dom::is_connected(*current);
  selected_source_index_ = here ? static_cast<std::int32_t>(document().tree().source_index(*current)) : -1;
  if (selected_source_index_ == -1) return;
  selected_html_ = type == u"Text" ? dom::inner_html(*current) : dom::outer_html(*current);
}

void HTMLed::show_as_entered(SharedText original, SharedText code) {
  entered_text_ = std::move(original);
  entered_code_ = std::move(code);
  txtCode_.set_Text(entered_code_);
}

void HTMLed::enter_code_view() {
  highlight_->restore();
  ApplyToolbarState(false);
  fault_point(u"body.innerHTML");
  const SharedText text = share(text_of_body());
  const SharedText code = share(source::code_of(*text));
  code_selection_start_ = position_of(selected_html_, *code);
  txtCode_.attachMessages();
  show_as_entered(text, code);
  txtCode_.set_Visible(true);
  txtCode_.set_TabStop(true);
  browser_tab_stop_ = false;
  txtCode_.ZOrder(true);
  txtCode_.SetFocus();
}

void HTMLed::leave_code_view() {
  const auto kept = docHTML_;
  txtCode_.ZOrder(false);
  ApplyToolbarState(true);
  write_code_to_body();
  txtCode_.DetachAllMessages();
  txtCode_.set_TabStop(false);
  txtCode_.set_Visible(false);
  browser_tab_stop_ = true;
  entered_text_.reset();
  entered_code_.reset();
  if (browser_->window()) {
    if (dom::Element* current = highlight_->element()) browser_->window()->scroll_into_view(*current);
    browser_->window()->focus();
  }
  if (dom::inner_html(body_of(document())) != *original_html_) mark_changed();
}

// A code that stands as it was entered leaves the document as it is, with its undo and its caret: the
// formatter's white space is no edit.
void HTMLed::write_code_to_body() {
  dom::Element& body = body_of(document());
  fault_point(u"body.innerHTML");
  if (entered_code_ && txtCode_.untouched_text() == entered_code_) return;
  const std::u16string left = txtCode_.Text();
  const std::u16string entered = entered_code_ ? source::with_crlf(*entered_code_) : std::u16string();
  if (entered_code_ && left == entered) return;
  const dom::UndoStep step(document().tree().journal(), u"Source");
  dom::set_inner_html(body,
                      entered_text_ ? source::with_original_lines(*entered_text_, entered, left) : left);
  const dom::Element* current = highlight_->element();
  if (current && !dom::is_connected(*current)) highlight_->set_element({});
}

}  // namespace tvx::core
