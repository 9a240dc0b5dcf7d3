#pragma once

#include <cstdint>
#include <optional>

#include "tvx/core/part.h"
#include "tvx/platform/clipboard.h"

namespace tvx::core {

class ContextMenus;
class SideSource;
class Toolbars;

/// Which buttons can't act just now, and why: those of the clipboard and of undo.
class CommandState final : public Part, private platform::ClipboardObserver {
 public:
  CommandState(Context& context, Toolbars& toolbars, SideSource& side);
  ~CommandState() override;

  void show();

 private:
  void clipboard_changed() override;
  bool can_paste();

  Toolbars& toolbars_;
  SideSource& side_;
  std::optional<bool> pasteable_;   // none: not asked yet
  std::uint64_t pasteable_at_ = 0;  // the clipboard's count of changes then
};

/// The same of the items of the mouse's menus.
void show_obstacles(ContextMenus& menus, Toolbars& toolbars, const Context& context);
/// And of the items of the element path's menu, for that element.
void show_obstacles(ContextMenus& menus, const dom::Element& element, bool tag_can_be_edited);

}  // namespace tvx::core
