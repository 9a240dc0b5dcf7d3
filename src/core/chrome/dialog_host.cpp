#include "tvx/core/chrome/dialog_host.h"

#include <algorithm>

#include "tvx/core/chrome/words.h"
#include "tvx/platform/form.h"

namespace tvx::core {

void DialogHost::show(platform::Form& dialog, std::u16string_view section) {
  words_.localise(dialog, section);
  if (!surroundings().forms) return dialog.cancel();
  const KeepAlive alive(context_);
  open_.push_back(&dialog);
  const struct Closed {
    std::vector<platform::Form*>& open;
    platform::Form* dialog;
    ~Closed() { std::erase(open, dialog); }
  } closed{open_, &dialog};
  surroundings().forms->Show(dialog, surroundings().hwnd);
}

void DialogHost::cancel_all() {
  const std::vector<platform::Form*> open(open_.rbegin(), open_.rend());
  for (platform::Form* dialog : open) dialog->cancel();
}

}  // namespace tvx::core
