#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tvx {

/// A web server for tests, on a port of this machine: each path is answered as the test wants, byte by byte
/// if it likes. Every connection has a thread and answers one request.
class HttpServer {
 public:
  struct Request {
    std::string method, target, head;
    /// The value of a header, whatever its letters; "" if it isn't there.
    std::string header(std::string_view name) const {
      for (std::size_t at = head.find("\r\n"); at != std::string::npos; at = head.find("\r\n", at + 2)) {
        const std::string_view line = std::string_view(head).substr(at + 2);
        if (line.size() <= name.size() || line[name.size()] != ':') continue;
        bool same = true;
        for (std::size_t i = 0; i < name.size(); ++i) same &= (line[i] | 0x20) == (name[i] | 0x20);
        if (!same) continue;
        const std::string_view value = line.substr(name.size() + 1, line.find("\r\n") - name.size() - 1);
        return std::string(value.substr(std::min(value.find_first_not_of(' '), value.size())));
      }
      return {};
    }
  };

  /// What goes back. All of it is gone where the other side has hung up.
  class Connection {
   public:
    Connection(int descriptor, HttpServer& server) : descriptor_(descriptor), server_(server) {}

    void send(std::string_view bytes) {
      while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
      }
    }
    void reply(std::string_view body, std::string_view type = "text/html", std::string_view status = "200 OK",
               std::string_view more = {}) {
      send("HTTP/1.1 " + std::string(status) + "\r\nContent-Length: " + std::to_string(body.size()) +
           (type.empty() ? "" : "\r\nContent-Type: " + std::string(type)) + "\r\nConnection: close\r\n" +
           std::string(more) + "\r\n");
      send(body);
    }
    void redirect(std::string_view to, std::string_view status = "302 Found") {
      reply("", "", status, "Location: " + std::string(to) + "\r\n");
    }
    /// Hangs up so that the other side sees an error and no end.
    void reset() {
      const linger now{1, 0};
      setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &now, sizeof now);
    }
    /// Keeps the answer back until the test lets it go, or the server ends.
    void wait_for_release() { server_.wait_for_release(); }

   private:
    int descriptor_;
    HttpServer& server_;
  };
  using Answer = std::function<void(const Request&, Connection&)>;

  HttpServer() {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), length) != 0 || listen(listener_, 64) != 0)
      std::abort();
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    accepting_ = std::thread([this] { accept_all(); });
  }
  ~HttpServer() {
    release();
    ending_ = true;
    accepting_.join();
    for (std::thread& thread : threads_) thread.join();
    close(listener_);
  }
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  int port() const { return port_; }
  std::string url(std::string_view path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
  }

  /// A path is everything after the host and before the "?".
  void on(const std::string& path, Answer answer) {
    const std::lock_guard lock(mutex_);
    answers_[path] = std::move(answer);
  }
  void serve(const std::string& path, std::string body, std::string type = "text/html") {
    on(path, [body, type](const Request&, Connection& connection) { connection.reply(body, type); });
  }
  void redirect(const std::string& path, std::string to) {
    on(path, [to](const Request&, Connection& connection) { connection.redirect(to); });
  }
  /// Answers only once release() is called.
  void hold(const std::string& path, std::string body, std::string type = "text/html") {
    on(path, [body, type](const Request&, Connection& connection) {
      connection.wait_for_release();
      connection.reply(body, type);
    });
  }
  void release() {
    const std::lock_guard lock(mutex_);
    released_ = true;
    changed_.notify_all();
  }

  /// The requests so far, in their order.
  std::vector<Request> requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
  }
  std::size_t count(std::string_view target) const {
    std::size_t count = 0;
    for (const Request& request : requests()) count += request.target == target;
    return count;
  }

 private:
  void wait_for_release() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return released_; });
  }

  void accept_all() {
    while (!ending_) {
      pollfd polled{listener_, POLLIN, 0};
      if (poll(&polled, 1, 20) <= 0) continue;
      const int descriptor = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      if (descriptor >= 0) threads_.emplace_back([this, descriptor] { serve_one(descriptor); });
    }
  }

  void serve_one(int descriptor) {
    std::string head;
    char bytes[4096];
    while (!ending_ && head.find("\r\n\r\n") == std::string::npos) {
      pollfd polled{descriptor, POLLIN, 0};
      if (poll(&polled, 1, 20) <= 0) continue;
      const ssize_t got = recv(descriptor, bytes, sizeof bytes, 0);
      if (got <= 0) break;
      head.append(bytes, static_cast<std::size_t>(got));
    }
    if (head.find("\r\n\r\n") != std::string::npos) answer(descriptor, head);
    close(descriptor);
  }

  void answer(int descriptor, const std::string& head) {
    Request request;
    request.head = head;
    request.method = head.substr(0, head.find(' '));
    const std::size_t target = request.method.size() + 1;
    request.target = head.substr(target, head.find(' ', target) - target);
    Answer answer;
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(request);
      const auto found = answers_.find(request.target.substr(0, request.target.find('?')));
      if (found != answers_.end()) answer = found->second;
    }
    Connection connection(descriptor, *this);
    if (answer)
      answer(request, connection);
    else
      connection.reply("<title>Not found</title><style>p{}</style>", "text/html", "404 Not Found");
  }

  int listener_ = -1, port_ = 0;
  std::atomic<bool> ending_ = false;
  std::thread accepting_;
  std::vector<std::thread> threads_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool released_ = false;
  std::map<std::string, Answer> answers_;
  std::vector<Request> requests_;
};

/// An address of this machine where nobody listens.
inline std::string dead_address() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  bind(listener, reinterpret_cast<sockaddr*>(&address), length);
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
  close(listener);
  return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
}

}  // namespace tvx
