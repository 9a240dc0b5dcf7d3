#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tvx/platform/remote_network.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::network {

struct CurlOptions {
  /// A server that says nothing for so long is given up; time in which it wasn't listened to doesn't count.
  std::int64_t silence_milliseconds = 30'000;
  /// A file of certificates that are trusted in place of the system's; empty: the system's.
  std::string certificate_file;
  /// Host keys that are trusted; empty: those of the user's own file.
  std::string known_hosts_file;
  /// For a server that takes the user's key; empty: the agent's and the user's usual ones.
  std::string private_key_file;
};

/// FTP, FTPS and SFTP over libcurl, in the loop's thread: calls that wait for a server let the loop run every
/// few milliseconds. Certificates are checked against the system's, host keys against those that the user
/// knows; where a check fails nothing is sent, not even the name of the user. A server that answers PASV with
/// the address of another one is not followed there.
class CurlNetwork final : public platform::RemoteNetwork {
 public:
  /// `loop` outlives this.
  explicit CurlNetwork(platform::MessageLoop& loop, CurlOptions options = {});

  bool dial() override { return true; }
  std::unique_ptr<platform::NetworkSession> open(const platform::NetworkAccess& access) override;

 private:
  platform::MessageLoop& loop_;
  const CurlOptions options_;
};

}  // namespace tvx::network
