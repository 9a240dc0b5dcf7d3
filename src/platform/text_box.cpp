#include "tvx/platform/text_box.h"

#include "tvx/platform/clipboard.h"

namespace tvx::platform {
namespace {

constexpr std::int16_t control_bit = 2;

}  // namespace

void TextBox::send_key_down(std::int16_t key_code, std::int16_t shift) {
  shift_ = shift;
  control_down_ = (shift & control_bit) != 0;
  SendMessage(handle(), WM_KEYDOWN, key_code);
  control_down_ = false;
  shift_ = 0;
}

void TextBox::copy() {
  if (clipboard_ && SelLength() > 0) clipboard_->SetText(SelText());
}

MessageResult TextBox::handle_message(Message message, Parameter wParam, Parameter lParam) {
  switch (message) {
    case EM_GETLINECOUNT: return static_cast<MessageResult>(line_count());
    case EM_LINEFROMCHAR: return static_cast<MessageResult>(line_of(static_cast<std::size_t>(wParam)));
    case EM_GETFIRSTVISIBLELINE: return static_cast<MessageResult>(first_visible_line());
    case WM_COPY: copy(); return 0;
    case WM_CUT:
      copy();
      if (SelLength() > 0 && !Locked()) set_SelText({});
      return 0;
    case WM_PASTE:
      if (clipboard_ && !Locked() && clipboard_->GetFormat(ClipboardFormat::text))
        set_SelText(clipboard_->GetText());
      return 0;
    case EM_CANUNDO: return can_undo() || (handler_ && handler_->CanTakeBack(false));
    case EM_UNDO:
      if (handler_ && !Locked() && handler_->TakeBack(false)) return 1;
      if (!can_undo()) return 0;
      if (!Locked()) Undo();
      return 1;
    case EM_REDO:
      if (handler_ && !Locked() && handler_->TakeBack(true)) return 1;
      if (!Locked()) Redo();
      return 1;
    case EM_REPLACESEL:
      if (const auto* by = reinterpret_cast<const char16_t*>(lParam); by && !Locked()) set_SelText(by);
      return 0;
    case WM_KEYDOWN: {
      auto key_code = static_cast<std::int16_t>(wParam);
      const std::int16_t shift = shift_;
      if (handler_) handler_->KeyDown(key_code, shift);
      if (key_code != 0) on_key(key_code, shift);
      return 0;
    }
    default: return 0;
  }
}

}  // namespace tvx::platform
