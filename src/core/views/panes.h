#pragma once

#include "tvx/core/part.h"
#include "tvx/core/views/layout.h"

namespace tvx::core {

class CodePane;
class Toolbars;

/// Where the parts of the control stand in it, kept true to its size and told to those who show it.
class Panes final : public Part {
 public:
  Panes(Context& context, Toolbars& toolbars, CodePane& code)
      : Part(context), toolbars_(toolbars), code_(code) {}

  const Layout& layout() const { return layout_; }
  /// The control's area, in twips.
  void set_size(float width, float height);
  void resize();
  /// The element path has other buttons: its toolbar may be higher now.
  void fit_element_path();
  /// As the properties say, with editing on or off.
  void show_toolbars(bool enabled);

 private:
  void lay_out_at_design_time();
  void lay_out_at_run_time();
  void tell_layout(const Layout& before);

  Toolbars& toolbars_;
  CodePane& code_;
  float width_ = 0, height_ = 0;
  Layout layout_;
};

}  // namespace tvx::core
