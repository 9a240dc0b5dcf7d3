#include "tvx/core/views/layout.h"

#include "tvx/base/error.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/htmled.h"
#include "tvx/platform/toolbar.h"

namespace tvx::core {
namespace {

/// A toolbar of one ordinary row stands in a holder of one fixed height; one that wraps, or is very low, in a
/// holder of its own height.
float holder_height(const platform::Toolbar& toolbar) {
  const float height = toolbar.Height();
  return height > 500 && height < 1000 ? 840 : height;
}

constexpr float extra_width = 30, branch_holder_margin = 2, branch_bottom_margin = 19,
                code_bottom_margin = 15, lone_browser_top = 10;

void lay_out_disabled(Layout& layout, const LayoutInput& input) {
  layout.Picture1.Visible = layout.Picture2.Visible = layout.Picture3.Visible = false;
  layout.WBrowser.Top = lone_browser_top;
  layout.WBrowser.Width = input.width;
  layout.WBrowser.Height = input.height - code_bottom_margin;
  layout.txtCode.Left = layout.WBrowser.Left;
  layout.txtCode.Top = layout.WBrowser.Top;
  layout.txtCode.Width = input.width;
  layout.txtCode.Height = 0;
}

void place_holder(Box& holder, platform::Toolbar& toolbar, float top, float width) {
  holder.Top = top;
  holder.Left = 0;
  holder.Visible = true;
  holder.Width = width;
  toolbar.set_Width(width);
  holder.Height = holder_height(toolbar);
}

}  // namespace

void lay_out(Layout& layout, const LayoutInput& input, platform::Toolbar& toolbar1,
             platform::Toolbar& toolbar2, platform::Toolbar& tlbDOM) {
  layout.txtCode.Visible = input.in_code_view;
  if (!input.editor_enabled) return lay_out_disabled(layout, input);

  float top = 0;
  if (input.formatting_toolbar_1 || input.formatting_toolbar_2) {
    place_holder(layout.Picture1, toolbar1, 0, input.width);
    top = layout.Picture1.Height;
  } else if (!toolbar1.Item(1).Visible()) {
    layout.Picture1.Visible = false;
  }
  layout.Picture3.Visible = input.dom_toolbar;
  if (input.dom_toolbar) {
    layout.Picture3.Width = input.width + extra_width;
    tlbDOM.set_Width(layout.Picture3.Width + extra_width);
    layout.Picture3.Height = tlbDOM.Height() + branch_holder_margin;
    layout.Picture3.Top = input.height - layout.Picture3.Height - branch_bottom_margin;
  }
  layout.Picture2.Visible = input.form_toolbar;
  if (input.form_toolbar) {
    place_holder(layout.Picture2, toolbar2, top, input.width);
    top += layout.Picture2.Height;
  }
  layout.WBrowser.Top = top;
  layout.WBrowser.Width = input.width;
  layout.WBrowser.Height = input.height - top - (input.dom_toolbar ? layout.Picture3.Height : 0);
  layout.txtCode.Left = layout.WBrowser.Left;
  layout.txtCode.Top = layout.Picture1.Height;
  layout.txtCode.Width = input.width;
  layout.txtCode.Height = input.height - layout.Picture1.Height - code_bottom_margin;
}

void HTMLed::set_size(float width, float height) {
  width_ = width;
  height_ = height;
}

// At design time the control is a box with its name and version on it.
void HTMLed::lay_out_at_design_time() {
  layout_.Picture1.Visible = layout_.Picture2.Visible = false;
  toolbars_->tlbDOM.set_Visible(false);
  txtCode_.set_Text(std::u16string_view(u"Orvel HTML Editor - version : " TVX_VERSION));
  layout_.txtCode = {layout_.txtCode.Left, 0, width_, height_, true};
  txtCode_.set_Enabled(false);
  txtCode_.set_Visible(true);
}

void HTMLed::UserControl_Resize() {
  const Layout before = layout_;
  if (!run_time()) {
    lay_out_at_design_time();
  } else {
    LayoutInput input;
    input.width = width_;
    input.height = height_;
    input.editor_enabled = properties_.EditorEnabled;
    input.formatting_toolbar_1 = properties_.showFormattingToolbar1;
    input.formatting_toolbar_2 = properties_.showFormattingToolbar2;
    input.form_toolbar = properties_.showFormToolbar;
    input.dom_toolbar = properties_.showDOMToolbar;
    input.in_code_view = inCodeView_;
    attempt([&] { lay_out(layout_, input, Toolbar1(), Toolbar2(), tlbDOM()); });
    txtCode_.set_Visible(inCodeView_);
    txtCode_.resize(layout_.txtCode.Width, layout_.txtCode.Height);
    tlbDOM().Refresh();
  }
  tell_layout(before);
}

void HTMLed::tell_layout(const Layout& before) {
  if (before == layout_) return;
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->layout_changed(layout_);
}

}  // namespace tvx::core
