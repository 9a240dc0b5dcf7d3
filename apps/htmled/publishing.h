#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <vector>

#include "htmled/keyring.h"

namespace tvx::core {
class HTMLed;
}

namespace tvx::htmled {

enum class Protocol { Ftp, FtpExplicitTls, FtpImplicitTls, Sftp };

/// "ftp", "ftpes", "ftps", "sftp".
QString scheme_of(Protocol protocol);
int usual_port(Protocol protocol);

/// Where a page's images are put, and the address under which they are seen then.
struct PublishAccount {
  Protocol protocol = Protocol::Ftp;
  QString host;
  int port = usual_port(Protocol::Ftp);
  QString user, password, folder, address;
  bool passive = true;
  bool upload_at_once = false;  // what is pasted, dropped or inserted
};

/// The account that the user publishes with: kept in the program's settings, its password in the desktop's
/// keyring, or for this session where there is none; and handed to the editors.
class Publishing final : public QObject {
  Q_OBJECT
 public:
  explicit Publishing(std::shared_ptr<Keyring> keyring = desktop_keyring());
  /// For one control, which outlives this.
  explicit Publishing(core::HTMLed& control, std::shared_ptr<Keyring> keyring = desktop_keyring());
  ~Publishing() override;

  /// Another control has the account from now on, until it is left out again.
  void serve(core::HTMLed& control);
  void leave_out(core::HTMLed& control);

  /// As it was kept. The password comes when the keyring has answered.
  void restore();
  void set_account(const PublishAccount& account);
  const PublishAccount& account() const { return account_; }
  bool is_set_up() const { return !account_.host.isEmpty(); }

 signals:
  /// The keyring has answered: whether the password is, or was, kept there.
  void password_settled(bool kept);

 private:
  void hand_over(core::HTMLed& control) const;
  void hand_over_to_all() const;
  void take_password(const QString& password);
  void look_password_up();
  void store_password();

  std::vector<core::HTMLed*> controls_;
  const std::shared_ptr<Keyring> keyring_;
  PublishAccount account_;
  int question_ = 0;  // answers to older ones count no more
};

}  // namespace tvx::htmled
