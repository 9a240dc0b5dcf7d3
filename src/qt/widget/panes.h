#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <initializer_list>
#include <vector>

class QKeySequence;

namespace tvx::core {
class HTMLed;
}

namespace tvx::qt {

class BranchFace;
class ToolbarFace;

/// How the keyboard goes from one part of the control to another: by Tab, and by F6 from the document to the
/// bars and back, where each is one stop.
class Panes {
 public:
  /// What the keyboard visits, in that order.
  struct Widgets {
    ToolbarFace* toolbar1;
    ToolbarFace* toolbar2;
    QWidget* view;
    QWidget* code;
    BranchFace* path;
  };
  Panes(QWidget& widget, core::HTMLed& control, const Widgets& widgets, std::function<void()> focus_document);

  /// Buttons come and go: the order is set with each layout.
  void order_tabs();
  /// Tells the control that the focus left the document for another of its parts, once it has come to rest
  /// there.
  void tell_lost_focus(const QWidget* from);

 private:
  void add_shortcut(const QKeySequence& keys, int direction);
  void walk(int direction);
  bool enter(int pane);

  QPointer<QWidget> widget_;
  core::HTMLed& control_;
  Widgets widgets_;
  std::function<void()> focus_document_;
};

}  // namespace tvx::qt
