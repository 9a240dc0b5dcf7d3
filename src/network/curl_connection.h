#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "tvx/network/curl_driver.h"
#include "tvx/network/remote_address.h"

namespace tvx::network {

/// A connection with one server. Names are made paths from the root on, by the current folder that is kept
/// here: should the line have been lost between two calls, the next one makes a new one in the same folder.
class CurlConnection final : public platform::RemoteConnection {
 public:
  CurlConnection(std::unique_ptr<CurlDriver> driver, const CurlOptions& options,
                 platform::NetworkAccess access, platform::RemoteAccount account);

  /// Logs in. Throws RuntimeError.
  void connect();

  void close() override;
  void open_file(std::u16string_view name, platform::RemoteAccess access,
                 platform::RemoteTransferType type) override;
  platform::ListingForm open_listing(std::u16string_view folder) override;
  std::size_t read(std::span<char> block) override;
  void write(std::string_view block) override;
  void finish() override;
  void close_file() override;
  std::optional<std::uint64_t> file_size(std::u16string_view name) override;
  std::u16string current_directory() override { return folder_; }
  void set_current_directory(std::u16string_view folder) override;
  void delete_file(std::u16string_view name) override;
  void create_directory(std::u16string_view folder) override;
  void remove_directory(std::u16string_view folder) override;
  void rename_file(std::u16string_view old_name, std::u16string_view new_name) override;
  void interrupt() override { driver_->interrupt(); }

 private:
  bool is_sftp() const { return address_.protocol == Protocol::Sftp; }
  std::u16string path_of(std::u16string_view name) const { return joined_path(folder_, name); }
  /// A new exchange on a path, with all that an account and its safety want set.
  void prepare(std::u16string_view path);
  void prepare_security();
  void prepare_keys();
  std::string key_file() const;
  RuntimeError with_reason(const RuntimeError& failure) const;
  void prepare_proxy();
  /// Commands alone, and nothing carried.
  void run_commands(std::span<const std::string> commands);
  void run_command(std::string_view ftp, std::string_view sftp, std::u16string_view path);
  void start_listing(const std::u16string& path, platform::ListingForm form);
  void expect_file();
  /// Every failure leaves through here: without the password.
  void guarded(const std::function<void()>& call) const;

  const std::unique_ptr<CurlDriver> driver_;
  const CurlOptions& options_;
  const platform::NetworkAccess access_;
  const platform::RemoteAccount account_;
  const RemoteAddress address_;
  const std::string user_, password_;
  std::u16string folder_ = u"/";
  bool writing_ = false, has_facts_ = true;
  /// Many servers want data connections to take up the session of the first one, which the library does
  /// reliably up to TLS 1.2. A server that speaks only newer ones is met without.
  bool takes_up_sessions_ = true;
};

}  // namespace tvx::network
