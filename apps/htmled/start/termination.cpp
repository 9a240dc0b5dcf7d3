#include "htmled/start/termination.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace tvx::htmled {
namespace {

constexpr int signals_heard[] = {SIGTERM, SIGINT, SIGHUP};
int ends[2] = {-1, -1};  // of the pipe from the handler, which may do no more than write, to the loop

void pass_on(int signal) {
  const char byte = static_cast<char>(signal);
  [[maybe_unused]] const ssize_t written = ::write(ends[1], &byte, 1);
}

}  // namespace

Termination::Termination() {
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this] {
    char signal = 0;
    if (::read(ends[0], &signal, 1) == 1) emit asked(signal);
  });
  struct sigaction action {};
  action.sa_handler = pass_on;
  action.sa_flags = SA_RESTART;
  for (const int signal : signals_heard) ::sigaction(signal, &action, nullptr);
}

Termination::~Termination() {
  for (const int signal : signals_heard) ::signal(signal, SIG_DFL);
  for (int& end : ends) {
    if (end >= 0) ::close(end);
    end = -1;
  }
}

}  // namespace tvx::htmled
