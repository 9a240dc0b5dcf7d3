#include "tvx/core/views/layout.h"

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

}  // namespace tvx::core
