#include "tvx/qt/dialogs/link_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include "tvx/editing/facts/written_address.h"

namespace tvx::qt {

LinkDialog::LinkDialog(const QString& address, QWidget* parent)
    : QDialog(parent), given_(address.trimmed()), address_(new QLineEdit(address, this)) {
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

// Who leaves out what an address starts with means the web, or a letter. What stood there before stays as it
// is: it may be the name of a file.
QString LinkDialog::address() const {
  const QString text = address_->text().trimmed();
  if (text == given_) return text;
  const std::u16string written = text.toStdU16String();
  if (editing::written_address(written) == written)
    return QString::fromStdU16String(editing::target_of(written));
  static const QRegularExpression mailbox(QStringLiteral("^[^\\s@:/?#]+@[^\\s@:/?#]+\\.[^\\s@:/?#]+$"));
  return mailbox.match(text).hasMatch() ? QStringLiteral("mailto:") + text : text;
}

}  // namespace tvx::qt
