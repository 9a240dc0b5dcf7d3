#include "htmled/menus/about.h"

#include <QtWebEngineCore/qtwebenginecoreglobal.h>
#include <QApplication>
#include <QMessageBox>

#include "htmled/window.h"

namespace tvx::htmled {

void show_about(QWidget& window) {
  QMessageBox box(&window);
  box.setWindowTitle(Window::tr("About HTMLed"));
  box.setIconPixmap(QApplication::windowIcon().pixmap(64, 64));
  box.setText(QStringLiteral("<h3>HTMLed %1</h3>").arg(QApplication::applicationVersion()));
  box.setInformativeText(
      Window::tr("A visual editor for HTML documents.") +
      QStringLiteral("<p>Qt %1, Chromium %2</p>")
          .arg(QString::fromLatin1(qVersion()), QString::fromLatin1(qWebEngineChromiumVersion())));
  box.exec();
}

}  // namespace tvx::htmled
