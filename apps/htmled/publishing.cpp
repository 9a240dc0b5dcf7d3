#include "htmled/publishing.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSettings>
#include <cstdint>
#include <limits>
#include <thread>
#include <utility>

#include "tvx/core/htmled.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;

/// The line's speed: the editor's own default goes by a hundred bytes, with a pause after each.
constexpr int block_size = 65536;

struct ProtocolRow {
  Protocol protocol;
  const char* scheme;
  int port;
};
constexpr ProtocolRow protocols[] = {{Protocol::Ftp, "ftp", 21},
                                     {Protocol::FtpExplicitTls, "ftpes", 21},
                                     {Protocol::FtpImplicitTls, "ftps", 990},
                                     {Protocol::Sftp, "sftp", 22}};

const ProtocolRow& row_of(Protocol protocol) {
  for (const ProtocolRow& row : protocols)
    if (row.protocol == protocol) return row;
  return protocols[0];
}

Protocol protocol_of(const QString& scheme) {
  for (const ProtocolRow& row : protocols)
    if (scheme == QLatin1String(row.scheme)) return row.protocol;
  return Protocol::Ftp;
}

/// Beside the language that the user has chosen.
QSettings settings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("tvxHTML"),
                   QStringLiteral("htmled"));
}

KeyringEntry entry_of(const PublishAccount& account) {
  return {scheme_of(account.protocol).toStdString(), account.host.toStdString(), account.user.toStdString()};
}

/// As FTPHost has it: a port only after a scheme.
QString server_address(const PublishAccount& account, bool with_port) {
  const bool bare = account.protocol == Protocol::Ftp && !with_port;
  const QString scheme = bare ? QString() : scheme_of(account.protocol) + QStringLiteral("://");
  if (!with_port) return scheme + account.host;
  const bool needs_brackets =
      account.host.contains(QLatin1Char(':')) && !account.host.startsWith(QLatin1Char('['));
  const QString host = needs_brackets ? QStringLiteral("[%1]").arg(account.host) : account.host;
  return scheme + host + QStringLiteral(":%1").arg(account.port);
}

}  // namespace

QString scheme_of(Protocol protocol) { return QLatin1String(row_of(protocol).scheme); }
int usual_port(Protocol protocol) { return row_of(protocol).port; }

Publishing::Publishing(std::shared_ptr<Keyring> keyring) : keyring_(std::move(keyring)) {}

Publishing::Publishing(core::HTMLed& control, std::shared_ptr<Keyring> keyring)
    : Publishing(std::move(keyring)) {
  controls_.push_back(&control);
}

Publishing::~Publishing() = default;

void Publishing::serve(core::HTMLed& control) {
  controls_.push_back(&control);
  if (is_set_up()) hand_over(control);
}

void Publishing::leave_out(core::HTMLed& control) { std::erase(controls_, &control); }

void Publishing::restore() {
  QSettings kept = settings();
  kept.beginGroup(QStringLiteral("publish"));
  account_ = {};
  account_.protocol = protocol_of(kept.value(QStringLiteral("protocol")).toString());
  account_.host = kept.value(QStringLiteral("host")).toString();
  account_.port = kept.value(QStringLiteral("port"), usual_port(account_.protocol)).toInt();
  account_.user = kept.value(QStringLiteral("user")).toString();
  account_.folder = kept.value(QStringLiteral("folder")).toString();
  account_.address = kept.value(QStringLiteral("address")).toString();
  account_.passive = kept.value(QStringLiteral("passive"), true).toBool();
  account_.upload_at_once = kept.value(QStringLiteral("upload_at_once"), false).toBool();
  if (!is_set_up()) return;
  hand_over_to_all();
  look_password_up();
}

// Never the password: a settings file is read by whoever finds it.
void Publishing::set_account(const PublishAccount& account) {
  account_ = account;
  QSettings kept = settings();
  kept.beginGroup(QStringLiteral("publish"));
  kept.setValue(QStringLiteral("protocol"), scheme_of(account.protocol));
  kept.setValue(QStringLiteral("host"), account.host);
  kept.setValue(QStringLiteral("port"), account.port);
  kept.setValue(QStringLiteral("user"), account.user);
  kept.setValue(QStringLiteral("folder"), account.folder);
  kept.setValue(QStringLiteral("address"), account.address);
  kept.setValue(QStringLiteral("passive"), account.passive);
  kept.setValue(QStringLiteral("upload_at_once"), account.upload_at_once);
  hand_over_to_all();
  if (is_set_up()) store_password();
}

void Publishing::hand_over_to_all() const {
  for (core::HTMLed* control : controls_) hand_over(*control);
}

void Publishing::take_password(const QString& password) {
  account_.password = password;
  for (core::HTMLed* control : controls_) control->set_FTPPassword(from_qt(password));
}

void Publishing::hand_over(core::HTMLed& control) const {
  // To those who connect FTPPort is a 16-bit number that may be negative; a higher one goes with the name.
  const bool fits = account_.port <= std::numeric_limits<std::int16_t>::max();
  control.set_FTPHost(account_.host.isEmpty() ? u"" : from_qt(server_address(account_, !fits)));
  control.set_FTPPort(fits ? account_.port : usual_port(account_.protocol));
  control.set_FTPUser(from_qt(account_.user));
  control.set_FTPPassword(from_qt(account_.password));
  control.set_FTPInitDir(from_qt(account_.folder));
  control.set_FTPSaveToURL(from_qt(account_.address));
  control.set_FTPPassive(account_.passive);
  control.set_FTPBlockSize(block_size);
  control.set_UploadImages(account_.upload_at_once && is_set_up());
}

// The desktop may ask the user for the keyring's password, and never answer: nobody waits for it, not even at
// the program's end.
void Publishing::look_password_up() {
  std::thread([keyring = keyring_, entry = entry_of(account_), question = ++question_,
               self = QPointer(this)] {
    auto password = keyring->look_up(entry);
    if (!QCoreApplication::instance()) return;
    QMetaObject::invokeMethod(
        qApp,
        [self, question, password = std::move(password)] {
          if (!self || self->question_ != question) return;
          if (password) self->take_password(QString::fromStdString(*password));
          emit self->password_settled(password.has_value());
        },
        Qt::QueuedConnection);
  }).detach();
}

void Publishing::store_password() {
  std::thread([keyring = keyring_, entry = entry_of(account_), password = account_.password.toStdString(),
               question = ++question_, self = QPointer(this)] {
    const bool kept = keyring->store(entry, password);
    if (!QCoreApplication::instance()) return;
    QMetaObject::invokeMethod(
        qApp,
        [self, question, kept] {
          if (self && self->question_ == question) emit self->password_settled(kept);
        },
        Qt::QueuedConnection);
  }).detach();
}

}  // namespace tvx::htmled
