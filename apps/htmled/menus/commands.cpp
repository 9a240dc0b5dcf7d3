#include "htmled/menus/commands.h"

#include <QAction>
#include <QHelpEvent>
#include <QIcon>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolTip>
#include <algorithm>

#include "htmled/document/document_page.h"
#include "htmled/format/format_bar.h"
#include "htmled/window.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/bars/icon_set.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using Kind = Command::Kind;

QList<QKeySequence> keys_of(const Command& command) {
  QList<QKeySequence> keys;
  for (const QString& each : QString::fromLatin1(command.keys).split(u' ', Qt::SkipEmptyParts))
    keys << QKeySequence(each, QKeySequence::PortableText);
  return keys;
}

QIcon icon_of(const Command& command) {
  if (!command.icon) return {};
  const QString name = QString::fromLatin1(command.icon);
  return QIcon::fromTheme(name, qt::icon(qt::from_qt(name)));
}

}  // namespace

Commands::Commands(Window& window) : QObject(&window), window_(window) {
  // Qt leaves this key to programs, and a single Alt does nothing in some styles.
  auto* to_menus = new QShortcut(QKeySequence(Qt::Key_F10), &window_);
  connect(to_menus, &QShortcut::activated, this,
          [this] { window_.menuBar()->setActiveAction(tops_.front()->menuAction()); });
  // The toolkit's own menu of bars knows those of the window alone, and the one that holds the find bar.
  window_.setContextMenuPolicy(Qt::NoContextMenu);
  FormatBar& bar = window_.format_bar();
  bar.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&bar, &QWidget::customContextMenuRequested, this,
          [this, &bar](const QPoint& at) { offer_bars(bar.mapToGlobal(at)); });
  std::vector<QMenu*> open;
  for (const Command& command : table()) {
    QMenu* const in = open.empty() ? nullptr : open.back();
    switch (command.kind) {
      case Kind::End: open.pop_back(); break;
      case Kind::Menu:
      case Kind::Filled: {
        QMenu* menu = make_menu(command, in);
        entries_.push_back({&command, in, menu->menuAction()});
        if (command.kind == Kind::Menu)
          open.push_back(menu);
        else
          command.fill(window_, *menu);
        break;
      }
      case Kind::Own: entries_.push_back({&command, in, make_own(command)}); break;
      default: entries_.push_back({&command, in, nullptr});
    }
  }
}

QMenu* Commands::make_menu(const Command& command, QMenu* above) {
  auto* menu = new QMenu(&window_);
  menu->setObjectName(QString::fromLatin1(command.name));
  menu->installEventFilter(this);
  menu->setToolTipsVisible(true);
  if (!above) tops_.push_back(menu);
  if (!above) window_.menuBar()->addMenu(menu);
  connect(menu, &QMenu::aboutToShow, this, [this, menu] { show_states(*menu); });
  return menu;
}

QAction* Commands::make_own(const Command& command) {
  auto* action = new QAction(&window_);
  action->setObjectName(QString::fromLatin1(command.name));
  action->setShortcuts(keys_of(command));
  action->setIcon(icon_of(command));
  action->setCheckable(command.is_on);
  connect(action, &QAction::triggered, this, [this, &command] { trigger(command); });
  return action;
}

// Actions of an editor go with it; lines of a menu go with its clearing.
void Commands::show_editor() {
  for (const Entry& entry : entries_)
    if (entry.command->kind == Kind::Menu)
      if (QMenu* menu = entry.own->menu()) menu->clear();
  for (const Entry& entry : entries_) {
    if (!entry.in) continue;
    if (entry.command->kind == Kind::Line)
      entry.in->addSeparator();
    else if (QAction* action = entry.own ? entry.own.data() : action_of(*entry.command))
      entry.in->addAction(action);
  }
}

QAction* Commands::action_of(const Command& command) {
  return window_.editor().action(QString::fromLatin1(command.name));
}

QAction* Commands::own(std::string_view name) const {
  const auto found = std::ranges::find_if(entries_, [&](const Entry& each) {
    return each.own && each.command->name && each.command->name == name;
  });
  return found == entries_.end() ? nullptr : found->own.data();
}

void Commands::show_words() {
  for (const Entry& entry : entries_) {
    if (!entry.own) continue;
    entry.own->setText(Window::tr(entry.command->text));
    if (entry.command->kind != Kind::Own) continue;
    show_state(*entry.command);
    entry.own->setEnabled(true);  // for its keys
  }
}

void Commands::offer_bars(const QPoint& at) {
  auto* menu = new QMenu(&window_);
  menu->setObjectName(QStringLiteral("bars"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const char* name :
       {"format-bar", "formatting-tools", "insertion-tools", "form-tools", "element-path"}) {
    const auto shown = std::ranges::find_if(entries_, [&](const Entry& each) {
      return each.command->name && each.command->name == std::string_view(name);
    });
    show_state(*shown->command);
    menu->addAction(shown->own);
  }
  menu->popup(at);
}

// --- how they stand ---

// Its keys act also while nobody sees how it stands: what can't act does nothing then.
void Commands::show_state(const Command& command) {
  QAction* action = own(command.name);
  const char* obstacle = command.obstacle ? command.obstacle(window_) : nullptr;
  QString tip = action->iconText();
  if (const QKeySequence keys = action->shortcut(); !keys.isEmpty())
    tip += QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText));
  action->setToolTip(obstacle ? tip + u'\n' + Window::tr(obstacle) : tip);
  action->setEnabled(!obstacle);
  if (command.is_on) action->setChecked(command.is_on(window_));
}

void Commands::show_states(const QMenu& menu) {
  for (const Entry& entry : entries_)
    if (entry.in == &menu && entry.own && (entry.command->kind == Kind::Own || entry.command->obstacle))
      show_state(*entry.command);
}

// What is meant is the page that the user waits for.
void Commands::trigger(const Command& command) {
  window_.front().when_there([this, &command] { run(command); });
}

void Commands::run(const Command& command) {
  if (!command.obstacle || !command.obstacle(window_)) command.act(window_);
  if (QAction* action = own(command.name)) {
    action->setEnabled(true);
    if (command.is_on) action->setChecked(command.is_on(window_));
  }
}

// Text and keys stand in the menu: a tip is for what can't act, and says why.
bool Commands::eventFilter(QObject* watched, QEvent* event) {
  auto* menu = qobject_cast<QMenu*>(watched);
  if (menu && event->type() == QEvent::Hide)
    for (const Entry& entry : entries_)
      if (entry.in == menu && entry.command->kind == Kind::Own) entry.own->setEnabled(true);
  if (!menu || event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QAction* action = menu->actionAt(help->pos());
  const QString why = action && !action->isEnabled() ? action->toolTip().section(u'\n', 1) : QString();
  if (why.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(help->globalPos(), why, menu);
  return true;
}

}  // namespace tvx::htmled
