#pragma once

namespace tvx::platform {
class Toolbar;
}

namespace tvx::core {

/// Where a part of the control stands within it, in twips.
struct Box {
  float Left = 0, Top = 0, Width = 0, Height = 0;
  bool Visible = true;
  bool operator==(const Box&) const = default;
};

/// The boxes of all that is inside the control: the holders of `Toolbar1`, `Toolbar2` and `tlbDOM`, the
/// browser, and the code view that lies over it.
struct Layout {
  Box Picture1, Picture2, Picture3, WBrowser, txtCode;
  bool operator==(const Layout&) const = default;
};

/// What the layout depends on.
struct LayoutInput {
  float width = 0, height = 0;  // of the control
  bool editor_enabled = true;
  bool formatting_toolbar_1 = true, formatting_toolbar_2 = true, form_toolbar = false, dom_toolbar = true;
  bool in_code_view = false;
};

/// The layout at run time. Toolbars are given their widths here and asked for the height that follows.
void lay_out(Layout& layout, const LayoutInput& input, platform::Toolbar& toolbar1,
             platform::Toolbar& toolbar2, platform::Toolbar& tlbDOM);

}  // namespace tvx::core
