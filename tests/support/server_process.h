#pragma once

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

extern char** environ;

namespace tvx {

/// A program that serves a test, and ends with it.
class ServerProcess {
 public:
  explicit ServerProcess(const std::vector<std::string>& command) {
    int in[2], out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) std::abort();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    if (posix_spawnp(&process_, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
      process_ = 0;
    posix_spawn_file_actions_destroy(&actions);
    close(in[0]);
    close(out[1]);
    in_ = in[1];
    out_ = out[0];
  }
  ~ServerProcess() { end(); }
  ServerProcess(const ServerProcess&) = delete;
  ServerProcess& operator=(const ServerProcess&) = delete;

  /// The first line that it prints; empty if it has ended, or says nothing for so long.
  std::string line(int milliseconds = 20'000) const {
    std::string text;
    pollfd polled{out_, POLLIN, 0};
    for (char c; poll(&polled, 1, milliseconds) > 0 && read(out_, &c, 1) == 1 && c != '\n';) text += c;
    return text;
  }

  /// At once, in the middle of whatever it does.
  void end() {
    if (process_ <= 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = 0;
    close(in_);
    close(out_);
  }
  pid_t process() const { return process_; }

 private:
  pid_t process_ = 0;
  int in_ = -1, out_ = -1;
};

/// A port that nobody listens on at this moment, below those that the system hands out by itself.
inline int free_port() {
  static int next = 20'000 + getpid() % 10'000;
  for (int tries = 0; tries < 2000; ++tries) {
    next = next >= 31'999 ? 20'000 : next + 1;
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(next));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool free = bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(probe);
    if (free) return next;
  }
  std::abort();
}

/// Whether somebody listens there; waits for it.
inline bool wait_for_port(int port, int milliseconds = 15'000) {
  for (int waited = 0; waited < milliseconds; waited += 20) {
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool there = connect(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(probe);
    if (there) return true;
    usleep(20'000);
  }
  return false;
}

}  // namespace tvx
