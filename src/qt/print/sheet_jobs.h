#pragma once

#include <QByteArray>
#include <QPageLayout>
#include <functional>

#include "tvx/qt/print/sheets.h"

class QWebEnginePage;

namespace tvx::qt {

/// Puts a page onto sheets of paper. Asked again meanwhile, it does so afterwards. `done` is called from Qt's
/// loop, with no PDF if it can't be done, and also when the page's view has gone meanwhile: nothing that it
/// uses may go with that. The end of the program waits for all sheets.
void make_sheets(QWebEnginePage& page, const QPageLayout& layout, std::function<void(const Sheets&)> done);

/// Deletes a page whose view goes, at once or when its sheets are made: the engine takes the program with it
/// when a page goes while it is put onto sheets.
void let_go(QWebEnginePage* page);

}  // namespace tvx::qt
