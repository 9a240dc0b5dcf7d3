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

DialogHost::~DialogHost() {
  for (platform::Form* dialog : beside_) dialog->remove_observer(*this);
}

void DialogHost::open_beside(platform::Form& dialog, std::u16string_view section) {
  words_.localise(dialog, section);
  if (!surroundings().forms) return;
  const KeepAlive alive(context_);
  beside_.push_back(&dialog);
  dialog.add_observer(*this);
  surroundings().forms->Open(dialog, surroundings().hwnd);
}

void DialogHost::form_hidden(platform::Form& form) {
  form.remove_observer(*this);
  std::erase(beside_, &form);
}

void DialogHost::cancel_all() {
  std::vector<platform::Form*> open(open_.rbegin(), open_.rend());
  open.insert(open.begin(), beside_.rbegin(), beside_.rend());
  for (platform::Form* dialog : open) dialog->cancel();
}

}  // namespace tvx::core
