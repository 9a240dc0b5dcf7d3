#include "htmled/unsaved/changed_file_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "htmled/unsaved/differences_view.h"

namespace tvx::htmled {

ChangedFileDialog::ChangedFileDialog(const QString& name, std::u16string_view document,
                                     std::u16string_view file, bool edited, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("changed_file"));
  setWindowTitle(tr("The file has changed"));
  auto* layout = new QVBoxLayout(this);
  auto* question = new QLabel(
      edited ? tr("Another program has changed “%1”. Loading the file discards what you have changed here.")
                   .arg(name)
             : tr("Another program has changed “%1”.").arg(name));
  question->setWordWrap(true);
  layout->addWidget(question);
  layout->addWidget(new QLabel(tr("From this document to the file:")));
  auto* differences = new DifferencesView(this);
  differences->show_differences(document, file);
  layout->addWidget(differences, 1);
  auto* buttons = new QDialogButtonBox;
  QPushButton* load = buttons->addButton(tr("&Load the file"), QDialogButtonBox::AcceptRole);
  QPushButton* keep = buttons->addButton(tr("&Keep this document"), QDialogButtonBox::RejectRole);
  load->setObjectName(QStringLiteral("load"));
  keep->setObjectName(QStringLiteral("keep"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  // Only now do the buttons know their dialog.
  QPushButton* harmless = edited ? keep : load;
  harmless->setDefault(true);
  harmless->setFocus();
}

}  // namespace tvx::htmled
