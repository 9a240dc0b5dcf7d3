#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

class QKeySequence;

namespace tvx::core {
class HTMLed;
}

namespace tvx::qt {

class BranchFace;
class TabGate;
class ToolbarFace;

/// How the keyboard goes from one part of the control to another, where each is one stop: by Tab from bar to
/// bar, to the document and to the path, and by F6 from the document round the others and back. In the
/// document and in the code Tab belongs to the text; Ctrl+Tab goes on from there.
///
/// To the window around it the control is one single stop, the gate: buttons come and go, and the engine
/// makes a widget for each of its processes, so none of them could keep a position among the host's fields.
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
  /// The steps of the keyboard: within the control, and from its gate on out of it; false: there is nothing.
  struct Ways {
    std::function<void()> focus_document;
    std::function<bool(bool next)> step, leave;
  };
  Panes(QWidget& widget, core::HTMLed& control, const Widgets& widgets, Ways ways);

  /// The source beside the page, from when there is one.
  void set_side(QWidget& side) { side_ = &side; }
  /// From the part that has the focus to the next or the one before, or out of the control.
  bool step(bool next);
  bool is_side(const QWidget* widget) const { return side_ && side_->isAncestorOf(widget); }
  /// Whether it is a button of a bar or a name of the path.
  bool is_bar(const QWidget* widget) const;
  /// The control stands for the part that has the focus, else for its gate.
  void follow_focus(const QWidget* focused);
  /// Tells the control that the focus left the document for another of its parts, once it has come to rest
  /// there.
  void tell_lost_focus(const QWidget* from);

 private:
  enum Pane { Toolbar1, Toolbar2, Document, Side, Path, pane_count };

  void add_shortcut(const QKeySequence& keys, std::function<void()> act);
  Pane pane_of(const QWidget* widget) const;
  Pane pane_with_focus() const;
  void walk_round(int direction);
  /// Into the first part or the last one that takes the focus.
  bool enter_by_end(bool first);
  bool enter(int pane);

  QPointer<QWidget> widget_;
  core::HTMLed& control_;
  Widgets widgets_;
  Ways ways_;
  QPointer<TabGate> gate_;
  QPointer<QWidget> side_;
};

}  // namespace tvx::qt
