#include "tvx/qt/widget/panes.h"

#include <QApplication>
#include <QShortcut>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "tvx/core/htmled.h"
#include "tvx/core/views/side_source.h"
#include "tvx/qt/bars/branch_face.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/widget/tab_gate.h"

namespace tvx::qt {

Panes::Panes(QWidget& widget, core::HTMLed& control, const Widgets& widgets, Ways ways)
    : widget_(&widget), control_(control), widgets_(widgets), ways_(std::move(ways)) {
  for (ToolbarFace* bar : {widgets_.toolbar1, widgets_.toolbar2}) bar->set_on_leave(ways_.focus_document);
  widgets_.path->set_on_leave(ways_.focus_document);
  add_shortcut(Qt::Key_F6, [this] { walk_round(1); });
  add_shortcut(Qt::SHIFT | Qt::Key_F6, [this] { walk_round(-1); });
  add_shortcut(Qt::CTRL | Qt::Key_Tab, [this] { ways_.step(true); });
  add_shortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [this] { ways_.step(false); });
  gate_ = new TabGate(&widget, [this](Qt::FocusReason reason) {
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
      enter_by_end(reason == Qt::TabFocusReason);
    else if (!control_.side_source().in_hand() || !enter(Side))
      enter(Document);
  });
  // Without a policy of its own a widget can't be put into an order.
  widget.setFocusPolicy(Qt::StrongFocus);
  widget.setFocusProxy(gate_);
}

bool Panes::step(bool next) {
  const int direction = next ? 1 : -1;
  for (int pane = pane_with_focus() + direction; pane >= 0 && pane < pane_count; pane += direction)
    if (enter(pane)) return true;
  gate_->stand();
  return ways_.leave(next) || enter_by_end(next);
}

void Panes::follow_focus(const QWidget* focused) {
  // The menu bar, when it is left, gives the keys back to whoever had them: the page may be covered by then.
  if (control_.txtCode().in_front() && widgets_.view->isAncestorOf(focused))
    return widgets_.code->setFocus(Qt::OtherFocusReason);
  QWidget* stands = gate_;
  for (QWidget* part : {widgets_.view, widgets_.code, side_.data()})
    if (part && part->isAncestorOf(focused)) stands = part;
  if (widget_->focusProxy() != stands) widget_->setFocusProxy(stands);
}

void Panes::tell_lost_focus(const QWidget* from) {
  if (!widgets_.view->isAncestorOf(from)) return;
  QTimer::singleShot(0, widget_, [this] {
    const QWidget* part = QApplication::focusWidget();
    while (part && part->parentWidget() != widget_) part = part->parentWidget();
    if (part && part != widgets_.view) control_.WBrowser_LostFocus(from_qt(part->objectName()));
  });
}

void Panes::add_shortcut(const QKeySequence& keys, std::function<void()> act) {
  auto* shortcut = new QShortcut(keys, widget_, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
  QObject::connect(shortcut, &QShortcut::activated, widget_, std::move(act));
}

Panes::Pane Panes::pane_of(const QWidget* widget) const {
  if (widgets_.toolbar1->isAncestorOf(widget)) return Toolbar1;
  if (widgets_.toolbar2->isAncestorOf(widget)) return Toolbar2;
  if (is_side(widget)) return Side;
  return widgets_.path->isAncestorOf(widget) ? Path : Document;
}

Panes::Pane Panes::pane_with_focus() const { return pane_of(QApplication::focusWidget()); }

bool Panes::is_bar(const QWidget* widget) const {
  const Pane pane = pane_of(widget);
  return pane != Document && pane != Side;
}

void Panes::walk_round(int direction) {
  constexpr Pane round[] = {Document, Side, Toolbar1, Toolbar2, Path};
  const int at = int(std::ranges::find(round, pane_with_focus()) - round);
  for (int step = 1; step <= pane_count; ++step)
    if (enter(round[(at + direction * step + pane_count * step) % pane_count])) return;
}

bool Panes::enter_by_end(bool first) {
  for (int i = 0; i < pane_count; ++i)
    if (enter(first ? i : pane_count - 1 - i)) return true;
  return false;
}

bool Panes::enter(int pane) {
  switch (pane) {
    case Toolbar1: return widgets_.toolbar1->take_focus();
    case Toolbar2: return widgets_.toolbar2->take_focus();
    case Path: return widgets_.path->take_focus();
    case Side:
      if (!side_ || !side_->isVisible()) return false;
      side_->setFocus(Qt::OtherFocusReason);
      return true;
    default: break;
  }
  control_.InCodeView() ? widgets_.code->setFocus() : ways_.focus_document();
  return true;
}

}  // namespace tvx::qt
