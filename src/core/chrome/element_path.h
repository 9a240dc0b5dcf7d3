#pragma once

#include "tvx/core/part.h"

namespace tvx::platform {
class Button;
}

namespace tvx::core {

class ContextMenus;
class Panes;
class SelectionHighlight;
class Toolbars;

/// The way to the current element at the foot of the control, and the border around that element.
class ElementPath final : public Part {
 public:
  ElementPath(Context& context, Toolbars& toolbars, ContextMenus& menus, SelectionHighlight& highlight,
              Panes& panes, const TableLabels& labels)
      : Part(context),
        toolbars_(toolbars),
        menus_(menus),
        highlight_(highlight),
        panes_(panes),
        labels_(labels) {}

  void BuildBranchToolbar();
  /// Makes the button's element the current one and opens its menu. Throws for an element that is gone.
  void press(const platform::Button& button);
  /// As the properties say.
  void draw_selection_border();

 private:
  Toolbars& toolbars_;
  ContextMenus& menus_;
  SelectionHighlight& highlight_;
  Panes& panes_;
  const TableLabels& labels_;
};

}  // namespace tvx::core
