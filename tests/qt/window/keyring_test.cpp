#include "htmled/keyring.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <string>
#include <vector>

#include "htmled/publishing.h"
#include "htmled/window.h"
#include "support/server_process.h"
#include "tvx/core/htmled.h"
#include "tvx/qt/support/message_loop.h"

/// The desktop's keyring, as desktops run it (GNOME's), on a bus of the test's own.
namespace tvx::htmled {
namespace {

KeyringEntry ada_at(const char* server) { return {"ftp", server, "ada"}; }

class DesktopKeyringTest : public testing::Test {
 protected:
  /// Once a process: the library that speaks on the bus keeps to its first one, and ends the process with it.
  /// So both programs live as long as the test, and end with it.
  static bool start() {
    static const bool started = [] {
      auto* home = new QTemporaryDir;
      QFile rules(home->filePath("bus.conf"));
      if (!rules.open(QIODevice::WriteOnly)) return false;
      // Without programs to start: nothing but the keyring below is asked.
      rules.write(("<busconfig><type>session</type><listen>unix:tmpdir=" + home->path() +
                   "</listen><auth>EXTERNAL</auth><policy context=\"default\"><allow send_destination=\"*\"/>"
                   "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>")
                      .toUtf8());
      rules.close();
      const std::string folder = home->path().toStdString();
      auto* bus = new ServerProcess({"setpriv", "--pdeathsig", "KILL", "dbus-daemon", "--nofork",
                                     "--print-address", "--config-file=" + folder + "/bus.conf"});
      const std::string address = bus->line();
      qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
      QFile password(home->filePath("password"));
      if (address.empty() || !password.open(QIODevice::WriteOnly)) return false;
      password.write("of the keyring itself");
      password.close();
      new ServerProcess(
          {"env", "HOME=" + folder, "XDG_DATA_HOME=" + folder, "XDG_RUNTIME_DIR=" + folder, "setpriv",
           "--pdeathsig", "KILL", "sh", "-c",
           "exec gnome-keyring-daemon --foreground --unlock --components=secrets < " + folder + "/password"});
      const auto keyring = desktop_keyring();
      for (int tries = 0; tries < 200; ++tries) {
        if (keyring->store(ada_at("ready"), "yes")) return true;
        QTest::qWait(50);
      }
      return false;
    }();
    return started;
  }
  void SetUp() override { ASSERT_TRUE(start()) << "scripts/setup installs gnome-keyring and dbus-daemon"; }
};

TEST_F(DesktopKeyringTest, KeepsAPasswordForItsServerAndUserAlone) {
  const auto keyring = desktop_keyring();
  EXPECT_TRUE(keyring->store(ada_at("e.org"), "geheim, 秘密"));
  EXPECT_EQ(desktop_keyring()->look_up(ada_at("e.org")), "geheim, 秘密");
  EXPECT_EQ(keyring->look_up(ada_at("other.org")), std::nullopt);
  EXPECT_EQ(keyring->look_up({"sftp", "e.org", "ada"}), std::nullopt);
  EXPECT_EQ(keyring->look_up({"ftp", "e.org", "bob"}), std::nullopt);
}

TEST_F(DesktopKeyringTest, ANewPasswordTakesTheOldOnesPlaceAndAnEmptyOneTakesItAway) {
  const auto keyring = desktop_keyring();
  EXPECT_TRUE(keyring->store(ada_at("e.org"), "one"));
  EXPECT_TRUE(keyring->store(ada_at("e.org"), "two"));
  EXPECT_EQ(keyring->look_up(ada_at("e.org")), "two");
  EXPECT_TRUE(keyring->store(ada_at("e.org"), ""));
  EXPECT_EQ(keyring->look_up(ada_at("e.org")), std::nullopt);
}

TEST_F(DesktopKeyringTest, ThePasswordOfThePublishSettingsComesBackAtTheNextStart) {
  QTemporaryDir settings;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  qt::MessageLoop loop;
  {
    Window window(loop);
    Publishing publishing(window.editor().control(), desktop_keyring());
    bool kept = false;
    QObject::connect(&publishing, &Publishing::password_settled, [&](bool is_kept) { kept = is_kept; });
    PublishAccount account;
    account.host = QStringLiteral("kept.example.org");
    account.user = QStringLiteral("ada");
    account.password = QStringLiteral("behind the door");
    publishing.set_account(account);
    EXPECT_TRUE(QTest::qWaitFor([&] { return kept; }));
  }
  Window next(loop);
  Publishing publishing(next.editor().control(), desktop_keyring());
  publishing.restore();
  EXPECT_TRUE(QTest::qWaitFor([&] { return next.editor().control().FTPPassword() == u"behind the door"; }));
}

}  // namespace
}  // namespace tvx::htmled
