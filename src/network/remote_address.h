#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tvx::network {

enum class Protocol : std::uint8_t { Ftp, FtpExplicitTls, FtpImplicitTls, Sftp };

/// A server, as an account names it.
struct RemoteAddress {
  Protocol protocol = Protocol::Ftp;
  std::string host;  // in UTF-8
  std::uint16_t port = 21;

  /// "server", "ftp://server", "ftps://server:1990". A port there wins over `port`; of a protocol with a port
  /// of its own the FTP port 21 means that one. Throws RuntimeError(12005) for what names no server, and for
  /// an address with a user, a password or a folder in it: these have properties of their own.
  static RemoteAddress parse(std::u16string_view host, std::int32_t port);

  /// Of a path from the root on; "%" and all that has a meaning in addresses is escaped.
  std::string url_of(std::u16string_view path) const;
};

/// `name` seen from `folder`, without "." and "..": a path from the root on.
std::u16string joined_path(std::u16string_view folder, std::u16string_view name);

}  // namespace tvx::network
