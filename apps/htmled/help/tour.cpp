#include "htmled/help/tour.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStatusBar>

#include "htmled/document/document_page.h"
#include "htmled/window.h"

namespace tvx::htmled {
namespace {

/// Beside the program, or where it is installed.
QString tour_path() {
  const QDir program(QCoreApplication::applicationDirPath());
  const QString beside = program.filePath(QStringLiteral("tour.html"));
  return QFileInfo::exists(beside)
             ? beside
             : QDir::cleanPath(program.filePath(QStringLiteral("../share/tvxhtml/tour.html")));
}

}  // namespace

void open_tour(Window& window) {
  QFile file(tour_path());
  if (!file.open(QIODevice::ReadOnly)) {
    window.statusBar()->showMessage(Window::tr("Can't read %1").arg(file.fileName()));
    return;
  }
  const QByteArray page = file.readAll();
  DocumentPage& front = window.front();
  if (front.is_untouched() && !front.is_busy()) return front.open_template(page);
  window.new_document();
  window.front().open_template_later(page);
}

}  // namespace tvx::htmled
