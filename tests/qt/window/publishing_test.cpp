#include "htmled/publishing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <map>
#include <mutex>
#include <optional>

#include "htmled/publish_dialog.h"
#include "htmled/window.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

/// One in memory, or none at all.
struct TestKeyring final : Keyring {
  std::mutex mutex;
  std::map<std::string, std::string> kept;
  bool there = true;

  static std::string key(const KeyringEntry& entry) {
    return entry.protocol + " " + entry.user + "@" + entry.server;
  }
  std::optional<std::string> look_up(const KeyringEntry& entry) override {
    const std::lock_guard lock(mutex);
    const auto found = kept.find(key(entry));
    return found == kept.end() ? std::nullopt : std::optional(found->second);
  }
  bool store(const KeyringEntry& entry, const std::string& password) override {
    const std::lock_guard lock(mutex);
    if (there) kept[key(entry)] = password;
    return there;
  }
};

template <class Condition>
bool comes_true(Condition condition) {
  for (int turns = 0; turns < 500 && !condition(); ++turns) QTest::qWait(10);
  return condition();
}

class PublishSettings : public testing::Test {
 protected:
  PublishSettings() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path()); }

  static PublishAccount some_account() {
    PublishAccount account;
    account.protocol = Protocol::FtpExplicitTls;
    account.host = QStringLiteral("e.org");
    account.port = 2121;
    account.user = QStringLiteral("ada");
    account.password = QStringLiteral("secret");
    account.folder = QStringLiteral("/pics");
    account.address = QStringLiteral("https://e.org/pics");
    account.upload_at_once = true;
    return account;
  }
  QString settings_text() {
    QFile file(settings_.filePath(QStringLiteral("tvxHTML/htmled.conf")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }

  QTemporaryDir settings_;
  qt::MessageLoop loop_;
  std::shared_ptr<TestKeyring> keyring_ = std::make_shared<TestKeyring>();
};

TEST_F(PublishSettings, AreHandedToTheEditor) {
  Window window(loop_);
  core::HTMLed& control = window.editor().control();
  Publishing publishing(control, keyring_);
  publishing.set_account(some_account());
  EXPECT_EQ(control.FTPHost(), u"ftpes://e.org");
  EXPECT_EQ(control.FTPPort(), 2121);
  EXPECT_EQ(control.FTPUser(), u"ada");
  EXPECT_EQ(control.FTPPassword(), u"secret");
  EXPECT_EQ(control.FTPInitDir(), u"/pics");
  EXPECT_EQ(control.FTPSaveToURL(), u"https://e.org/pics/");
  EXPECT_TRUE(control.UploadImages());
  EXPECT_EQ(control.FTPBlockSize(), 65536);
}

// Hosts know FTPPort as a 16-bit number that may be negative.
TEST_F(PublishSettings, AHighPortIsReachedToo) {
  Window window(loop_);
  core::HTMLed& control = window.editor().control();
  Publishing publishing(control, keyring_);
  PublishAccount account;
  account.host = QStringLiteral("e.org");
  account.port = 36521;
  publishing.set_account(account);
  EXPECT_EQ(control.FTPHost(), u"ftp://e.org:36521");
  EXPECT_EQ(control.FTPPort(), 21);
  account.host = QStringLiteral("::1");
  account.protocol = Protocol::Sftp;
  publishing.set_account(account);
  EXPECT_EQ(control.FTPHost(), u"sftp://[::1]:36521");
  account.port = 22;
  publishing.set_account(account);
  EXPECT_EQ(control.FTPHost(), u"sftp://::1");
}

TEST_F(PublishSettings, ComeBackAtTheNextStartAndThePasswordFromTheKeyring) {
  Window window(loop_);
  {
    Publishing publishing(window.editor().control(), keyring_);
    bool kept = false;
    QObject::connect(&publishing, &Publishing::password_settled, [&](bool is_kept) { kept = is_kept; });
    publishing.set_account(some_account());
    EXPECT_TRUE(comes_true([&] { return kept; }));
  }
  EXPECT_FALSE(settings_text().contains(QStringLiteral("secret"))) << "not in a file";
  EXPECT_TRUE(settings_text().contains(QStringLiteral("e.org")));
  Window next(loop_);
  core::HTMLed& control = next.editor().control();
  Publishing publishing(control, keyring_);
  publishing.restore();
  EXPECT_EQ(control.FTPHost(), u"ftpes://e.org");
  EXPECT_TRUE(comes_true([&] { return control.FTPPassword() == u"secret"; }));
  EXPECT_EQ(publishing.account().port, 2121);
  EXPECT_TRUE(publishing.account().upload_at_once);
}

TEST_F(PublishSettings, WithoutAKeyringThePasswordIsOfThisSession) {
  keyring_->there = false;
  Window window(loop_);
  Publishing publishing(window.editor().control(), keyring_);
  std::optional<bool> kept;
  QObject::connect(&publishing, &Publishing::password_settled, [&](bool is_kept) { kept = is_kept; });
  publishing.set_account(some_account());
  EXPECT_TRUE(comes_true([&] { return kept.has_value(); }));
  EXPECT_FALSE(*kept);
  EXPECT_EQ(window.editor().control().FTPPassword(), u"secret");
  EXPECT_FALSE(settings_text().contains(QStringLiteral("secret")));
}

TEST_F(PublishSettings, APortThatNobodyChangedFollowsTheProtocol) {
  PublishDialog dialog({});
  auto* port = dialog.findChild<QSpinBox*>(QStringLiteral("port"));
  auto* protocol = dialog.findChild<QComboBox*>(QStringLiteral("protocol"));
  EXPECT_EQ(port->value(), 21);
  protocol->setCurrentIndex(int(Protocol::Sftp));
  EXPECT_EQ(port->value(), 22);
  port->setValue(2222);
  protocol->setCurrentIndex(int(Protocol::FtpImplicitTls));
  EXPECT_EQ(port->value(), 2222);
  dialog.findChild<QLineEdit*>(QStringLiteral("host"))->setText(QStringLiteral(" e.org "));
  EXPECT_EQ(dialog.account().host, QStringLiteral("e.org"));
  EXPECT_EQ(dialog.account().protocol, Protocol::FtpImplicitTls);
  EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("password"))->echoMode(), QLineEdit::Password);
}

TEST_F(PublishSettings, TheStatusBarCountsLocalImages) {
  Window window(loop_);
  window.show();
  window.start({});
  const auto button = [&] { return window.findChild<QToolButton*>(QStringLiteral("local_images")); };
  ASSERT_NE(button(), nullptr);
  EXPECT_FALSE(button()->isVisible());
  const auto& document = window.editor().control().DOM();
  ASSERT_TRUE(
      comes_true([&] { return document->editor().selection().type() == editing::SelectionType::Text; }));
  QFile picture(settings_.filePath(QStringLiteral("a.gif")));
  ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
  window.editor().control().Insert_Image_NoFTP(qt::from_qt(picture.fileName()));
  EXPECT_TRUE(comes_true([&] { return button()->isVisible(); }));
  EXPECT_EQ(button()->text(), QStringLiteral("Local images: 1"));
  window.editor().control().undo_document();
  EXPECT_TRUE(comes_true([&] { return !button()->isVisible(); }));
}

}  // namespace
}  // namespace tvx::htmled
