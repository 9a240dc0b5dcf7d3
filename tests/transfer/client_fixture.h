#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "transfer/fake_network.h"
#include "tvx/base/fault.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/platform/form.h"
#include "tvx/transfer/ftp_client.h"

namespace tvx::transfer {

/// Writes down what a client says, a line each.
class Listener : public FTPEvents {
 public:
  std::vector<std::string> heard;
  std::function<void(const std::string&)> inside;

  void TransferProgress(std::int32_t current, std::int32_t total) override {
    say("progress " + std::to_string(current) + " " + std::to_string(total));
  }
  void Cancelled() override { say("cancelled"); }
  void FTPError(std::int32_t number, const std::u16string& text) override {
    say("error " + std::to_string(number) + " " + to_utf8(text));
  }
  void Connected() override { say("connected"); }
  void Disconnected() override { say("disconnected"); }
  void GetPutSuccess() override { say("success"); }
  void FTPEvent(std::int32_t id, const std::u16string& text) override {
    say(std::to_string(id) + " " + to_utf8(text));
  }

 private:
  void say(const std::string& line) {
    heard.push_back(line);
    if (inside) inside(line);
  }
};

inline std::string bytes_of_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Bytes of which no two blocks are the same.
inline std::string some_bytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>((i * 31 + i / 251) & 255);
  return bytes;
}

class Client : public testing::Test {
 protected:
  Client() {
    static int folders = 0;
    folder = std::filesystem::temp_directory_path() /
             ("tvx-transfer-" + std::to_string(getpid()) + "-" + std::to_string(++folders));
    std::filesystem::create_directories(folder);
  }
  ~Client() override {
    clear_faults();
    std::filesystem::remove_all(folder);
  }

  void connect() {
    client.Host = u"server";
    ASSERT_TRUE(client.Connect());
    events.heard.clear();
    server.asked.clear();
  }
  std::u16string path(const std::string& name) const { return from_utf8((folder / name).string()); }
  std::u16string write_file(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return path(name);
  }
  std::vector<std::string> heard() { return std::exchange(events.heard, {}); }

  std::filesystem::path folder;
  headless::VirtualTimeLoop loop;
  FakeServer server;
  FakeNetwork network{server};
  Listener events;
  /// What `frmWait` said while it was shown, at every change.
  std::vector<std::string> messages;
  std::function<void(platform::Form&)> on_dialog;
  clsFTP client{{.network = network,
                 .loop = loop,
                 .show_wait =
                     [this](platform::Form& form) {
                       messages.push_back(to_utf8(form.Controls(u"lblMessage").Caption()));
                       if (on_dialog) on_dialog(form);
                     }},
                events};
};

}  // namespace tvx::transfer
