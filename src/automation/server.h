#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tvx/automation/json.h"
#include "tvx/automation/stage.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::automation {

class Session;

/// The door for programs: JSON-RPC 2.0, one message a line, UTF-8.
///
/// Requests are carried out one after the other, in the order of their lines: one that pumps the message
/// loop or holds a dialog open lets the next ones wait. Notifications that a request causes are written
/// before its answer. No line, however broken, ends the conversation.
class Server {
 public:
  /// Takes a line without its end.
  using Write = std::function<void(std::string_view line)>;

  Server(platform::MessageLoop& loop, Write write, StageFactory make_stage = headless_stage);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Takes bytes as they come; carries out what has come whole.
  void receive(std::string_view bytes);
  /// Nothing more comes: a last line may stand without its end.
  void end();
  /// Carries out one request, or queues it while another is under way.
  void take_line(std::string line);

  Session& session() { return *session_; }

 private:
  void work();
  void answer_line(std::string_view line);
  Json answer_to(const Json& request) const;
  void write(const Json& message);

  Write write_;
  std::unique_ptr<Session> session_;
  std::string partial_;
  std::deque<std::string> waiting_;
  bool working_ = false;
};

/// The answer to one request, null where it asks for none. `do` lists of expectations use it as well.
Json answer_request(Session& session, const Json& request);

}  // namespace tvx::automation
