#include "tvx/qt/widget/host_bars.h"

#include <QEvent>
#include <QMetaMethod>
#include <QPointer>

#include "tvx/base/interruption.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/actions.h"
#include "tvx/core/commands/selection_formats.h"
#include "tvx/core/htmled.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/tables/grid_memo.h"
#include "tvx/qt/bars/icon_set.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"
#include "tvx/qt/widget/action_faces.h"

namespace tvx::qt {
namespace {

using Action = HTMLedWidget::Action;

constexpr double zoom_step = 1.1, smallest_zoom = 0.25, largest_zoom = 5;

QColor to_qt(const std::optional<dom::style::Color>& colour) {
  return colour ? QColor(colour->red, colour->green, colour->blue) : QColor();
}

bool is_zoom(Action action) {
  return action == Action::ZoomIn || action == Action::ZoomOut || action == Action::ZoomReset;
}

}  // namespace

HostBars::HostBars(HTMLedWidget& widget) : widget_(widget) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &HostBars::look);
  connect(&widget, &HTMLedWidget::zoomChanged, this, &HostBars::look_later);
  widget.control().add_observer(*this);
  widget.installEventFilter(this);
}

HostBars::~HostBars() { widget_.control().remove_observer(*this); }

bool HostBars::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::LanguageChange)
    for (std::size_t i = 0; i < count; ++i)
      if (actions_[i]) show_words(Action(i)), show_state(Action(i));
  return QObject::eventFilter(watched, event);
}

// --- when to look ---

bool HostBars::is_heard(void (HTMLedWidget::*signal)()) const {
  return widget_.isSignalConnected(QMetaMethod::fromSignal(signal));
}

bool HostBars::listened_to() const {
  return is_heard(&HTMLedWidget::selectionChanged) || is_heard(&HTMLedWidget::formatChanged) ||
         widget_.isSignalConnected(QMetaMethod::fromSignal(&HTMLedWidget::modificationChanged)) ||
         std::ranges::any_of(actions_, [](const QAction* each) { return each; });
}

void HostBars::document_loaded() {
  loaded_ = true;
  look_later();
}

void HostBars::look_later() {
  if (!timer_.isActive() && (loaded_ || listened_to())) timer_.start(0);
}

// What the user is still typing would only be looked at again.
void HostBars::look() {
  constexpr int pause = 10;
  if (widget_.document_view().input_waits()) return timer_.start(pause);
  const QPointer<HostBars> alive(this);
  if (std::exchange(loaded_, false)) emit widget_.documentLoaded();
  if (alive) tell_modification();
  if (alive) tell_selection();
  if (alive) tell_format();
  const editing::GridMemo memo;  // a dozen of the items ask about the table
  for (std::size_t i = 0; alive && i < count; ++i)
    if (actions_[i]) show_state(Action(i));
}

void HostBars::tell_modification() {
  const bool now = widget_.IsDirty();
  if (std::exchange(modified_, now) != now) emit widget_.modificationChanged(now);
}

HostBars::Position HostBars::position() const {
  const auto& document = widget_.control().DOM();
  if (!document) return {};
  const editing::Selection& selection = document->editor().selection();
  if (selection.type() == editing::SelectionType::None) return {document.get()};
  const dom::Boundary anchor = selection.anchor(), focus = selection.focus();
  return {document.get(), anchor.node, focus.node, selection.control(), anchor.offset, focus.offset};
}

void HostBars::tell_selection() {
  if (!is_heard(&HTMLedWidget::selectionChanged)) return;
  const Position now = position();
  if (std::exchange(position_, now) != now) emit widget_.selectionChanged();
}

void HostBars::tell_format() {
  if (!is_heard(&HTMLedWidget::formatChanged)) return;
  const HTMLedWidget::Format now = format();
  if (std::exchange(format_, now) != now) emit widget_.formatChanged();
}

HTMLedWidget::Format HostBars::format() const {
  const core::SelectionFormat found = widget_.control().selection_formats().current();
  HTMLedWidget::Format format;
  format.paragraph_style = qt::to_qt(found.paragraph_style);
  format.several_paragraph_styles = found.several_paragraph_styles;
  format.font = qt::to_qt(found.font);
  format.size = found.size;
  format.colour = to_qt(found.colour);
  format.highlight = to_qt(found.highlight);
  format.style_class = qt::to_qt(found.style_class);
  return format;
}

// --- the actions ---

QAction* HostBars::action(Action which) {
  QAction*& action = actions_[std::size_t(which)];
  if (action) return action;
  const ActionFace& face = face_of(which);
  action = new QAction(&widget_);
  action->setObjectName(qt::to_qt(face.name));
  action->setIcon(icon(face.icon));
  action->setShortcuts(keys_of(face));
  // Two editors may stand in one window.
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  widget_.addAction(action);
  connect(action, &QAction::triggered, this, [this, which] { act(which); });
  show_words(which);
  show_state(which);
  return action;
}

void HostBars::show_words(Action which) {
  actions_[std::size_t(which)]->setText(QCoreApplication::translate("HTMLed", face_of(which).text));
}

void HostBars::show_state(Action which) {
  QAction& action = *actions_[std::size_t(which)];
  QString tip = action.iconText(), obstacle;
  if (is_zoom(which)) {
    action.setEnabled(which == Action::ZoomIn    ? widget_.zoom() < largest_zoom
                      : which == Action::ZoomOut ? widget_.zoom() > smallest_zoom
                                                 : widget_.zoom() != 1);
  } else {
    const auto state =
        widget_.control().actions().state(face_of(which).name).value_or(core::OperationState());
    action.setCheckable(state.can_be_on);
    action.setChecked(state.on);
    action.setEnabled(state.enabled);
    obstacle = translated(state.obstacle);
  }
  if (const QKeySequence keys = action.shortcut(); !keys.isEmpty())
    tip += QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText));
  action.setToolTip(obstacle.isEmpty() ? tip : tip + u'\n' + obstacle);
}

// The press has turned a switch already, whatever comes of it: it is set to what holds.
void HostBars::act(Action which) {
  const QPointer<HostBars> alive(this);
  switch (which) {
    case Action::ZoomIn: widget_.set_zoom(widget_.zoom() * zoom_step); break;
    case Action::ZoomOut: widget_.set_zoom(widget_.zoom() / zoom_step); break;
    case Action::ZoomReset: widget_.set_zoom(1); break;
    default:
      widget_.finish_page_input();
      if (alive) run_interruptible([&] { widget_.control().actions().act(face_of(which).name); });
  }
  if (!alive) return;
  show_state(which);
  look_later();
}

}  // namespace tvx::qt
