#include "htmled/recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

#include "htmled/languages.h"

namespace tvx::htmled {
namespace {

constexpr qsizetype most_files = 10;
const QString key = QStringLiteral("recent/files");

/// "page.html – ~/site", with a digit to choose it by.
QString title_of(const QFileInfo& file, int number) {
  QString folder = file.absolutePath();
  if (folder == QDir::homePath() || folder.startsWith(QDir::homePath() + u'/'))
    folder.replace(0, QDir::homePath().size(), QStringLiteral("~"));
  const QString title =
      QStringLiteral("%1 – %2").arg(file.fileName(), folder).replace(u'&', QStringLiteral("&&"));
  return number < 10 ? QStringLiteral("&%1  %2").arg(number).arg(title) : title;
}

}  // namespace

QStringList RecentFiles::all() { return program_settings().value(key).toStringList(); }

void RecentFiles::add(const QString& path) {
  QStringList files = all();
  files.removeAll(path);
  files.prepend(path);
  program_settings().setValue(key, files.mid(0, most_files));
}

void RecentFiles::clear() { program_settings().remove(key); }

void RecentFiles::fill(QMenu& menu) {
  menu.setToolTipsVisible(true);
  connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { show_in(menu); });
}

void RecentFiles::show_in(QMenu& menu) {
  menu.clear();
  int number = 0;
  for (const QString& path : all()) {
    const QFileInfo file(path);
    QAction* item = menu.addAction(title_of(file, ++number));
    item->setObjectName(path);
    item->setEnabled(file.isFile());
    item->setToolTip(file.isFile() ? path : tr("This file isn't there any more"));
    connect(item, &QAction::triggered, this, [this, path] { emit chosen(path); });
  }
  if (number == 0) menu.addAction(tr("No files have been opened yet"))->setEnabled(false);
  menu.addSeparator();
  QAction* clear_list = menu.addAction(tr("&Clear this list"));
  clear_list->setObjectName(QStringLiteral("clear"));
  clear_list->setEnabled(number > 0);
  connect(clear_list, &QAction::triggered, this, [] { clear(); });
}

}  // namespace tvx::htmled
