#include <QCoreApplication>
#include <QMessageBox>
#include <utility>

#include "tvx/qt/print/printing.h"
#include "tvx/qt/print/running_lines.h"
#include "tvx/qt/print/sheet_finish.h"
#include "tvx/qt/print/sheet_jobs.h"
#include "tvx/qt/support/modal.h"
#include "tvx/qt/support/words.h"
#include "tvx/qt/web/web_view_private.h"

namespace tvx::qt {
namespace {

// Opened beside the program's work; it goes with the window, if that is still there.
void tell_failure(QWidget* owner, const QString& printer, const QString& failure) {
  auto* box = new QMessageBox(QMessageBox::Warning, {}, {}, QMessageBox::Ok, owner);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowTitle(QCoreApplication::applicationName());
  box->setText(translated(u"The printer “%1” didn't take the page.").arg(printer));
  box->setInformativeText(failure);
  box->open();
}

}  // namespace

void WebView::set_page_setup(const PageSetup& setup) { d_->setup_ = setup; }
const PageSetup& WebView::page_setup() const { return d_->setup_; }

void WebView::Private::print(const PrintOrder& order, std::function<void(bool)> done) {
  PageSetup setup = setup_;
  if (order.layout.isValid()) setup.layout = order.layout;
  bring_engine();
  make_sheets(
      *page_, layout_with_lines(setup),
      [order, setup, done = std::move(done), owner = QPointer<QWidget>(stack_)](const Sheets& sheets) {
        const QString failure = carry_out(order, finished_pdf(sheets, setup), sheets.title);
        if (!failure.isEmpty() && !order.printer.isEmpty()) tell_failure(owner, order.printer, failure);
        if (done) done(failure.isEmpty());
      });
}

void WebView::print(bool with_dialog, std::function<void(bool)> done) {
  const QPageLayout layout = page_setup().layout;
  const std::optional<PrintOrder> order =
      with_dialog ? ask_for_printer(owner_for_dialog(d_->stack_->parentWidget()), layout)
                  : order_for_usual_printer(layout);
  if (order) return d_->print(*order, std::move(done));
  if (done) done(false);
}

void WebView::print_into(const QString& path, std::function<void(bool)> done) {
  PrintOrder order;
  order.file = path;
  order.layout = page_setup().layout;
  d_->print(order, std::move(done));
}

void WebView::make_pdf(std::function<void(const QByteArray&)> done) {
  const PageSetup setup = page_setup();
  make_sheets(*page(), layout_with_lines(setup),
              [setup, done = std::move(done)](const Sheets& sheets) { done(finished_pdf(sheets, setup)); });
}

}  // namespace tvx::qt
