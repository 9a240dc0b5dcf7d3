#pragma once

#include <unistd.h>

#include "core/control_fixture.h"
#include "support/http_server.h"

namespace tvx::core {

/// A control and a web server. The control's clock is a virtual one, the server's isn't.
class OnTheWeb : public Control {
 protected:
  OnTheWeb() { setenv("no_proxy", "*", 1); }
  bool wait_for(const std::function<bool()>& condition) {
    for (int i = 0; i < 30'000 && !condition(); ++i) {
      loop.pump(0);
      usleep(1000);
    }
    return condition();
  }
  void settle() {
    for (int i = 0; i < 30; ++i) {
      loop.settle();
      usleep(1000);
    }
  }
  std::u16string web(std::string_view page) const { return from_utf8(server.url(page)); }
  void let_all_pass() {
    host.on_navigate = [](std::u16string&, bool& cancel) { cancel = false; };
  }

  HttpServer server;
};

}  // namespace tvx::core
