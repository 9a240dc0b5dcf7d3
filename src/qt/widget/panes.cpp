#include "tvx/qt/widget/panes.h"

#include <QApplication>
#include <QShortcut>
#include <QTimer>
#include <utility>

#include "tvx/core/htmled.h"
#include "tvx/qt/bars/branch_face.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {

Panes::Panes(QWidget& widget, core::HTMLed& control, const Widgets& widgets,
             std::function<void()> focus_document)
    : widget_(&widget), control_(control), widgets_(widgets), focus_document_(std::move(focus_document)) {
  for (ToolbarFace* bar : {widgets_.toolbar1, widgets_.toolbar2}) bar->set_on_leave(focus_document_);
  widgets_.path->set_on_leave(focus_document_);
  add_shortcut(Qt::Key_F6, 1);
  add_shortcut(Qt::SHIFT | Qt::Key_F6, -1);
}

void Panes::order_tabs() {
  QWidget* last = nullptr;
  const std::initializer_list<QWidget*> order{widgets_.toolbar1, widgets_.toolbar2, widgets_.view,
                                              widgets_.code, widgets_.path};
  for (QWidget* part : order) {
    for (QWidget* stop : part->findChildren<QWidget*>()) {
      if (!(stop->focusPolicy() & Qt::TabFocus) || stop->focusProxy()) continue;
      if (last) QWidget::setTabOrder(last, stop);
      last = stop;
    }
  }
}

void Panes::tell_lost_focus(const QWidget* from) {
  if (!widgets_.view->isAncestorOf(from)) return;
  QTimer::singleShot(0, widget_, [this] {
    const QWidget* part = QApplication::focusWidget();
    while (part && part->parentWidget() != widget_) part = part->parentWidget();
    if (part && part != widgets_.view) control_.WBrowser_LostFocus(from_qt(part->objectName()));
  });
}

void Panes::add_shortcut(const QKeySequence& keys, int direction) {
  auto* shortcut = new QShortcut(keys, widget_, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
  QObject::connect(shortcut, &QShortcut::activated, widget_, [this, direction] { walk(direction); });
}

void Panes::walk(int direction) {
  const QWidget* const bars[] = {nullptr, widgets_.toolbar1, widgets_.toolbar2, widgets_.path};
  constexpr int count = std::size(bars);
  int at = 0;
  for (int i = 1; i < count; ++i)
    if (bars[i]->isAncestorOf(QApplication::focusWidget())) at = i;
  for (int step = 1; step <= count; ++step)
    if (enter((at + direction * step + count * step) % count)) return;
}

bool Panes::enter(int pane) {
  switch (pane) {
    case 1: return widgets_.toolbar1->take_focus();
    case 2: return widgets_.toolbar2->take_focus();
    case 3: return widgets_.path->take_focus();
    default: break;
  }
  control_.InCodeView() ? widgets_.code->setFocus() : focus_document_();
  return true;
}

}  // namespace tvx::qt
