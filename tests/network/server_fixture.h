#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "support/server_process.h"
#include "transfer/client_fixture.h"
#include "tvx/base/strings.h"
#include "tvx/headless/message_loop.h"
#include "tvx/network/curl_network.h"
#include "tvx/transfer/ftp_client.h"

namespace tvx::network {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using transfer::bytes_of_file;
using transfer::some_bytes;

std::string script_of_tests(const std::string& name);

/// Without printing them.
inline testing::AssertionResult same_bytes(const std::string& a, const std::string& b) {
  if (a == b) return testing::AssertionSuccess();
  std::size_t at = 0;
  while (at < a.size() && at < b.size() && a[at] == b[at]) ++at;
  return testing::AssertionFailure() << a.size() << " and " << b.size() << " bytes differ from " << at
                                     << " on";
}

inline int open_descriptors() {
  int count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

/// A client of real servers, which serve the folder `remote`.
class RealServer : public testing::Test {
 protected:
  RealServer() {
    static int folders = 0;
    folder = std::filesystem::temp_directory_path() /
             ("tvx-network-" + std::to_string(getpid()) + "-" + std::to_string(++folders));
    remote = folder / "remote";
    std::filesystem::create_directories(remote);
    std::filesystem::create_directories(folder / "local");
  }
  ~RealServer() override {
    client.reset();
    server.reset();
    clear_faults();
    // A server's own children may still write their last lines there.
    std::error_code left;
    for (int tries = 0; tries < 50; ++tries)
      if (std::filesystem::remove_all(folder, left); !left) return;
  }

  /// Starts a script that prints its port.
  void start(const std::string& name, const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {"/usr/bin/python3", script_of_tests(name)};
    command.insert(command.end(), arguments.begin(), arguments.end());
    server = std::make_unique<ServerProcess>(command);
    port = std::atoi(server->line().c_str());
    ASSERT_GT(port, 0) << "the server " << name << " did not start; scripts/setup installs what it needs";
  }
  void start_pyftpd(std::vector<std::string> options = {}) {
    options.insert(options.begin(), remote.string());
    start("pyftpd.py", options);
  }
  void start_odd(const std::string& oddity, int size = 1000) {
    start("odd_ftpd.py", {oddity, std::to_string(size)});
  }

  transfer::clsFTP& make_client(const std::string& scheme = "ftp://") {
    client.reset();
    network = std::make_unique<CurlNetwork>(loop, options);
    client = std::make_unique<transfer::clsFTP>(
        transfer::ClientSurroundings{.network = *network, .loop = loop}, events);
    client->Host = from_utf8(scheme + "127.0.0.1:" + std::to_string(port));
    client->UserName = u"ada";
    client->Password = u"secret";
    client->Passive = true;
    client->BlockSize = 65536;
    return *client;
  }
  transfer::clsFTP& connect(const std::string& scheme = "ftp://") {
    make_client(scheme);
    EXPECT_TRUE(client->Connect()) << testing::PrintToString(events.heard);
    events.heard.clear();
    return *client;
  }

  std::u16string local(const std::string& name) const {
    return from_utf8((folder / "local" / name).string());
  }
  std::u16string write_local(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / "local" / name, std::ios::binary) << bytes;
    return local(name);
  }
  void write_remote(const std::string& name, const std::string& bytes) const {
    std::ofstream(remote / name, std::ios::binary) << bytes;
  }
  std::string local_bytes(const std::string& name) const { return bytes_of_file(folder / "local" / name); }
  std::string remote_bytes(const std::string& name) const { return bytes_of_file(remote / name); }
  std::vector<std::string> heard() { return std::exchange(events.heard, {}); }
  std::vector<std::string> errors() {
    std::vector<std::string> told = heard();
    std::erase_if(told, [](const std::string& line) { return !line.starts_with("error"); });
    return told;
  }
  std::vector<std::string> names() {
    std::vector<std::string> result;
    for (const auto& item : client->Directory()->items()) result.push_back(to_utf8(item.Filename));
    std::ranges::sort(result);
    return result;
  }
  static std::int64_t milliseconds() {
    using namespace std::chrono;
    return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
  }

  std::filesystem::path folder, remote;
  headless::MessageLoop loop;
  CurlOptions options;
  std::unique_ptr<ServerProcess> server;
  int port = 0;
  transfer::Listener events;
  std::unique_ptr<CurlNetwork> network;
  std::unique_ptr<transfer::clsFTP> client;
};

}  // namespace tvx::network
