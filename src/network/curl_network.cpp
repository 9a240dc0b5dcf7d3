#include "tvx/network/curl_network.h"

#include <utility>

#include "tvx/network/curl_connection.h"
#include "tvx/network/curl_driver.h"

namespace tvx::network {
namespace {

class Session final : public platform::NetworkSession {
 public:
  Session(platform::MessageLoop& loop, const CurlOptions& options, platform::NetworkAccess access)
      : loop_(loop), options_(options), access_(std::move(access)) {}

  std::unique_ptr<platform::RemoteConnection> connect(const platform::RemoteAccount& account) override {
    auto driver = std::make_unique<CurlDriver>(loop_, options_);
    auto connection = std::make_unique<CurlConnection>(std::move(driver), options_, access_, account);
    connecting_ = connection.get();
    const struct Done {
      Session& session;
      ~Done() { session.connecting_ = nullptr; }
    } done{*this};
    connection->connect();
    return connection;
  }

  void interrupt() override {
    if (connecting_) connecting_->interrupt();
  }

 private:
  platform::MessageLoop& loop_;
  const CurlOptions& options_;
  const platform::NetworkAccess access_;
  CurlConnection* connecting_ = nullptr;
};

}  // namespace

CurlNetwork::CurlNetwork(platform::MessageLoop& loop, CurlOptions options)
    : loop_(loop), options_(std::move(options)) {
  prepare_library();
}

std::unique_ptr<platform::NetworkSession> CurlNetwork::open(const platform::NetworkAccess& access) {
  return std::make_unique<Session>(loop_, options_, access);
}

}  // namespace tvx::network
