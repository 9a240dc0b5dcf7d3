#include "tvx/core/views/code_pane.h"

#include <utility>

#include "tvx/base/line_ends.h"
#include "tvx/core/observer.h"

namespace tvx::core {
namespace {

constexpr std::int16_t control_bit = 2;

}  // namespace

CodePane::CodePane(Context& context) : Part(context) {
  txtCode_.set_events(this);
  txtCode_.set_clipboard(surroundings().clipboard);
}

void CodePane::set_in_front(bool in_front) {
  in_front_ = in_front;
  context_.tell([&](HTMLedObserver& observer) { observer.view_switched(in_front); });
}

std::u16string CodePane::codeText() const { return code_text_ ? with_crlf(*code_text_) : std::u16string(); }

void CodePane::show_as_entered(source::SourceText text) {
  entered_ = std::move(text);
  txtCode_.set_Text(entered_->code());
}

void CodePane::forget_entered() { entered_.reset(); }

std::optional<std::u16string> CodePane::edited_body() const {
  if (!entered_) return txtCode_.Text();
  if (txtCode_.untouched_text() == entered_->code()) return {};
  const std::u16string left = txtCode_.Text();
  if (left == *entered_->code()) return {};
  return entered_->markup_after(left);
}

void CodePane::GotFocus() {
  if (!run_time()) return;
  platform::SendMessage(txtCode_.hwnd(), platform::WM_SETFOCUS);
  txtCode_.set_SelStart(selection_.code_start - 1);
  txtCode_.set_SelLength(static_cast<std::int32_t>(selection_.html.size()));
}

void CodePane::Change() {
  const KeepAlive alive(context_);
  if (run_time()) mark_changed();
}

// Every key that comes here counts as a change, also the arrows. The box has its own keys for undo.
void CodePane::KeyDown(std::int16_t& KeyCode, std::int16_t Shift) {
  const KeepAlive alive(context_);
  if (!run_time()) return;
  if (properties_.isAccessContained && Shift == control_bit) {
    if (KeyCode == u'C') return;
    if (KeyCode == u'Z') txtCode_.Undo();
    if (KeyCode == u'Y') txtCode_.Redo();
  }
  mark_changed();
}

}  // namespace tvx::core
