#include "tvx/qt/print/printing.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <memory>

#include "tvx/qt/print/sheet_finish.h"
#include "tvx/qt/support/modal.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

// A printing system that is somewhere else in the network may take its time.
constexpr int longest_wait = 30'000;

/// In the names of the Internet Printing Protocol.
QStringList options_of(const QPrinter& printer) {
  QStringList options;
  switch (printer.duplex()) {
    case QPrinter::DuplexNone: options << QStringLiteral("sides=one-sided"); break;
    case QPrinter::DuplexLongSide: options << QStringLiteral("sides=two-sided-long-edge"); break;
    case QPrinter::DuplexShortSide: options << QStringLiteral("sides=two-sided-short-edge"); break;
    case QPrinter::DuplexAuto: break;
  }
  if (printer.colorMode() == QPrinter::GrayScale) options << QStringLiteral("print-color-mode=monochrome");
  options << (printer.collateCopies() ? QStringLiteral("collate=true") : QStringLiteral("collate=false"));
  options << QStringLiteral("media=") + printer.pageLayout().pageSize().key();
  if (printer.pageOrder() == QPrinter::LastPageFirst) options << QStringLiteral("outputorder=reverse");
  return options;
}

PrintOrder order_of(const QPrinter& printer) {
  PrintOrder order;
  if (printer.outputFormat() == QPrinter::PdfFormat)
    order.file = printer.outputFileName();
  else
    order.printer = printer.printerName();
  order.copies = printer.copyCount();
  if (printer.printRange() == QPrinter::PageRange) order.ranges = printer.pageRanges();
  order.options = options_of(printer);
  order.layout = printer.pageLayout();
  return order;
}

QString write(const QString& path, const QByteArray& pdf) {
  QSaveFile file(path);
  const bool written = file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size() && file.commit();
  return written ? QString() : file.errorString();
}

QString send(const PrintOrder& order, const QByteArray& pdf, const QString& title) {
  const QString program = QStandardPaths::findExecutable(QStringLiteral("lp"));
  if (program.isEmpty()) return translated(u"The program “lp” of the printing system isn't installed.");
  QStringList arguments{QStringLiteral("-d"), order.printer, QStringLiteral("-n"),
                        QString::number(order.copies)};
  if (!title.isEmpty()) arguments << QStringLiteral("-t") << title;
  for (const QString& option : order.options) arguments << QStringLiteral("-o") << option;
  QProcess lp;
  lp.setStandardOutputFile(QProcess::nullDevice());
  lp.start(program, arguments);
  lp.write(pdf);
  lp.closeWriteChannel();
  if (lp.waitForFinished(longest_wait) && lp.exitStatus() == QProcess::NormalExit && lp.exitCode() == 0)
    return {};
  const QString told = QString::fromLocal8Bit(lp.readAllStandardError()).trimmed();
  return told.isEmpty() ? lp.errorString() : told;
}

// Without a printer the dialog has a file to offer, and doesn't say why.
void explain_missing_printer(QPrintDialog& dialog) {
  if (!QPrinterInfo::availablePrinterNames().isEmpty()) return;
  auto* column = qobject_cast<QBoxLayout*>(dialog.layout());
  if (!column) return;
  auto* label = new QLabel(
      translated(u"No printer is set up on this computer. The pages go into a PDF file instead."), &dialog);
  label->setObjectName(QStringLiteral("no_printer"));
  label->setWordWrap(true);
  column->insertWidget(0, label);
}

}  // namespace

std::optional<PrintOrder> ask_for_printer(QWidget* parent, const QPageLayout& layout) {
  const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
  printer->setPageLayout(layout);
  Modal<QPrintDialog> dialog(printer.get(), parent);
  explain_missing_printer(*dialog.operator->());
  if (!dialog.run() || !printer->isValid()) return std::nullopt;
  return order_of(*printer);
}

std::optional<PrintOrder> order_for_usual_printer(const QPageLayout& layout) {
  const QPrinterInfo usual = QPrinterInfo::defaultPrinter();
  if (usual.isNull()) return std::nullopt;
  QPrinter printer(usual, QPrinter::HighResolution);
  printer.setPageLayout(layout);
  return order_of(printer);
}

QString carry_out(const PrintOrder& order, const QByteArray& pdf, const QString& title) {
  const QByteArray sheets = chosen_sheets(pdf, order.ranges);
  if (sheets.isEmpty()) return translated(u"The page couldn't be put on paper.");
  return order.file.isEmpty() ? send(order, sheets, title) : write(order.file, sheets);
}

}  // namespace tvx::qt
