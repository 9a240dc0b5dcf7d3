#include <signal.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>

#include "browser/web_fixture.h"

namespace tvx::browser {
namespace {

/// A server whose certificate it has signed itself: the `openssl` program, serving the files of the test's
/// folder.
class Https : public Web {
 protected:
  void SetUp() override {
    if (std::system("openssl version > /dev/null 2>&1") != 0)
      GTEST_SKIP() << "the program openssl isn't here";
    const std::string cd = "cd " + folder.string() + " && ";
    ASSERT_EQ(std::system((cd + "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes "
                                "-keyout key.pem -out cert.pem -days 2 -subj /CN=127.0.0.1 "
                                "-addext subjectAltName=IP:127.0.0.1 2> /dev/null")
                              .c_str()),
              0);
    file("page.html", "<p>safe</p>");
    const std::string dead = dead_address();  // "http://127.0.0.1:PORT/"
    port_ = dead.substr(17, dead.size() - 18);
    start();
  }
  ~Https() override {
    if (server_process_ <= 0) return;
    kill(server_process_, SIGTERM);
    waitpid(server_process_, nullptr, 0);
  }
  std::u16string page() const { return from_utf8("https://127.0.0.1:" + port_ + "/page.html"); }

 private:
  void start() {
    server_process_ = fork();
    if (server_process_ == 0) {
      if (chdir(folder.c_str()) == 0 && freopen("/dev/null", "w", stdout) &&
          freopen("/dev/null", "w", stderr))
        execlp("openssl", "openssl", "s_server", "-accept", port_.c_str(), "-key", "key.pem", "-cert",
               "cert.pem", "-WWW", "-quiet", nullptr);
      _exit(1);
    }
    // It is there as soon as the plain connection is not refused.
    ASSERT_TRUE(wait_for([this] {
      const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
      sockaddr_in address{};
      address.sin_family = AF_INET;
      address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
      address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(port_)));
      const bool there = connect(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
      close(probe);
      return there;
    }));
  }

  std::string port_;
  pid_t server_process_ = 0;
};

TEST_F(Https, ACertificateThatNobodyVouchesForIsAnError) {
  go(page());
  EXPECT_EQ(count("NavigateError"), 1u);
  EXPECT_EQ(status, number_of(LoadFailure::BadCertificate));
  EXPECT_EQ(body(), "");
}

TEST_F(Https, ACertificateThatIsTrustedIsNone) {
  HttpOptions options;
  options.certificate_file = (folder / "cert.pem").string();
  make_browser(options);
  go(page());
  EXPECT_EQ(status, 0);
  EXPECT_EQ(body(), "<P>safe</P>");
  EXPECT_EQ(browser->Document()->url(), page());
}

}  // namespace
}  // namespace tvx::browser
