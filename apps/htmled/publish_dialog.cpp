#include "htmled/publish_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace tvx::htmled {

PublishDialog::PublishDialog(const PublishAccount& account, QWidget* parent)
    : QDialog(parent),
      protocol_(new QComboBox),
      port_(new QSpinBox),
      host_(add_line("host", account.host, QStringLiteral("ftp.example.org"))),
      user_(add_line("user", account.user)),
      password_(add_line("password", account.password)),
      folder_(add_line("folder", account.folder, QStringLiteral("/www/images"))),
      address_(add_line("address", account.address, QStringLiteral("https://www.example.org/images/"))),
      passive_(new QCheckBox(tr("Passi&ve mode"))),
      at_once_(new QCheckBox(tr("Upload &images as soon as they are inserted, pasted or dropped"))),
      shown_(account.protocol) {
  setObjectName(QStringLiteral("publish_settings"));
  setWindowTitle(tr("Publish settings"));
  // In the order of their numbers; what has no translation is the same in every language.
  protocol_->addItems({tr("FTP (not encrypted)"), tr("FTP with TLS"), tr("FTP with TLS from the start"),
                       QStringLiteral("SFTP")});
  protocol_->setObjectName(QStringLiteral("protocol"));
  protocol_->setCurrentIndex(int(account.protocol));
  port_->setObjectName(QStringLiteral("port"));
  port_->setRange(1, 65535);
  port_->setValue(account.port);
  password_->setEchoMode(QLineEdit::Password);
  passive_->setObjectName(QStringLiteral("passive"));
  passive_->setChecked(account.passive);
  at_once_->setObjectName(QStringLiteral("at_once"));
  at_once_->setChecked(account.upload_at_once);
  // Names of hosts, folders and addresses read from the left everywhere.
  for (QLineEdit* line : {host_, user_, password_, folder_, address_})
    line->setLayoutDirection(Qt::LeftToRight);

  auto* form = new QFormLayout;
  form->addRow(tr("&Protocol:"), protocol_);
  form->addRow(tr("&Server:"), host_);
  form->addRow(tr("P&ort:"), port_);
  form->addRow(tr("&User name:"), user_);
  form->addRow(tr("Pass&word:"), password_);
  form->addRow(tr("&Folder on the server:"), folder_);
  form->addRow(tr("Web &address of the folder:"), address_);
  form->addRow(QString(), passive_);
  form->addRow(QString(), at_once_);
  auto* note = new QLabel(
      tr("The password is kept in the desktop's keyring. Where there is none, it is forgotten when "
         "you quit."));
  note->setWordWrap(true);
  note->setForegroundRole(QPalette::PlaceholderText);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(protocol_, &QComboBox::currentIndexChanged, this, &PublishDialog::protocol_changed);
  auto* column = new QVBoxLayout(this);
  column->addLayout(form);
  column->addWidget(note);
  column->addWidget(buttons);
  protocol_changed();
  host_->setFocus();
}

QLineEdit* PublishDialog::add_line(const char* name, const QString& text, const QString& hint) {
  auto* line = new QLineEdit(text);
  line->setObjectName(QLatin1String(name));
  line->setPlaceholderText(hint);
  line->setMinimumWidth(34 * line->fontMetrics().averageCharWidth());
  return line;
}

// A port that nobody has changed follows the protocol.
void PublishDialog::protocol_changed() {
  const auto chosen = Protocol(protocol_->currentIndex());
  if (port_->value() == usual_port(shown_)) port_->setValue(usual_port(chosen));
  shown_ = chosen;
  passive_->setEnabled(chosen != Protocol::Sftp);
}

PublishAccount PublishDialog::account() const {
  PublishAccount account;
  account.protocol = Protocol(protocol_->currentIndex());
  account.host = host_->text().trimmed();
  account.port = port_->value();
  account.user = user_->text().trimmed();
  account.password = password_->text();
  account.folder = folder_->text().trimmed();
  account.address = address_->text().trimmed();
  account.passive = passive_->isChecked();
  account.upload_at_once = at_once_->isChecked();
  return account;
}

}  // namespace tvx::htmled
