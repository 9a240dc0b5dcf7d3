#include "tvx/qt/forms/form_face.h"

#include "tvx/qt/forms/form_dialog.h"
#include "tvx/qt/support/modal.h"

namespace tvx::qt {

void Forms::run(platform::Form& form, platform::WindowHandle) {
  Modal<FormDialog> dialog(form, owner_for_dialog(control_));
  dialog.run();
  // It went with its window: nobody has agreed to anything.
  if (form.Visible()) form.cancel();
}

}  // namespace tvx::qt
