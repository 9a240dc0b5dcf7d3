#include "tvx/qt/forms/form_face.h"

#include "tvx/qt/dialogs/wait_dialog.h"
#include "tvx/qt/forms/form_dialog.h"
#include "tvx/qt/support/font_list.h"
#include "tvx/qt/support/modal.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {

std::vector<std::u16string> Forms::fonts() const {
  std::vector<std::u16string> names;
  for (const QString& family : font_families()) names.push_back(from_qt(family));
  return names;
}

void Forms::run(platform::Form& form, platform::WindowHandle) {
  Modal<FormDialog> dialog(form, owner_for_dialog(control_));
  if (sight_ && form.leaves_selection_in_sight()) sight_->attend(*dialog.operator->());
  dialog.run();
  // It went with its window: nobody has agreed to anything.
  if (form.Visible()) form.cancel();
}

/// What is shown beside the work is what shows its progress.
void Forms::open(platform::Form& form, platform::WindowHandle) {
  new WaitDialog(form, control_ ? control_->window() : nullptr);  // ends by itself, or with its window
}

}  // namespace tvx::qt
