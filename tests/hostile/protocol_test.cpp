#include <iostream>
#include <random>

#include "automation/conversation.h"

/// Lines of all kinds to the automation door: each request gets one answer, and the session goes on.
namespace tvx::hostile {
namespace {

using automation::Json;

constexpr int lines_a_seed = 400;

class Protocol : public automation::test::Conversation, public testing::WithParamInterface<unsigned> {
 protected:
  std::mt19937 random_{GetParam()};

  std::size_t below(std::size_t limit) { return random_() % limit; }
  template <std::size_t count>
  const char* one_of(const char* const (&words)[count]) {
    return words[below(count)];
  }

  Json value(int depth = 0) {
    static const char* const texts[] = {
        "",         "DocumentHTML", "docHTML", "<p>x</p>", "\xEF\xBF\xBF",
        "a.b(1).c", "..",           "((((",    "%00",      "Toolbar1.Buttons(99999999999)",
        "-1"};
    switch (below(depth > 3 ? 6 : 8)) {
      case 0: return nullptr;
      case 1: return below(2) == 0;
      case 2: return static_cast<std::int64_t>(random_()) - 2147483648LL;
      case 3: return 1e300;
      case 4: return std::string(below(2000), 'x');
      case 5: return one_of(texts);
      case 6: {
        Json list = Json::array();
        for (std::size_t i = below(4); i > 0; --i) list.push_back(value(depth + 1));
        return list;
      }
      default: {
        Json object = Json::object();
        for (std::size_t i = below(4); i > 0; --i) object[one_of(texts)] = value(depth + 1);
        return object;
      }
    }
  }
  Json request() {
    static const char* const methods[] = {
        "get",           "set",           "call",          "answer",         "expect",
        "object",        "press",         "mouse",         "select",         "clipboard",
        "fault",         "document.load", "document.exec", "document.query", "document.dump",
        "document.type", "document.key",  "document.parse"};
    static const char* const names[] = {
        "DocumentHTML",   "DOM",        "FTPPort", "EditorEnabled", "bold_document",
        "InsertAtCursor", "selectText", "nothing", "show_Code",     "RemoteContent"};
    static const char* const keys[] = {"name",    "value", "args",    "path",    "set",   "event",
                                       "command", "html",  "start",   "end",     "text",  "key",
                                       "kind",    "on",    "toolbar", "element", "times", "control"};
    Json params = Json::object();
    if (below(2)) params["name"] = one_of(names);
    for (std::size_t i = below(5); i > 0; --i) params[one_of(keys)] = value();
    return {{"jsonrpc", "2.0"}, {"method", one_of(methods)}, {"params", params}};
  }
};

TEST_P(Protocol, RequestsOfAnyShapeAreAnsweredOnce) {
  for (int id = 1; id <= lines_a_seed; ++id) {
    Json line = request();
    line["id"] = id;
    int answers = 0;
    for (const Json& message : say(line.dump() + "\n")) answers += message.value("id", Json()) == Json(id);
    ASSERT_EQ(answers, 1) << line.dump();
  }
  EXPECT_TRUE(get("FTPPort").is_number_integer());
}

TEST_P(Protocol, BrokenLinesAreAnsweredOrPassedOver) {
  for (int i = 0; i < lines_a_seed; ++i) {
    std::string line = Json(request()).dump();
    for (std::size_t breaks = 1 + below(4); breaks > 0; --breaks) {
      const std::size_t at = below(line.size());
      switch (below(3)) {
        case 0: line.erase(at, below(8)); break;
        case 1: line.insert(at, 1, static_cast<char>(random_())); break;
        default: line[at] = static_cast<char>(random_());
      }
      if (line.empty()) line = "x";
    }
    say(line + "\n");
  }
  std::cout << "[ COUNTED  ] " << 2 * lines_a_seed << " lines\n";
  EXPECT_EQ(result("document.parse", {{"html", "<p>x"}, {"context", ""}}).type(), Json::object().type());
}

class ProtocolLines : public automation::test::Conversation {};

TEST_F(ProtocolLines, NestingWithoutEndIsAnError) {
  for (const char* open : {"[", "{\"a\":"}) {
    std::string line;
    for (int i = 0; i < 200'000; ++i) line += open;
    const auto said = say(line + "\n");
    ASSERT_EQ(said.size(), 1u);
    EXPECT_TRUE(said[0].contains("error"));
  }
  EXPECT_EQ(get("FTPPort"), 21);
}

TEST_F(ProtocolLines, ALongLineIsOneRequest) {
  const std::string text(4'000'000, 'x');
  set("DocumentTitle", text);
  EXPECT_EQ(get("DocumentTitle"), text);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Protocol, testing::Range(1u, 9u));

}  // namespace
}  // namespace tvx::hostile
