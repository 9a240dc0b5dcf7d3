#include "tvx/network/remote_address.h"

#include <array>
#include <charconv>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/platform/remote_network.h"

namespace tvx::network {
namespace {

struct Scheme {
  std::u16string_view name;
  Protocol protocol;
  std::uint16_t port;
};
constexpr std::uint16_t ftp_port = 21;
constexpr std::array<Scheme, 4> schemes = {{{u"ftp", Protocol::Ftp, ftp_port},
                                            {u"ftpes", Protocol::FtpExplicitTls, ftp_port},
                                            {u"ftps", Protocol::FtpImplicitTls, 990},
                                            {u"sftp", Protocol::Sftp, 22}}};

[[noreturn]] void refuse(std::u16string_view reason) {
  throw RuntimeError(platform::network_errors::invalid_address, std::u16string(reason));
}

const Scheme& scheme_of(std::u16string_view& host) {
  const std::size_t end = host.find(u"://");
  if (end == std::u16string_view::npos) return schemes[0];
  const std::u16string name = ascii_lower(host.substr(0, end));
  host.remove_prefix(end + 3);
  for (const Scheme& scheme : schemes)
    if (scheme.name == name) return scheme;
  refuse(u"The server's address has an unknown scheme; ftp, ftpes, ftps and sftp are known");
}

std::uint16_t port_in(std::u16string_view text) {
  const auto number = parse_integer(text);
  if (!number || *number < 1 || *number > 65535) refuse(u"The server's address has a port that is none");
  return static_cast<std::uint16_t>(*number);
}

/// Takes ":2121" off the end of a name, or of an address in brackets.
std::u16string_view port_after(std::u16string_view& host) {
  const std::size_t colon = host.rfind(u':');
  if (colon == std::u16string_view::npos || host.ends_with(u']')) return {};
  if (!host.starts_with(u'[') && host.find(u':') != colon) return {};  // an IPv6 address without brackets
  const std::u16string_view port = host.substr(colon + 1);
  host = host.substr(0, colon);
  return port;
}

std::string escaped(std::string_view bytes) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                       (byte >= 'a' && byte <= 'z') || byte == '/' || byte == '-' || byte == '_' ||
                       byte == '.';
    if (plain) {
      text += c;
    } else {
      text += '%';
      text += digits[byte >> 4];
      text += digits[byte & 15];
    }
  }
  return text;
}

const char* scheme_name(Protocol protocol) {
  switch (protocol) {
    case Protocol::FtpImplicitTls: return "ftps://";
    case Protocol::Sftp: return "sftp://";
    default: return "ftp://";
  }
}

}  // namespace

RemoteAddress RemoteAddress::parse(std::u16string_view host, std::int32_t port) {
  host = trimmed(host);
  const std::u16string_view whole = host;
  const Scheme& scheme = scheme_of(host);
  const bool has_scheme = host.size() < whole.size();
  while (has_scheme && host.ends_with(u'/')) host.remove_suffix(1);
  RemoteAddress address{.protocol = scheme.protocol};
  if (host.find(u'@') != std::u16string_view::npos)
    refuse(u"The server's address has a user's name in it; that belongs into a property of its own");
  if (host.find(u'/') != std::u16string_view::npos)
    refuse(u"The server's address has a folder in it; that belongs into a property of its own");
  const std::u16string_view own_port = has_scheme ? port_after(host) : std::u16string_view();
  address.port = !own_port.empty()                             ? port_in(own_port)
                 : port == ftp_port && scheme.port != ftp_port ? scheme.port
                                                               : static_cast<std::uint16_t>(port);
  if (host.empty() || host.find_first_of(u" \t\r\n?#%\\<>\"^`{|}") != std::u16string_view::npos ||
      host.find(u'\0') != std::u16string_view::npos)
    refuse(u"There is no server of that name");
  const bool bare_ipv6 = !host.starts_with(u'[') && host.find(u':') != std::u16string_view::npos;
  address.host = bare_ipv6 ? "[" + to_utf8(host) + "]" : to_utf8(host);
  return address;
}

std::string RemoteAddress::url_of(std::u16string_view path) const {
  // Of FTP the first "/" only parts the path from the server: the root needs one of its own.
  const std::string root = protocol == Protocol::Sftp ? "" : "/%2F";
  std::string bytes = to_utf8(path);
  if (protocol != Protocol::Sftp && bytes.starts_with('/')) bytes.erase(0, 1);
  return scheme_name(protocol) + host + ":" + std::to_string(port) + root + escaped(bytes);
}

std::u16string joined_path(std::u16string_view folder, std::u16string_view name) {
  const std::u16string whole =
      name.starts_with(u'/') ? std::u16string(name) : std::u16string(folder) + u"/" + std::u16string(name);
  std::vector<std::u16string_view> parts;
  for (const std::u16string_view part : split(whole, u'/')) {
    if (part.empty() || part == u".") continue;
    if (part == u"..") {
      if (!parts.empty()) parts.pop_back();
    } else {
      parts.push_back(part);
    }
  }
  std::u16string path;
  for (const std::u16string_view part : parts) path += u"/" + std::u16string(part);
  return path.empty() ? u"/" : path;
}

}  // namespace tvx::network
