#include "tvx/qt/dialogs/link_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace tvx::qt {

LinkDialog::LinkDialog(const QString& address, QWidget* parent)
    : QDialog(parent), address_(new QLineEdit(address, this)) {
  setWindowTitle(tr("Hyperlink"));
  // Wide enough for most addresses; the dialog's height is what it needs.
  address_->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  address_->setPlaceholderText(QStringLiteral("https://"));
  address_->selectAll();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  const auto validate = [this, ok] { ok->setEnabled(!this->address().isEmpty()); };
  connect(address_, &QLineEdit::textChanged, this, validate);
  validate();

  auto* form = new QFormLayout(this);
  form->addRow(tr("&Address:"), address_);
  form->addRow(buttons);
  form->setSizeConstraint(QLayout::SetFixedSize);
}

QString LinkDialog::address() const { return address_->text().trimmed(); }

}  // namespace tvx::qt
