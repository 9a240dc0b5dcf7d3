#include "tvx/core/views/edit_window.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/browser.h"

namespace tvx::core {

// It is there as soon as the browser has one.
void EditWindow::FindEditWindow() { found_ = browser().window() != nullptr; }

void EditWindow::ShowEditCaret() {
  attempt([&] {
    if (browser().window()) browser().window()->show_caret();
  });
}

void EditWindow::got_focus() {
  FindEditWindow();
  if (!properties_.isAccessContained || !found_) return;
  browser().window()->focus();
  ShowEditCaret();
}

// A click on a toolbar doesn't take the caret from the document.
void EditWindow::lost_focus(std::u16string_view active_control, bool in_code_view) {
  if (active_control.empty() || in_code_view || !browser().window()) return;
  if (contains(active_control, u"Picture") || active_control == u"txtCode") browser().window()->focus();
}

void EditWindow::focus() {
  if (found_ && browser().window()) browser().window()->focus();
}

void EditWindow::scroll_to_line(int y) {
  if (browser().window()) browser().window()->scroll_to(0, y);
}

}  // namespace tvx::core
