#include "htmled/print/preview_dialog.h"

#include <QAction>
#include <QLabel>
#include <QPointer>
#include <QSpinBox>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "htmled/document/document_page.h"
#include "htmled/first_size.h"
#include "htmled/print/kept_page_setup.h"
#include "htmled/print/page_setup_dialog.h"
#include "htmled/print/pdf_export.h"
#include "htmled/print/sheets_view.h"
#include "htmled/window.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/modal.h"

namespace tvx::htmled {
namespace {

constexpr double zoom_step = 1.25;

QString with_keys(const QString& tip, const QKeySequence& keys) {
  return keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys.toString(QKeySequence::NativeText));
}

}  // namespace

// A child of the editor: what the editor asks for, a printer above all, then stands over the preview.
PreviewDialog::PreviewDialog(Window& window)
    : QDialog(&window.editor()), window_(window), sheets_(new SheetsView) {
  setObjectName(QStringLiteral("print_preview"));
  setWindowTitle(tr("Print preview"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(make_bar());
  column->addWidget(sheets_, 1);
  sheets_->setAccessibleName(tr("Print preview"));
  connect(sheets_, &SheetsView::moved, this, &PreviewDialog::show_state);
  connect(sheets_, &SheetsView::zoomed, this, &PreviewDialog::show_state);
  set_first_size(*this, {900, 760});
  sheets_->setFocus();
  look();
}

QAction* PreviewDialog::add(QToolBar& bar, const QString& text, const char* name, const QKeySequence& keys) {
  QAction* action = bar.addAction(text);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(keys);
  action->setToolTip(with_keys(action->iconText(), keys));
  return action;
}

QToolBar* PreviewDialog::make_bar() {
  auto* bar = new QToolBar;
  bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  connect(add(*bar, tr("&Print…"), "print", QKeySequence(Qt::CTRL | Qt::Key_P)), &QAction::triggered, this,
          [this] { window_.editor().print_Document(false); });
  connect(add(*bar, tr("Page &setup…"), "setup"), &QAction::triggered, this, [this] {
    if (ask_page_setup(window_, this)) look();
  });
  connect(add(*bar, tr("&Export as PDF…"), "export"), &QAction::triggered, this,
          [this] { ask_and_export_pdf(window_, this); });
  bar->addSeparator();
  add_turning(*bar);
  bar->addSeparator();
  add_zoom(*bar);
  // Text buttons of a bar take keys like those of a dialog.
  for (QToolButton* button : bar->findChildren<QToolButton*>()) button->setFocusPolicy(Qt::TabFocus);
  return bar;
}

void PreviewDialog::add_turning(QToolBar& bar) {
  before_ = add(bar, QStringLiteral("‹"), "before");
  before_->setToolTip(tr("Previous page"));
  number_ = new QSpinBox;
  number_->setObjectName(QStringLiteral("number"));
  number_->setAccessibleName(tr("Page"));
  number_->setToolTip(tr("Page"));
  number_->setKeyboardTracking(false);
  bar.addWidget(number_);
  count_ = new QLabel;
  count_->setObjectName(QStringLiteral("count"));
  count_->setContentsMargins(4, 0, 4, 0);
  bar.addWidget(count_);
  next_ = add(bar, QStringLiteral("›"), "next");
  next_->setToolTip(tr("Next page"));
  connect(before_, &QAction::triggered, this, [this] { sheets_->go_to(sheets_->sheet() - 1); });
  connect(next_, &QAction::triggered, this, [this] { sheets_->go_to(sheets_->sheet() + 1); });
  connect(number_, &QSpinBox::valueChanged, this, [this](int number) { sheets_->go_to(number - 1); });
}

void PreviewDialog::add_zoom(QToolBar& bar) {
  const auto by = [this](double step) { return [this, step] { sheets_->set_zoom(sheets_->zoom() * step); }; };
  QAction* smaller = add(bar, QStringLiteral("−"), "smaller", QKeySequence(Qt::CTRL | Qt::Key_Minus));
  smaller->setToolTip(with_keys(tr("Zoom out"), smaller->shortcut()));
  connect(smaller, &QAction::triggered, this, by(1 / zoom_step));
  zoom_ = new QLabel;
  zoom_->setObjectName(QStringLiteral("zoom"));
  zoom_->setAlignment(Qt::AlignCenter);
  zoom_->setMinimumWidth(zoom_->fontMetrics().horizontalAdvance(QStringLiteral("1000 %")));
  bar.addWidget(zoom_);
  QAction* larger = add(bar, QStringLiteral("+"), "larger", QKeySequence(Qt::CTRL | Qt::Key_Plus));
  larger->setToolTip(with_keys(tr("Zoom in"), larger->shortcut()));
  connect(larger, &QAction::triggered, this, by(zoom_step));
  const auto fit = [this](SheetsView::Fit how) { return [this, how] { sheets_->set_fit(how); }; };
  whole_ = add(bar, tr("&Whole page"), "whole");
  width_ = add(bar, tr("Page wi&dth"), "width");
  whole_->setCheckable(true);
  width_->setCheckable(true);
  connect(whole_, &QAction::triggered, this, fit(SheetsView::Fit::Sheet));
  connect(width_, &QAction::triggered, this, fit(SheetsView::Fit::Width));
}

void PreviewDialog::look() {
  sheets_->set_words(tr("The pages are being made …"));
  show_state();
  window_.editor().make_pdf([alive = QPointer(this)](const QByteArray& pdf) {
    if (!alive) return;
    alive->sheets_->set_pdf(pdf);
    if (alive->sheets_->count() == 0) alive->sheets_->set_words(tr("The page couldn't be put on paper."));
    alive->show_state();
  });
}

void PreviewDialog::show_state() {
  const int count = sheets_->count(), at = sheets_->sheet();
  const QSignalBlocker quiet(number_);
  number_->setRange(count > 0 ? 1 : 0, count);
  number_->setValue(count > 0 ? at + 1 : 0);
  number_->setEnabled(count > 1);
  count_->setText(tr("of %1").arg(QLocale().toString(count)));
  before_->setEnabled(at > 0);
  next_->setEnabled(at + 1 < count);
  zoom_->setText(
      QStringLiteral("%1 %").arg(QLocale().toString(static_cast<int>(std::lround(sheets_->zoom() * 100)))));
  whole_->setChecked(sheets_->fit() == SheetsView::Fit::Sheet);
  width_->setChecked(sheets_->fit() == SheetsView::Fit::Width);
}

// A page that is still coming would go on coming when the preview is closed.
void open_preview(Window& window) {
  if (window.front().is_busy()) return;
  window.editor().finish_input();
  qt::Modal<PreviewDialog>(window).run();
}

bool ask_page_setup(Window& window, QWidget* parent) {
  PageSetupDialog dialog(kept_page_setup(), parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  keep_page_setup(dialog.setup());
  window.apply_page_setup();
  return true;
}

}  // namespace tvx::htmled
