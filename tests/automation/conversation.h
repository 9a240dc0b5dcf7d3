#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tvx/automation/server.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::automation::test {

/// A client of a server in this process; time is virtual.
class Conversation : public testing::Test {
 protected:
  /// The answer to a request, its notifications are in `told`.
  Json ask(std::string_view method, Json params = Json::object()) {
    const int id = ++last_id_;
    said_.clear();
    told.clear();
    server_.receive(Json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}}.dump() +
                    "\n");
    Json answer;
    for (const Json& message : said_) {
      if (message.contains("id"))
        answer = message;
      else
        told.push_back(message);
    }
    EXPECT_FALSE(said_.empty()) << method;
    if (!said_.empty()) {
      EXPECT_EQ(said_.back(), answer) << "the answer comes last";
    }
    EXPECT_EQ(answer.value("id", Json()), Json(id));
    return answer;
  }
  Json result(std::string_view method, Json params = Json::object()) {
    const Json answer = ask(method, params);
    EXPECT_TRUE(answer.contains("result")) << answer.dump();
    return answer.value("result", Json());
  }
  /// The number of the failure, 0 if it was none.
  int failure(std::string_view method, Json params = Json::object()) {
    const Json answer = ask(method, params);
    return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
  }
  Json get(std::string_view name) { return result("get", {{"name", name}})["value"]; }
  void set(std::string_view name, Json value) { result("set", {{"name", name}, {"value", value}}); }
  Json object(std::string_view path) { return result("object", {{"path", path}})["value"]; }

  /// What is said in answer to bytes as they stand.
  std::vector<Json> say(std::string_view bytes) {
    said_.clear();
    server_.receive(bytes);
    return said_;
  }
  /// The notifications of that name among those told before the last answer.
  std::vector<Json> told_of(std::string_view method) const {
    std::vector<Json> found;
    for (const Json& message : told)
      if (message["method"] == method) found.push_back(message["params"]);
    return found;
  }

  std::vector<Json> told;
  headless::VirtualTimeLoop loop;

 private:
  std::vector<Json> said_;
  int last_id_ = 0;
  Server server_{loop, [this](std::string_view line) { said_.push_back(Json::parse(line)); }};
};

}  // namespace tvx::automation::test
