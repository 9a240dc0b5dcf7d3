#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "tvx/platform/menu.h"

namespace tvx::qt {

/// Popup menus as the desktop's: after the model in every state, also while they are open, walked with the
/// mouse or the keyboard.
class PopupMenus final : public platform::PopupMenus {
 public:
  /// `owner` is the control's widget: positions count from its corner.
  explicit PopupMenus(QWidget& owner) : owner_(&owner) {}

  /// Answers where on the screen a popup without a position appears; none: at the mouse pointer.
  void set_default_place(std::function<QPoint()> place) { default_place_ = std::move(place); }

 private:
  platform::Menu* show(platform::Menu& menu, platform::WindowHandle owner,
                       const std::optional<platform::PopupPlace>& place) override;
  QPoint point_of(const std::optional<platform::PopupPlace>& place, const QSize& size) const;

  QPointer<QWidget> owner_;
  std::function<QPoint()> default_place_;
};

}  // namespace tvx::qt
