#include "tvx/clipboard/clip.h"

#include "tvx/platform/clipboard.h"
#include "tvx/platform/text_box.h"

namespace tvx::clipboard {

using platform::ClipboardFormat;
using platform::SendMessage;
using platform::WindowHandle;

void clsClip::Cut(WindowHandle hwnd) const { SendMessage(hwnd, platform::WM_CUT); }
void clsClip::Copy(WindowHandle hwnd) const { SendMessage(hwnd, platform::WM_COPY); }
void clsClip::Paste(WindowHandle hwnd) const { SendMessage(hwnd, platform::WM_PASTE); }

void clsClip::Undo(WindowHandle hwnd) const {
  if (CanUndo(hwnd)) SendMessage(hwnd, platform::EM_UNDO);
}

void clsClip::Redo(WindowHandle hwnd) const { SendMessage(hwnd, platform::EM_REDO); }

bool clsClip::CanUndo(WindowHandle hwnd) const { return SendMessage(hwnd, platform::EM_CANUNDO) != 0; }

bool clsClip::CanPaste() const {
  if (!clipboard_) return false;
  for (ClipboardFormat format :
       {ClipboardFormat::text, ClipboardFormat::unicode_text, ClipboardFormat::oem_text})
    if (clipboard_->IsClipboardFormatAvailable(format)) return true;
  return false;
}

void clsClip::Delete(WindowHandle hwnd) const {
  static constexpr char16_t nothing[] = u"";
  SendMessage(hwnd, platform::EM_REPLACESEL, 1, reinterpret_cast<platform::Parameter>(nothing));
}

}  // namespace tvx::clipboard
