#pragma once

#include <QByteArray>
#include <QPageRanges>

#include "tvx/page_setup.h"
#include "tvx/qt/print/sheets.h"

namespace tvx::qt {

/// The PDF with header and footer, bookmarks of the headings, title and language; text and links stay what
/// they are. Empty if there is no PDF or it can't be read.
QByteArray finished_pdf(const Sheets& sheets, const PageSetup& setup);

/// Some of a PDF's sheets. Without ranges it is the same PDF.
QByteArray chosen_sheets(const QByteArray& pdf, const QPageRanges& ranges);

}  // namespace tvx::qt
