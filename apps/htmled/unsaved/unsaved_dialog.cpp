#include "htmled/unsaved/unsaved_dialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "htmled/unsaved/differences_view.h"
#include "tvx/base/error.h"
#include "tvx/files/document_file.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {

UnsavedDialog::UnsavedDialog(const std::vector<files::KeptPage>& pages, QWidget* parent)
    : QDialog(parent), pages_(pages), list_(new QListWidget(this)), differences_(new DifferencesView(this)) {
  setObjectName(QStringLiteral("unsaved"));
  setWindowTitle(tr("Unsaved changes"));
  auto* layout = new QVBoxLayout(this);
  auto* question = new QLabel(
      tr("The program ended before these documents were saved. Restored ones open with their changes, which "
         "you can undo or save."));
  question->setWordWrap(true);
  layout->addWidget(question);
  for (const files::KeptPage& page : pages) {
    const QString path = qt::to_qt(page.path);
    const QString time = QLocale().toString(QDateTime::fromSecsSinceEpoch(page.time), QLocale::ShortFormat);
    auto* item = new QListWidgetItem(
        QStringLiteral("%1  (%2)").arg(path.isEmpty() ? tr("Untitled") : QFileInfo(path).fileName(), time),
        list_);
    item->setToolTip(path);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Checked);
  }
  list_->setMaximumHeight(120);
  layout->addWidget(list_);
  layout->addWidget(new QLabel(tr("From the file to the unsaved document:")));
  layout->addWidget(differences_, 1);
  connect(list_, &QListWidget::currentRowChanged, this, &UnsavedDialog::show_differences);
  list_->setCurrentRow(0);
  add_buttons();
  resize(640, 460);
}

void UnsavedDialog::add_buttons() {
  auto* buttons = new QDialogButtonBox(this);
  const auto add = [&](const QString& text, const char* name, QDialogButtonBox::ButtonRole role,
                       Answer answer) {
    QPushButton* button = buttons->addButton(text, role);
    button->setObjectName(QString::fromLatin1(name));
    connect(button, &QPushButton::clicked, this, [this, answer] {
      answer_ = answer;
      accept();
    });
    return button;
  };
  QPushButton* restore = add(tr("&Restore"), "restore", QDialogButtonBox::AcceptRole, Answer::Restore);
  restore->setDefault(true);
  restore->setFocus();
  add(tr("&Discard"), "discard", QDialogButtonBox::DestructiveRole, Answer::Discard);
  add(tr("Ask me &later"), "later", QDialogButtonBox::RejectRole, Answer::Later);
  layout()->addWidget(buttons);
}

std::vector<std::size_t> UnsavedDialog::chosen() const {
  std::vector<std::size_t> rows;
  for (int row = 0; row < list_->count(); ++row)
    if (list_->item(row)->checkState() == Qt::Checked) rows.push_back(std::size_t(row));
  return rows;
}

// Both are written in the one way, so that only what was edited differs.
void UnsavedDialog::show_differences(int row) {
  if (row < 0) return;
  const files::KeptPage& page = pages_[std::size_t(row)];
  std::u16string before;
  if (!page.path.empty()) attempt([&] { before = files::DocumentFile::open(page.path).page_text(); });
  differences_->show_differences(before, page.code ? page.page + u"\n" + *page.code : page.page);
}

}  // namespace tvx::htmled
