#pragma once

#include <curl/curl.h>

#include <cstddef>
#include <vector>

namespace tvx::network {

/// The sockets that the library has open: the one for commands, and after it the one over which a file comes.
/// Those that a server has opened aren't among them: the library doesn't tell of their end.
class OpenSockets {
 public:
  /// The exchange that is being prepared tells of its sockets here. This outlives the connection.
  void watch(CURL* exchange);
  /// Bytes of a file that have come and that nobody has read yet. 0: none, or its end, or nobody knows.
  std::size_t bytes_of_file() const;
  /// Whoever reads or writes goes on at once, with a failure.
  void shut_down() const;

 private:
  static int opened(void* self, curl_socket_t socket, curlsocktype purpose);
  static int closed(void* self, curl_socket_t socket);
  std::vector<curl_socket_t> sockets_;
};

}  // namespace tvx::network
