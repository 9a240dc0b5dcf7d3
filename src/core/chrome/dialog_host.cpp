#include "tvx/core/chrome/dialog_host.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/words.h"
#include "tvx/dom/style/used_colours.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/platform/common_dialogs.h"
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
  const auto document = DOM();
  const std::uint64_t contents = document ? document->contents() : 0;
  offer_used_colours(dialog);
  surroundings().forms->Show(dialog, surroundings().hwnd);
  if (context_.terminated() || (DOM() == document && (!document || document->contents() == contents))) return;
  if (!dialog.given_up()) tell_replaced();
  throw RuntimeError(errors::invalid_call, u"The document has been replaced");
}

// What was asked for the former content is not for this one.
void DialogHost::tell_replaced() const {
  surroundings().dialogs.show_message(
      {.text = u"The document has been replaced meanwhile. It stays as it is.",
       .icon = platform::MessageIcon::information,
       .owner = surroundings().hwnd});
}

void DialogHost::offer_used_colours(platform::Form& dialog) const {
  if (!DOM()) return;
  std::vector<std::u16string> colours;
  attempt([&] {
    const dom::WithoutOverlay plain(DOM()->tree());
    colours = dom::style::used_colours(DOM()->tree());
  });
  for (const auto& control : dialog.controls())
    if (platform::FormControl* field = control->colour_field()) field->set_offered(colours);
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
