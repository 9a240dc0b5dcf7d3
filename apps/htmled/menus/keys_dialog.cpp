#include "htmled/menus/keys_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <span>

#include "htmled/menus/commands.h"

namespace tvx::htmled {
namespace {

/// What the editor does with keys that are no command's.
struct Extra {
  const char *text, *keys;
};
constexpr Extra extras[] = {
    {QT_TRANSLATE_NOOP("KeysDialog", "New paragraph"), "Return"},
    {QT_TRANSLATE_NOOP("KeysDialog", "New line in the paragraph"), "Shift+Return"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Space that no line is broken at"), "Shift+Ctrl+Space"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Next cell, or deeper in a list"), "Tab"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Cell before, or less deep in a list"), "Shift+Tab"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Next word"), "Ctrl+Right"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Start of the page"), "Ctrl+Home"},
    {QT_TRANSLATE_NOOP("KeysDialog", "End of the page"), "Ctrl+End"},
    {QT_TRANSLATE_NOOP("KeysDialog", "From the page to the bars, and back"), "F6"},
    {QT_TRANSLATE_NOOP("KeysDialog", "To the menus"), "F10"},
    {QT_TRANSLATE_NOOP("KeysDialog", "To the next part of the window"), "Ctrl+Tab"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Menu of what stands at the caret"), "Menu"},
};
constexpr Extra source_extras[] = {
    {QT_TRANSLATE_NOOP("KeysDialog", "Lines made comments, or no longer comments"), "Ctrl+/"},
    {QT_TRANSLATE_NOOP("KeysDialog", "Names to choose from"), "Ctrl+Space"},
};

/// The plus of "Ctrl+-" would go to the other side of the minus.
QString left_to_right(const QString& keys) {
  constexpr QChar mark(0x200E);
  return mark + keys + mark;
}

QString plain(QString text) { return text.remove(u'&').remove(u'…').trimmed(); }

void add_lines(std::vector<KeysDialog::Line>& lines, const QMenu& menu, const QString& top) {
  for (const QAction* action : menu.actions()) {
    if (action->menu()) {
      add_lines(lines, *action->menu(), top);
      continue;
    }
    QStringList keys;
    for (const QKeySequence& each : action->shortcuts()) keys << each.toString(QKeySequence::NativeText);
    if (!keys.isEmpty()) lines.push_back({top, plain(action->text()), keys.join(QStringLiteral(", "))});
  }
}

}  // namespace

std::vector<KeysDialog::Line> KeysDialog::lines(const Commands& commands) {
  std::vector<Line> lines;
  for (const QMenu* menu : commands.menus()) add_lines(lines, *menu, plain(menu->title()));
  const auto add = [&lines](std::span<const Extra> group, const QString& heading) {
    for (const Extra& extra : group)
      lines.push_back({heading, tr(extra.text),
                       QKeySequence(QString::fromLatin1(extra.keys), QKeySequence::PortableText)
                           .toString(QKeySequence::NativeText)});
  };
  add(extras, tr("In the page"));
  add(source_extras, tr("In the source"));
  return lines;
}

KeysDialog::KeysDialog(const Commands& commands, QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("Keys"));
  auto* sought = new QLineEdit;
  sought->setPlaceholderText(tr("Find a command or a key"));
  sought->setClearButtonEnabled(true);
  auto* tree = new QTreeWidget;
  tree->setHeaderLabels({tr("Command"), tr("Keys")});
  tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  tree->setRootIsDecorated(false);
  QTreeWidgetItem* group = nullptr;
  for (const Line& line : lines(commands)) {
    if (!group || group->text(0) != line.menu) {
      group = new QTreeWidgetItem(tree, {line.menu});
      QFont bold = tree->font();
      bold.setBold(true);
      group->setFont(0, bold);
      group->setFirstColumnSpanned(true);
    }
    new QTreeWidgetItem(group, {line.command, isRightToLeft() ? left_to_right(line.keys) : line.keys});
  }
  tree->expandAll();
  connect(sought, &QLineEdit::textChanged, tree, [tree](const QString& text) {
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
      QTreeWidgetItem* of_menu = tree->topLevelItem(i);
      bool any = false;
      for (int j = 0; j < of_menu->childCount(); ++j) {
        QTreeWidgetItem* item = of_menu->child(j);
        const bool fits = item->text(0).contains(text, Qt::CaseInsensitive) ||
                          item->text(1).contains(text, Qt::CaseInsensitive);
        item->setHidden(!fits);
        any = any || fits;
      }
      of_menu->setHidden(!any);
    }
  });
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addWidget(sought);
  column->addWidget(tree);
  column->addWidget(buttons);
  resize(520, 600);
}

}  // namespace tvx::htmled
