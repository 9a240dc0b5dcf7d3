#include "htmled/help/tour.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStatusBar>

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
  window.new_document_of(file.readAll());
}

}  // namespace tvx::htmled
