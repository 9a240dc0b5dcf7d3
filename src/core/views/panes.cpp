#include "tvx/core/views/panes.h"

#include <cmath>

#include "tvx/base/error.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/observer.h"
#include "tvx/core/views/code_pane.h"

namespace tvx::core {

void Panes::set_size(float width, float height) {
  width_ = width;
  height_ = height;
}

void Panes::resize() {
  const Layout before = layout_;
  run_time() ? lay_out_at_run_time() : lay_out_at_design_time();
  tell_layout(before);
}

// At design time the control is a box with its name and version on it.
void Panes::lay_out_at_design_time() {
  layout_.Picture1.Visible = layout_.Picture2.Visible = false;
  toolbars_.tlbDOM.set_Visible(false);
  source::OrvelCV& box = code_.box();
  box.set_Text(std::u16string_view(u"Orvel HTML Editor - version : " TVX_VERSION));
  layout_.txtCode = {layout_.txtCode.Left, 0, width_, height_, true};
  box.set_Enabled(false);
  box.set_Visible(true);
}

void Panes::lay_out_at_run_time() {
  LayoutInput input;
  input.width = width_;
  input.height = height_;
  input.editor_enabled = properties_.EditorEnabled;
  input.formatting_toolbar_1 = properties_.showFormattingToolbar1;
  input.formatting_toolbar_2 = properties_.showFormattingToolbar2;
  input.form_toolbar = properties_.showFormToolbar;
  input.dom_toolbar = properties_.showDOMToolbar;
  input.in_code_view = code_.in_front();
  attempt([&] { lay_out(layout_, input, toolbars_.Toolbar1, toolbars_.Toolbar2, toolbars_.tlbDOM); });
  code_.box().set_Visible(code_.in_front());
  code_.box().resize(layout_.txtCode.Width, layout_.txtCode.Height);
  toolbars_.tlbDOM.Refresh();
}

void Panes::fit_element_path() {
  const Layout before = layout_;
  layout_.Picture3.Height = toolbars_.tlbDOM.Height();
  layout_.Picture3.Top = height_ - layout_.Picture3.Height;
  layout_.WBrowser.Width = std::trunc(width_);
  layout_.WBrowser.Height = height_ - layout_.WBrowser.Top - layout_.Picture3.Height;
  tell_layout(before);
}

void Panes::show_toolbars(bool enabled) {
  const Layout before = layout_;
  if (enabled) {
    layout_.Picture2.Visible = properties_.showFormToolbar;
    layout_.Picture2.Top = layout_.Picture1.Height;
  } else {
    layout_.Picture1.Visible = properties_.showFormattingToolbar1;
    layout_.Picture2.Visible = false;
  }
  tell_layout(before);
}

void Panes::tell_layout(const Layout& before) {
  if (before == layout_) return;
  context_.tell([&](HTMLedObserver& observer) { observer.layout_changed(layout_); });
}

}  // namespace tvx::core
