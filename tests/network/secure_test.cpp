#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>

#include "network/server_fixture.h"
#include "tvx/network/ssh_keys.h"

/// TLS and SSH: who is trusted, and what happens where nobody is.
namespace tvx::network {
namespace {

class SecureServer : public RealServer {
 protected:
  int run(const std::string& command) const {
    return std::system(("{ " + command + "; } >/dev/null 2>&1").c_str());
  }

  /// A certificate for this machine, and the key with it in one file.
  void make_certificate(const std::string& name = "127.0.0.1") {
    const std::string base = (folder / "server").string();
    ASSERT_EQ(run("openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=" + name +
                  " -addext subjectAltName=" + (name == "127.0.0.1" ? "IP:" : "DNS:") + name + " -keyout " +
                  base + ".key -out " + base + ".crt"),
              0);
    run("cat " + base + ".key " + base + ".crt > " + base + ".pem");
  }
  std::string file(const std::string& name) const { return (folder / name).string(); }

  /// A server that is widely run, as the user of the tests.
  void start_vsftpd(const std::string& more = {}) {
    const std::string vsftpd = "/usr/sbin/vsftpd";
    ASSERT_TRUE(std::filesystem::exists(vsftpd)) << "scripts/setup installs vsftpd";
    port = free_port();
    const char* user = getuid() == 0 ? "root" : std::getenv("USER");
    std::ofstream(folder / "config")
        << "listen=YES\nlisten_address=127.0.0.1\nlisten_port=" << port
        << "\nrun_as_launching_user=YES\nbackground=NO\nanonymous_enable=YES\n"
           "local_enable=NO\nno_anon_password=YES\nftp_username="
        << (user ? user : "nobody") << "\nanon_root=" << remote.string()
        << "\nwrite_enable=YES\nanon_upload_enable=YES\nanon_mkdir_write_enable=YES\n"
           "anon_other_write_enable=YES\nanon_world_readable_only=NO\nanon_umask=022\n"
           "connect_from_port_20=NO\nseccomp_sandbox=NO\nxferlog_enable=NO\n"
           "secure_chroot_dir="
        << file("local") << "\nallow_writeable_chroot=YES\n"
        << more;
    server = std::make_unique<ServerProcess>(std::vector<std::string>{vsftpd, file("config")});
    ASSERT_TRUE(wait_for_port(port));
  }
  void start_vsftpd_with_tls(const std::string& more) {
    start_vsftpd(
        "ssl_enable=YES\nallow_anon_ssl=YES\nforce_anon_logins_ssl=YES\nforce_anon_data_ssl=YES\n"
        "require_ssl_reuse=YES\nrsa_cert_file=" +
        file("server.pem") + "\n" + more);
  }
  void connect_anonymously(const std::string& scheme = "ftp://") {
    make_client(scheme);
    client->UserName = u"anonymous";
    ASSERT_TRUE(client->Connect()) << testing::PrintToString(events.heard);
    events.heard.clear();
  }
  void start_tls(const std::string& kind) { start_pyftpd({"--tls=" + kind, file("server.pem")}); }

  /// OpenSSH's server as the user of the tests, with a key of its own.
  void start_sshd() {
    const std::string sshd = "/usr/sbin/sshd";
    ASSERT_TRUE(std::filesystem::exists(sshd)) << "scripts/setup installs openssh-server";
    if (getuid() == 0) mkdir("/run/sshd", 0755);
    ASSERT_EQ(run("ssh-keygen -q -t ed25519 -N '' -f " + file("host")), 0);
    ASSERT_EQ(run("ssh-keygen -q -t ed25519 -N '' -f " + file("user")), 0);
    port = free_port();
    std::ofstream(folder / "config")
        << "Port " << port << "\nListenAddress 127.0.0.1\nHostKey " << file("host") << "\nAuthorizedKeysFile "
        << file("user.pub")
        << "\nStrictModes no\nUsePAM no\nPasswordAuthentication no\n"
           "KbdInteractiveAuthentication no\nPidFile none\nSubsystem sftp internal-sftp\n";
    server = std::make_unique<ServerProcess>(
        std::vector<std::string>{sshd, "-D", "-e", "-f", file("config"), "-E", file("log")});
    ASSERT_TRUE(wait_for_port(port)) << bytes_of_file(folder / "log");
    options.private_key_file = file("user");
  }
  void know_host() {
    std::ifstream key(folder / "host.pub");
    std::string type, bits;
    key >> type >> bits;
    std::ofstream(folder / "known") << "[127.0.0.1]:" << port << " " << type << " " << bits << "\n";
    options.known_hosts_file = file("known");
  }
  void make_sftp_client() {
    make_client("sftp://");
    client->UserName = from_utf8(getuid() == 0 ? "root" : std::getenv("USER") ? std::getenv("USER") : "");
    client->Password.clear();
  }
};

TEST_F(SecureServer, ExplicitTlsCarriesFilesAndListings) {
  make_certificate();
  start_vsftpd_with_tls("");
  options.certificate_file = file("server.crt");
  connect_anonymously("ftpes://");
  EXPECT_TRUE(client->PutFileProgress(u"a", write_local("up", some_bytes(300'000))));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), some_bytes(300'000)));
  EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
  EXPECT_THAT(names(), ElementsAre("a"));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SecureServer, ImplicitTlsCarriesFiles) {
  make_certificate();
  start_vsftpd_with_tls("implicit_ssl=YES\n");
  options.certificate_file = file("server.crt");
  connect_anonymously("ftps://");
  EXPECT_TRUE(client->PutFileProgress(u"a", write_local("up", some_bytes(300'000))));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), some_bytes(300'000)));
}

TEST_F(SecureServer, AServerThatSpeaksNewTlsOnlyIsMetToo) {
  make_certificate();
  start_pyftpd({"--tls=explicit", file("server.pem"), "--new-tls-only"});
  options.certificate_file = file("server.crt");
  connect("ftpes://");
  EXPECT_TRUE(client->CreateDirectory(u"made"));
  EXPECT_TRUE(std::filesystem::exists(remote / "made"));
}

TEST_F(SecureServer, ACertificateThatNobodyVouchesForIsAFailureWithItsReason) {
  make_certificate();
  for (const auto& [kind, scheme] : {std::pair("explicit", "ftpes://"), std::pair("implicit", "ftps://")}) {
    start_tls(kind);
    make_client(scheme);
    EXPECT_FALSE(client->Connect());
    EXPECT_THAT(errors(),
                ElementsAre(AllOf(HasSubstr("error 12157 Connect - Message: "), HasSubstr("certificate"))))
        << kind;
  }
}

TEST_F(SecureServer, ACertificateOfAnotherServerIsAFailureWithItsReason) {
  make_certificate("example.org");
  start_tls("explicit");
  options.certificate_file = file("server.crt");
  make_client("ftpes://");
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12157 Connect - Message: ")));
}

TEST_F(SecureServer, AServerWithoutTlsIsNotToldTheUser) {
  start_odd("none");
  make_client("ftpes://");
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12157 Connect - Message: ")));
}

TEST_F(SecureServer, SftpCarriesFilesAndKnowsFolders) {
  start_sshd();
  know_host();
  make_sftp_client();
  ASSERT_TRUE(client->Connect()) << testing::PrintToString(events.heard) << bytes_of_file(folder / "log");
  ASSERT_TRUE(client->SetCurrDirectory(from_utf8(remote.string())));
  const std::string bytes = some_bytes(300'001);
  EXPECT_TRUE(client->PutFileProgress(u"a \"b\" ä.gif", write_local("up", bytes)));
  EXPECT_TRUE(same_bytes(remote_bytes("a \"b\" ä.gif"), bytes));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a \"b\" ä.gif"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), bytes));
  EXPECT_TRUE(client->CreateDirectory(u"sub dir"));
  EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
  EXPECT_THAT(names(), ElementsAre("a \"b\" ä.gif", "sub dir"));
  EXPECT_TRUE(client->Directory()->item(u"sub dir").Directory);
  EXPECT_TRUE(client->RenameFile(u"a \"b\" ä.gif", u"c\\d"));
  EXPECT_TRUE(same_bytes(remote_bytes("c\\d"), bytes));
  EXPECT_TRUE(client->DeleteFile(u"c\\d"));
  EXPECT_TRUE(client->RemoveDirectory(u"sub dir"));
  EXPECT_THAT(errors(), IsEmpty());
  EXPECT_FALSE(client->SetCurrDirectory(u"nowhere"));
  EXPECT_FALSE(client->DeleteFile(u"nothing"));
  EXPECT_EQ(client->GetRemoteFileSize(u"nothing"), -1);
  EXPECT_EQ(errors().size(), 3u);
}

TEST_F(SecureServer, AHostKeyThatTheUserDoesNotKnowIsAFailureWithItsReason) {
  start_sshd();
  std::ofstream(folder / "known") << "";
  options.known_hosts_file = file("known");
  make_sftp_client();
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12157 Connect - Message: ")));
}

TEST_F(SecureServer, AHostKeyThatIsAnotherThanTheOneKnownIsAFailure) {
  start_sshd();
  ASSERT_EQ(run("ssh-keygen -q -t ed25519 -N '' -f " + file("other")), 0);
  std::filesystem::copy_file(folder / "other.pub", folder / "host.pub",
                             std::filesystem::copy_options::overwrite_existing);
  know_host();
  make_sftp_client();
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12157 Connect - Message: ")));
  EXPECT_THAT(bytes_of_file(folder / "log"), Not(HasSubstr("Accepted")));
}

TEST_F(SecureServer, AKeyThatTheServerDoesNotTakeIsAFailedLogin) {
  start_sshd();
  know_host();
  ASSERT_EQ(run("ssh-keygen -q -t ed25519 -N '' -f " + file("stranger")), 0);
  options.private_key_file = file("stranger");
  make_sftp_client();
  EXPECT_FALSE(client->Connect());
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12015 Connect - Message: ")));
}

/// Whether the server takes it depends on the system's library: what counts is that nobody is left to guess.
TEST_F(SecureServer, AnRsaKeyIsTakenOrTheErrorSaysWhyNot) {
  start_sshd();
  know_host();
  for (const std::string form : {"", "-m PEM"}) {  // OpenSSH's own form, and the older one
    ASSERT_EQ(run("ssh-keygen -q -t rsa -b 2048 " + form + " -N '' -f " + file("rsa")), 0);
    ASSERT_EQ(run("cat " + file("rsa.pub") + " >> " + file("user.pub") + " && rm " + file("rsa.pub")), 0);
    EXPECT_TRUE(is_rsa_key(file("rsa"))) << form;
    options.private_key_file = file("rsa");
    make_sftp_client();
    const auto refusal = AllOf(HasSubstr("error 12015 Connect - Message: "), HasSubstr("/rsa is an RSA key"),
                               HasSubstr("Use an Ed25519 or ECDSA key"));
    const bool taken = client->Connect();
    const std::vector<std::string> told = errors();
    EXPECT_TRUE(taken || testing::Matches(ElementsAre(refusal))(told)) << testing::PrintToString(told);
    std::filesystem::remove(file("rsa"));
  }
}

TEST_F(SecureServer, NoOtherKeyIsTakenForRsa) {
  for (const std::string kind : {"ed25519", "ecdsa"}) {
    ASSERT_EQ(run("ssh-keygen -q -t " + kind + " -N '' -f " + file(kind)), 0);
    EXPECT_FALSE(is_rsa_key(file(kind))) << kind;
  }
  EXPECT_FALSE(is_rsa_key(file("nothing")));
}

// --- without either ---

TEST_F(SecureServer, VsftpdFilesFoldersAndListings) {
  start_vsftpd();
  connect_anonymously();
  const std::string bytes = some_bytes(300'001);
  EXPECT_TRUE(client->PutFileProgress(u"a b.gif", write_local("up", bytes)));
  EXPECT_TRUE(same_bytes(remote_bytes("a b.gif"), bytes));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a b.gif"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), bytes));
  EXPECT_TRUE(client->CreateDirectory(u"sub"));
  EXPECT_TRUE(client->GetDirectoryListing(u"*.*"));
  EXPECT_THAT(names(), ElementsAre("a b.gif", "sub"));
  EXPECT_EQ(client->Directory()->item(u"a b.gif").FileSize, 300'001);
  EXPECT_TRUE(client->GetDirectoryListing(u"sub/*.*"));
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_TRUE(client->RenameFile(u"a b.gif", u"c.gif"));
  EXPECT_TRUE(client->DeleteFile(u"c.gif"));
  EXPECT_TRUE(client->RemoveDirectory(u"sub"));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SecureServer, VsftpdActiveModeAndRefusals) {
  start_vsftpd();
  make_client();
  client->UserName = u"anonymous";
  client->Passive = false;
  ASSERT_TRUE(client->Connect()) << testing::PrintToString(events.heard);
  EXPECT_TRUE(client->PutFileProgress(u"a", write_local("up", some_bytes(5000))));
  EXPECT_TRUE(client->GetFileProgress(local("down"), u"a"));
  EXPECT_TRUE(same_bytes(local_bytes("down"), some_bytes(5000)));
  heard();
  EXPECT_FALSE(client->DeleteFile(u"nothing"));
  EXPECT_THAT(errors(), ElementsAre(HasSubstr("error 12003 550 ")));
}

}  // namespace
}  // namespace tvx::network
