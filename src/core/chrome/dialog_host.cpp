#include <algorithm>

#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/platform/form.h"

/// The control's own dialogs: loaded, filled, shown, read and unloaded by the operation that needs them.
namespace tvx::core {

void HTMLed::show_dialog(platform::Form& dialog, std::u16string_view section) {
  localise(dialog, section);
  if (!forms_) return dialog.cancel();
  const KeepAlive alive(*this);
  open_dialogs_.push_back(&dialog);
  const struct Closed {
    std::vector<platform::Form*>& open;
    platform::Form* dialog;
    ~Closed() { std::erase(open, dialog); }
  } closed{open_dialogs_, &dialog};
  forms_->Show(dialog, hwnd_);
}

// The innermost first: each lets the operation behind it come to its end.
void HTMLed::cancel_open_dialogs() {
  const std::vector<platform::Form*> open(open_dialogs_.rbegin(), open_dialogs_.rend());
  for (platform::Form* dialog : open) dialog->cancel();
}

}  // namespace tvx::core
