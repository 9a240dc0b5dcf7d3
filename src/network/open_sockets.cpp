#include "tvx/network/open_sockets.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tvx::network {
namespace {

/// So much may wait in the system for a slow line. What is on it already isn't counted, so none gets slower.
constexpr int most_unsent = 131'072;

}  // namespace

void OpenSockets::watch(CURL* exchange) {
  curl_easy_setopt(exchange, CURLOPT_SOCKOPTFUNCTION, &OpenSockets::opened);
  curl_easy_setopt(exchange, CURLOPT_SOCKOPTDATA, this);
  curl_easy_setopt(exchange, CURLOPT_CLOSESOCKETFUNCTION, &OpenSockets::closed);
  curl_easy_setopt(exchange, CURLOPT_CLOSESOCKETDATA, this);
}

int OpenSockets::opened(void* self, curl_socket_t socket, curlsocktype purpose) {
  // Without this, megabytes of a file would stand in the system as sent, and nobody could tell a slow line
  // from a silent server.
  setsockopt(socket, IPPROTO_TCP, TCP_NOTSENT_LOWAT, &most_unsent, sizeof most_unsent);
  if (purpose == CURLSOCKTYPE_IPCXN) static_cast<OpenSockets*>(self)->sockets_.push_back(socket);
  return CURL_SOCKOPT_OK;
}

int OpenSockets::closed(void* self, curl_socket_t socket) {
  std::erase(static_cast<OpenSockets*>(self)->sockets_, socket);
  return close(socket);
}

std::size_t OpenSockets::bytes_of_file() const {
  int bytes = 0;
  if (sockets_.size() < 2 || ioctl(sockets_.back(), FIONREAD, &bytes) != 0 || bytes < 0) return 0;
  return static_cast<std::size_t>(bytes);
}

void OpenSockets::shut_down() const {
  for (const curl_socket_t socket : sockets_) shutdown(socket, SHUT_RDWR);
}

}  // namespace tvx::network
