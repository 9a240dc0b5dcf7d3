#include "htmled/document/file_filters.h"

#include <QCoreApplication>

namespace tvx::htmled {

QString file_filters() {
  const auto tr = [](const char* words) { return QCoreApplication::translate("Window", words); };
  return tr("HTML documents") + QStringLiteral(" (*.html *.htm *.xhtml);;") + tr("All files") +
         QStringLiteral(" (*)");
}

}  // namespace tvx::htmled
