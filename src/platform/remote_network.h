#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Files on servers, in the words of clients that open, read and write them block by block.
///
/// What fails throws RuntimeError: a number of `network_errors` or of the system, and the text of the server
/// or of the library below. No text has a password in it. Calls that wait for a server let the message loop
/// run meanwhile; whoever makes them must expect all else to have changed. One call at a time.
namespace tvx::platform {

/// The numbers that hosts know from their platform.
namespace network_errors {
inline constexpr int path_not_found = 3;
inline constexpr int access_denied = 5;
inline constexpr int invalid_handle = 6;
inline constexpr int no_more_files = 18;
inline constexpr int end_of_file = 38;
inline constexpr int invalid_parameter = 87;
inline constexpr int disk_full = 112;
inline constexpr int cancelled = 995;
inline constexpr int timeout = 12002;
inline constexpr int extended_error = 12003;  // the text is the server's own reply
inline constexpr int invalid_address = 12005;
inline constexpr int name_not_resolved = 12007;
inline constexpr int login_failure = 12015;
inline constexpr int cannot_connect = 12029;
inline constexpr int connection_lost = 12031;
inline constexpr int transfer_in_progress = 12110;
inline constexpr int security_failure = 12157;  // a certificate or a host key that isn't to be trusted
}  // namespace network_errors

/// How the network is reached.
struct NetworkAccess {
  std::u16string agent;
  bool through_proxy = false;
  std::u16string proxy;   // empty where the way is direct
  std::u16string bypass;  // servers that need no proxy
};

struct RemoteAccount {
  /// A name or an address, with a scheme where it isn't plain FTP: "ftpes://" (explicit TLS), "ftps://"
  /// (implicit TLS), "sftp://"; after a scheme a port may follow the name.
  std::u16string host;
  std::int16_t port = 21;
  std::u16string user, password;
  bool passive = false;
};

enum class RemoteAccess : std::uint8_t { Read, Write };
/// How lines are carried over; the numbers are those of ed_FTPTransferType.
enum class RemoteTransferType : std::uint8_t { Unknown = 0, ASCII = 1, Binary = 2 };

/// In which form a server lists a folder.
enum class ListingForm : std::uint8_t {
  Facts,  // MLSD: "type=file;size=5;modify=20260102030405; name"
  Lines   // as programs print them for people: Unix, DOS
};

/// A connection with a server, on which one file at most is open.
class RemoteConnection {
 public:
  /// Without a word to the server.
  virtual ~RemoteConnection() = default;
  /// Says goodbye. Never throws; nothing else can be called after it.
  virtual void close() = 0;

  // --- a file, or a listing ---
  /// Names are seen from the current folder.
  virtual void open_file(std::u16string_view name, RemoteAccess access, RemoteTransferType type) = 0;
  /// The names in a folder, to be read like a file.
  virtual ListingForm open_listing(std::u16string_view folder) = 0;
  /// Fills the block; fewer bytes come only where the file ends. 0 is its end.
  virtual std::size_t read(std::span<char> block) = 0;
  virtual void write(std::string_view block) = 0;
  /// After the last block that is written: returns when the server has all of it.
  virtual void finish() = 0;
  /// Whether it has been read or written to its end or not; none that is open is no error. Never throws.
  virtual void close_file() = 0;

  // --- what is there ---
  /// Nothing where the server doesn't say: there may be no such file, or it may be a folder.
  virtual std::optional<std::uint64_t> file_size(std::u16string_view name) = 0;
  virtual std::u16string current_directory() = 0;
  virtual void set_current_directory(std::u16string_view folder) = 0;
  virtual void delete_file(std::u16string_view name) = 0;
  virtual void create_directory(std::u16string_view folder) = 0;
  virtual void remove_directory(std::u16string_view folder) = 0;
  virtual void rename_file(std::u16string_view old_name, std::u16string_view new_name) = 0;

  /// From within the loop: the call that is waiting gives up with `network_errors::cancelled`.
  virtual void interrupt() = 0;
};

/// The network, opened by one client.
class NetworkSession {
 public:
  virtual ~NetworkSession() = default;
  virtual std::unique_ptr<RemoteConnection> connect(const RemoteAccount& account) = 0;
  /// As that of a connection, for a call to connect.
  virtual void interrupt() = 0;
};

class RemoteNetwork {
 public:
  virtual ~RemoteNetwork() = default;
  /// Whether there is a line.
  virtual bool dial() = 0;
  virtual std::unique_ptr<NetworkSession> open(const NetworkAccess& access) = 0;
};

}  // namespace tvx::platform
