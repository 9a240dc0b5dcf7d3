#include "htmled/templates/template_dialog.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace tvx::htmled {

TemplateDialog::TemplateDialog(const QString& language, QWidget* parent)
    : QDialog(parent), language_(language), list_(new QListWidget), preview_(new QTextBrowser) {
  setObjectName(QStringLiteral("templates"));
  setWindowTitle(tr("New from template"));
  list_->setObjectName(QStringLiteral("list"));
  preview_->setObjectName(QStringLiteral("preview"));
  // A page is light in a dark desktop, too; what stands on the web isn't fetched for a preview.
  preview_->setOpenLinks(false);
  preview_->setPalette(
      QPalette(Qt::black, Qt::white, Qt::white, Qt::gray, Qt::lightGray, Qt::black, Qt::white));
  preview_->setFocusPolicy(Qt::ClickFocus);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  create_ = buttons->addButton(tr("&Create"), QDialogButtonBox::AcceptRole);
  create_->setObjectName(QStringLiteral("create"));
  create_->setDefault(true);
  QPushButton* folder = buttons->addButton(tr("&Open your templates' folder"), QDialogButtonBox::ActionRole);
  folder->setObjectName(QStringLiteral("folder"));
  connect(folder, &QPushButton::clicked, this, &TemplateDialog::open_folder);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(list_, &QListWidget::currentRowChanged, this, &TemplateDialog::show_chosen);
  connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);
  auto* halves = new QSplitter;
  halves->addWidget(list_);
  halves->addWidget(preview_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({220, 480});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(halves, 1);
  layout->addWidget(buttons);
  fill();
  resize(760, 520);
  list_->setFocus();
}

// The user's own are known by the way in which they are written.
void TemplateDialog::fill() {
  all_ = page_templates(language_);
  list_->clear();
  for (const PageTemplate& each : all_) {
    auto* item = new QListWidgetItem(each.name, list_);
    QFont font = item->font();
    font.setItalic(each.own);
    item->setFont(font);
    if (each.own) item->setToolTip(each.file);
  }
  list_->setCurrentRow(0);
  show_chosen();
}

const PageTemplate* TemplateDialog::chosen() const {
  const int row = list_->currentRow();
  return row < 0 ? nullptr : &all_[std::size_t(row)];
}

void TemplateDialog::show_chosen() {
  const PageTemplate* one = chosen();
  create_->setEnabled(one);
  preview_->setHtml(one ? QString::fromUtf8(content_of(*one, language_)) : QString());
}

void TemplateDialog::open_folder() {
  const QString folder = own_templates_folder();
  if (!folder.isEmpty()) QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

}  // namespace tvx::htmled
