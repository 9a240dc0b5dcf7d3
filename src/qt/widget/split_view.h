#pragma once

#include <QRect>
#include <QWidget>
#include <functional>

#include "tvx/source/code_view.h"

namespace tvx::core {
class SideSource;
}

namespace tvx::qt {

class CodeViewFace;

/// The source beside the page on the screen, with a handle between the two that can be dragged; below the
/// page where there is little room. It is made when it is wanted first, and belongs to the control's widget.
class SplitView final : private source::CodeViewObserver {
 public:
  struct Ways {
    std::function<void()> arrange;              // the parts of the widget
    std::function<void(double)> share_changed;  // by the user
  };
  SplitView(QWidget& widget, core::SideSource& side, Ways ways);
  ~SplitView();

  CodeViewFace& face() { return *face_; }
  /// How much of the room the page has, from 0 to 1. Neither side is ever less than some lines.
  double share() const { return share_; }
  void set_share(double share);
  /// Divides the room, and answers which part of it is the page's: all of it, where the source doesn't show.
  QRect arrange(const QRect& room);

 private:
  class Handle;
  void code_view_changed() override { ways_.arrange(); }
  bool is_stacked() const;
  QRect page_of(const QRect& room) const;
  void drag_to(const QPoint& place);

  core::SideSource& side_;
  const Ways ways_;
  CodeViewFace* face_;
  Handle* handle_;
  QRect room_;
  double share_ = 0.5;
};

}  // namespace tvx::qt
