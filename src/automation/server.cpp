#include "tvx/automation/server.h"

#include <charconv>
#include <optional>

#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::automation {

namespace {

Json error_answer(const Json& id, int code, std::string_view text) {
  return {{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", text}}}};
}

/// JSON-RPC 2.0, section 4: an id is a text, a number or null; nobody can refer to anything else.
bool is_id(const Json& id) { return id.is_string() || id.is_number() || id.is_null(); }

/// Calls the method. Whoever fails, for whatever reason, the client hears of it and the session goes on.
Json run_method(Session& session, const Json& request, const Json& id) {
  try {
    const Method* method = find_method(request["method"].get_ref<const std::string&>());
    if (!method) throw ProtocolError(ProtocolError::method_not_found, "Method not found");
    const auto params = request.find("params");
    if (params != request.end() && !params->is_object())
      throw ProtocolError(ProtocolError::invalid_params, "Invalid params: they go by name, in an object");
    const Json object = params == request.end() ? Json::object() : *params;
    return {{"jsonrpc", "2.0"}, {"id", id}, {"result", method->run(session, Params(object))}};
  } catch (const ProtocolError& error) {
    return error_answer(id, error.code(), error.what());
  } catch (const RuntimeError& error) {
    return error_answer(id, error.number(), to_utf8(error.text()));
  } catch (const std::exception& error) {
    return error_answer(id, ProtocolError::internal_error, std::string("Internal error: ") + error.what());
  }
}

}  // namespace

Json answer_request(Session& session, const Json& request) {
  if (!request.is_object() || !request.contains("method") || !request["method"].is_string() ||
      (request.contains("id") && !is_id(request["id"])))
    return error_answer(nullptr, ProtocolError::invalid_request, "Invalid request");
  const Json id = request.contains("id") ? request["id"] : Json();
  const Json answer = run_method(session, request, id);
  return request.contains("id") ? answer : Json();
}

Server::Server(platform::MessageLoop& loop, Write write, StageFactory make_stage)
    : write_(std::move(write)),
      session_(std::make_unique<Session>(
          loop,
          [this](std::string_view method, Json params) {
            this->write({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}});
          },
          std::move(make_stage))) {}

Server::~Server() = default;

void Server::receive(std::string_view bytes) {
  for (std::size_t end; (end = bytes.find('\n')) != bytes.npos; bytes.remove_prefix(end + 1)) {
    partial_.append(bytes.substr(0, end));
    take_line(std::exchange(partial_, {}));
  }
  partial_.append(bytes);
}

void Server::end() {
  if (!partial_.empty()) take_line(std::exchange(partial_, {}));
}

void Server::take_line(std::string line) {
  if (line.find_first_not_of(" \t\r") == line.npos) return;
  waiting_.push_back(std::move(line));
  work();
}

void Server::work() {
  if (working_) return;
  working_ = true;
  while (!waiting_.empty()) {
    const std::string line = std::move(waiting_.front());
    waiting_.pop_front();
    answer_line(line);
  }
  working_ = false;
}

namespace {

// The JSON library copies and drops nested values by recursion: what is deeper than any request means is
// refused before it is read.
constexpr int deepest_line = 200;

bool is_too_deep(std::string_view line) {
  int depth = 0;
  bool in_text = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (in_text) {
      if (c == '\\') ++i;
      if (c == '"') in_text = false;
    } else if (c == '"') {
      in_text = true;
    } else if (c == '[' || c == '{') {
      if (++depth > deepest_line) return true;
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return false;
}

/// The number that four hexadecimal digits after "\\u" give; nothing where there is no such escape.
std::optional<unsigned> escaped_unit(std::string_view line, std::size_t at) {
  if (line.size() < at + 6 || line.substr(at, 2) != "\\u") return std::nullopt;
  unsigned unit = 0;
  const char* end = line.data() + at + 6;
  const auto read = std::from_chars(line.data() + at + 2, end, unit, 16);
  return read.ptr == end ? std::optional(unit) : std::nullopt;
}

/// The line with U+FFFD for halves of characters. JSON's grammar has them, UTF-8 has not: they would be no
/// text, and the request one that nobody can refer to.
std::string without_lone_surrogates(std::string_view line) {
  std::string result(line);
  for (std::size_t at = line.find('\\'); at != line.npos; at = line.find('\\', at)) {
    const unsigned unit = escaped_unit(line, at).value_or(0), next = escaped_unit(line, at + 6).value_or(0);
    const bool high = unit >= 0xD800 && unit < 0xDC00, low = unit >= 0xDC00 && unit < 0xE000;
    const bool pair = high && next >= 0xDC00 && next < 0xE000;
    if ((high && !pair) || low) result.replace(at + 2, 4, "FFFD");
    at += pair ? 12 : 2;
  }
  return result;
}

}  // namespace

void Server::answer_line(std::string_view line) {
  if (is_too_deep(line))
    return write(error_answer(nullptr, ProtocolError::parse_error, "Parse error: too deep"));
  Json request = Json::parse(line, nullptr, false);
  if (request.is_discarded()) request = Json::parse(without_lone_surrogates(line), nullptr, false);
  if (request.is_discarded()) return write(error_answer(nullptr, ProtocolError::parse_error, "Parse error"));
  const Json answer = answer_request(*session_, request);
  session_->settle();
  session_->bury();
  if (!answer.is_null()) write(answer);
}

void Server::write(const Json& message) {
  write_(message.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace tvx::automation
