#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/platform/remote_network.h"

namespace tvx::transfer {

/// A server in memory, which writes down what it is asked for. What a test wants to go wrong it does in
/// `before`.
struct FakeServer {
  std::map<std::u16string, std::string> files;  // by name as the client says it
  std::string listing;
  platform::ListingForm form = platform::ListingForm::Facts;
  bool tells_sizes = true, online = true;
  std::u16string folder = u"/home";
  std::vector<std::string> asked;
  platform::NetworkAccess access;
  platform::RemoteAccount account;
  int open_connections = 0;
  std::size_t blocks = 0;

  /// Runs at the start of every call, with its name; may throw, and may call the client.
  std::function<void(const std::string& call)> before;

  void ask(const std::string& call, std::u16string_view name = {}) {
    asked.push_back(name.empty() ? call : call + " " + to_utf8(name));
    if (before) before(call);
  }
};

class FakeConnection final : public platform::RemoteConnection {
 public:
  explicit FakeConnection(FakeServer& server) : server_(server) { ++server_.open_connections; }
  ~FakeConnection() override { --server_.open_connections; }

  void close() override { server_.ask("close"); }
  void open_file(std::u16string_view name, platform::RemoteAccess access,
                 platform::RemoteTransferType type) override {
    writing_ = access == platform::RemoteAccess::Write;
    server_.ask((writing_ ? "write " : "read ") + std::to_string(int(type)), name);
    name_ = name;
    at_ = 0;
    if (writing_)
      server_.files[name_].clear();
    else if (!server_.files.contains(name_))
      throw RuntimeError(platform::network_errors::extended_error, u"550 No such file\r\n");
    else
      content_ = server_.files[name_];
  }
  platform::ListingForm open_listing(std::u16string_view folder) override {
    server_.ask("list", folder);
    content_ = server_.listing;
    at_ = 0;
    return server_.form;
  }
  std::size_t read(std::span<char> block) override {
    ++server_.blocks;
    if (server_.before) server_.before("block");
    const std::size_t got = std::min(block.size(), content_.size() - at_);
    std::memcpy(block.data(), content_.data() + at_, got);
    at_ += got;
    return got;
  }
  void write(std::string_view block) override {
    ++server_.blocks;
    if (server_.before) server_.before("block");
    server_.files[name_] += block;
  }
  void finish() override { server_.ask("finish"); }
  void close_file() override { content_.clear(); }
  std::optional<std::uint64_t> file_size(std::u16string_view name) override {
    server_.ask("size", name);
    const auto found = server_.files.find(std::u16string(name));
    if (!server_.tells_sizes || found == server_.files.end()) return {};
    return found->second.size();
  }
  std::u16string current_directory() override {
    server_.ask("where");
    return server_.folder;
  }
  void set_current_directory(std::u16string_view folder) override {
    server_.ask("go", folder);
    server_.folder = folder;
  }
  void delete_file(std::u16string_view name) override { server_.ask("delete", name); }
  void create_directory(std::u16string_view folder) override { server_.ask("make", folder); }
  void remove_directory(std::u16string_view folder) override { server_.ask("remove", folder); }
  void rename_file(std::u16string_view old_name, std::u16string_view new_name) override {
    server_.ask("rename", std::u16string(old_name) + u" " + std::u16string(new_name));
  }
  void interrupt() override { server_.asked.push_back("interrupt"); }

 private:
  FakeServer& server_;
  std::u16string name_;
  std::string content_;
  std::size_t at_ = 0;
  bool writing_ = false;
};

class FakeSession final : public platform::NetworkSession {
 public:
  explicit FakeSession(FakeServer& server) : server_(server) {}
  std::unique_ptr<platform::RemoteConnection> connect(const platform::RemoteAccount& account) override {
    server_.account = account;
    server_.ask("connect", account.host);
    return std::make_unique<FakeConnection>(server_);
  }
  void interrupt() override { server_.asked.push_back("interrupt"); }

 private:
  FakeServer& server_;
};

class FakeNetwork final : public platform::RemoteNetwork {
 public:
  explicit FakeNetwork(FakeServer& server) : server_(server) {}
  bool dial() override { return server_.online; }
  std::unique_ptr<platform::NetworkSession> open(const platform::NetworkAccess& access) override {
    server_.access = access;
    server_.ask("open");
    return std::make_unique<FakeSession>(server_);
  }

 private:
  FakeServer& server_;
};

}  // namespace tvx::transfer
