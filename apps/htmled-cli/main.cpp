#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "tvx/automation/server.h"
#include "tvx/headless/message_loop.h"
#include "tvx/library/members/reference.h"

namespace {

constexpr const char* help = R"(usage: htmled-cli [--help | --version | --reference]

Drives HTMLed, a visual HTML editor, with no screen: JSON-RPC 2.0 on standard input and output,
one message a line, UTF-8. Instance 1 exists from the start. Ends with 0 at the end of the input.

A worked example; paste it into a shell:

  htmled-cli <<'END'
  {"jsonrpc":"2.0","id":1,"method":"document.load","params":{"html":"<p>Hello [world]"}}
  {"jsonrpc":"2.0","id":2,"method":"document.exec","params":{"command":"bold"}}
  {"jsonrpc":"2.0","id":3,"method":"document.dump","params":{"marks":true}}
  END

prints an answer a line, the last of them

  {"jsonrpc":"2.0","id":3,"result":{"html":"<P>Hello <B>[world]</B></P>"}}

docs/automation.md describes every method, and what failures look like. --reference prints all properties,
operations and events of the control, as they stand in docs/reference.md.
)";

void write_line(std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

/// Reads what is there; false at the end of the input.
bool read_some(tvx::automation::Server& server) {
  char buffer[64 * 1024];
  const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
  if (count > 0) server.receive({buffer, static_cast<std::size_t>(count)});
  return count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
}

int serve() {
  tvx::headless::MessageLoop loop;
  tvx::automation::Server server(loop, write_line);
  loop.watch(STDIN_FILENO, [&] {
    if (read_some(server)) return;
    server.end();
    loop.unwatch(STDIN_FILENO);
    loop.quit();
  });
  loop.run();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 1) return serve();
  const std::string_view option = argv[1];
  if (argc == 2 && option == "--help") return std::fputs(help, stdout) < 0;
  if (argc == 2 && option == "--version") return std::puts("htmled-cli " TVX_VERSION) < 0;
  if (argc == 2 && option == "--reference") return std::fputs(tvx::library::reference().c_str(), stdout) < 0;
  std::fprintf(stderr, "htmled-cli: unknown argument '%s'; try --help\n", argv[1]);
  return 2;
}
