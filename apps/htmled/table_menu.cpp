#include <QAction>
#include <QMenu>

#include "htmled/window.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/cell_menu.h"
#include "tvx/core/htmled.h"
#include "tvx/platform/clipboard.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

/// The items of the control's own menus that the window's menus have too: those of tables, and pasting as
/// text. Their words, and why they can't act, are the control's.
namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;

constexpr std::u16string_view table_button = u"table";
constexpr const char* table_items[] = {"mnuCellRowAbove",
                                       "mnuCellRowBelow",
                                       "mnuCellColumnLeft",
                                       "mnuCellColumnRight",
                                       nullptr,
                                       "mnuCellDeleteRow",
                                       "mnuCellDeleteColumn",
                                       nullptr,
                                       "mnuCellMerge",
                                       "mnuCellMergeDown",
                                       "mnuCellSplit",
                                       nullptr,
                                       "mnuCellHeader",
                                       nullptr,
                                       "mnuCellSelectRow",
                                       "mnuCellSelectColumn",
                                       "mnuCellSelectTable"};

/// How the items stand now.
void refresh(core::HTMLed& control) {
  const bool in_page = control.DOM() && !control.InCodeView() && control.EditorEnabled();
  const std::u16string hidden = control.HiddenContextMenus();
  core::show_cell_menus(control.menus(), in_page ? &control.DOM()->editor() : nullptr, hidden);
  control.menus().show_paste_text(in_page && control.clipboard().GetFormat(platform::ClipboardFormat::text),
                                  hidden);
}

}  // namespace

void Window::add_control_item(QMenu* menu, const char* name, const QKeySequence& keys) {
  QAction* action = menu->addAction(QString());
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, [this, action] {
    finish_typing();
    refresh(editor_->control());
    if (platform::Menu* item = editor_->control().menu(from_qt(action->objectName()))) item->choose();
    editor_->setFocus(Qt::OtherFocusReason);
  });
  connect(menu, &QMenu::aboutToShow, this, [this, action] { show_control_item(*action); });
  // Its keys act while nobody sees how it stands.
  connect(menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
}

void Window::show_control_item(QAction& action) {
  core::HTMLed& control = editor_->control();
  refresh(control);
  const platform::Menu* item = control.menu(from_qt(action.objectName()));
  if (!item) return;
  action.setText(to_qt(item->Caption()));
  const QString obstacle = qt::translated(item->Obstacle());
  const bool in_table = item->parent() != &control.menus().mnuMisc;
  action.setEnabled(obstacle.isEmpty() && (in_table || item->Visible()));
  action.setToolTip(obstacle);
  action.setCheckable(item->Checked());
  action.setChecked(item->Checked());
}

void Window::make_table_menu() {
  QMenu* menu = add_menu(nullptr, QT_TR_NOOP("T&able"));
  menu->setObjectName(QStringLiteral("table"));
  menu->setToolTipsVisible(true);
  QAction* insert = menu->addAction(QString());
  insert->setObjectName(QStringLiteral("insert"));
  const auto button = [this]() -> platform::Button& {
    platform::Toolbar& bar = editor_->control().Toolbar1();
    for (int i = 1; i <= bar.Count(); ++i)
      if (bar.Item(i).Key() == table_button) return bar.Item(i);
    return bar.Item(1);
  };
  connect(menu, &QMenu::aboutToShow, this, [insert, button] {
    insert->setText(to_qt(button().ToolTipText()));
    insert->setEnabled(button().Enabled() && button().Visible());
  });
  connect(insert, &QAction::triggered, this, [this] {
    finish_typing();
    editor_->control().press(editor_->control().Toolbar1(), table_button);
  });
  menu->addSeparator();
  for (const char* name : table_items) {
    if (name)
      add_control_item(menu, name);
    else
      menu->addSeparator();
  }
}

}  // namespace tvx::htmled
