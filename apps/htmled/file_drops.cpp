#include "htmled/file_drops.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace tvx::htmled {

FileDrops::FileDrops(QWidget& window) : QObject(&window), window_(window) {
  window.setAcceptDrops(true);
  qApp->installEventFilter(this);
}

FileDrops::Files FileDrops::files_in(const QMimeData& data) {
  Files found;
  for (const QUrl& url : data.urls()) {
    const QString path = url.toLocalFile();
    const QString kind = QFileInfo(path).suffix().toLower();
    const bool page = kind == QStringLiteral("html") || kind == QStringLiteral("htm") ||
                      kind == QStringLiteral("xhtml") || kind == QStringLiteral("xht");
    page ? found.pages.append(path) : found.others.append(url.fileName());
  }
  return found;
}

// The program that they come from waits until the drop is answered: opening is for afterwards.
bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
  const bool drop = event->type() == QEvent::Drop;
  if (!drop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget->window() != &window_) return false;
  auto& moved = static_cast<QDropEvent&>(*event);
  const Files files = files_in(*moved.mimeData());
  if (files.pages.isEmpty()) return false;
  moved.setDropAction(Qt::CopyAction);
  moved.accept();
  if (drop) QTimer::singleShot(0, this, [this, files] { emit dropped(files.pages, files.others); });
  return true;
}

}  // namespace tvx::htmled
