#pragma once

#include <QByteArray>
#include <QPageLayout>
#include <QPageRanges>
#include <QStringList>
#include <optional>

class QPrinter;
class QWidget;

namespace tvx::qt {

/// Where sheets go, and which.
struct PrintOrder {
  QString file;     // a PDF, or
  QString printer;  // as the desktop knows it
  int copies = 1;
  QPageRanges ranges;   // none: all
  QStringList options;  // for the printer: "sides=one-sided"
  QPageLayout layout;
};

/// Asks the user. Nothing: they gave up, or the parent has gone meanwhile.
std::optional<PrintOrder> ask_for_printer(QWidget* parent, const QPageLayout& layout);
/// To the user's own printer. Nothing: there is none.
std::optional<PrintOrder> order_for_usual_printer(const QPageLayout& layout);

/// Writes the file or hands the sheets to the printer. What went wrong, in the words of the system; empty:
/// nothing.
QString carry_out(const PrintOrder& order, const QByteArray& pdf, const QString& title);

}  // namespace tvx::qt
