#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

class ServerTest : public Conversation {};

TEST_F(ServerTest, BrokenLinesAreAnsweredAndTheSessionGoesOn) {
  struct {
    const char* line;
    int code;
  } const cases[] = {{"garbage\n", -32700},
                     {"{\"id\":1\n", -32700},
                     {"[]\n", -32600},
                     {"17\n", -32600},
                     {"{\"id\":1}\n", -32600},
                     {"{\"id\":{},\"method\":\"get\"}\n", -32600},
                     {"{\"id\":1,\"method\":5}\n", -32600}};
  for (const auto& [line, code] : cases) {
    const std::vector<Json> said = say(line);
    ASSERT_EQ(said.size(), 1u) << line;
    EXPECT_EQ(said[0]["error"]["code"], code) << line;
    EXPECT_TRUE(said[0]["id"].is_null()) << line;
  }
  EXPECT_EQ(get("FTPPort"), 21);
}

// Programs write out the texts that they have, and a text may end in the midst of a character.
TEST_F(ServerTest, HalvesOfCharactersAreTakenForWhatCantBeRead) {
  const auto asked = [&](const std::string& value) {
    const std::vector<Json> said =
        say(R"({"id":7,"method":"set","params":{"name":"DocumentTitle","value":")" + value + "\"}}\n");
    EXPECT_EQ(said.back()["id"], 7) << value;
    EXPECT_TRUE(said.back().contains("result")) << said.back();
    return get("DocumentTitle").get<std::string>();
  };
  EXPECT_EQ(asked(R"(a\ud800b)"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(asked(R"(\udc00)"), "\xEF\xBF\xBD");
  EXPECT_EQ(asked(R"(\ud800\ud83d\ude00\\ud800)"), "\xEF\xBF\xBD\xF0\x9F\x98\x80\\ud800");
  const std::vector<Json> said = say("{\"id\":\"\\uDBFF\",\"method\":\"\\ud800\"}\n");
  EXPECT_EQ(said[0]["error"]["code"], -32601);
  EXPECT_EQ(said[0]["id"], "\xEF\xBF\xBD");
  EXPECT_EQ(say(R"({"id":1,"method":"\ud8)"
                "\n")[0]["error"]["code"],
            -32700);
}

TEST_F(ServerTest, UnknownMethodsAndParametersAreRefused) {
  EXPECT_EQ(failure("nothing"), -32601);
  EXPECT_EQ(failure("get"), -32602);
  EXPECT_EQ(failure("get", Json::array({"FTPPort"})), -32602);
  EXPECT_EQ(failure("get", {{"name", 5}}), -32602);
  EXPECT_EQ(failure("get", {{"name", "FTPPort"}, {"instance", 7}}), -32602);
}

TEST_F(ServerTest, LinesMayComeInPiecesAndManyAtOnce) {
  EXPECT_TRUE(say("{\"id\":1,\"method\":\"get\",\"pa").empty());
  EXPECT_TRUE(say("rams\":{\"name\":\"FTPPort\"}}").empty());
  const std::vector<Json> said = say("\n\n \r\n{\"id\":\"two\",\"method\":\"pump\"}\n");
  ASSERT_EQ(said.size(), 2u);
  EXPECT_EQ(said[0]["result"]["value"], 21);
  EXPECT_EQ(said[1]["id"], "two");
}

TEST_F(ServerTest, ARequestWithoutIdIsCarriedOutAndNotAnswered) {
  for (const Json& message : say("{\"method\":\"set\",\"params\":{\"name\":\"FTPPort\",\"value\":2121}}\n"))
    EXPECT_EQ(message["method"], "propertyChanged");
  EXPECT_EQ(get("FTPPort"), 2121);
}

TEST_F(ServerTest, DeepListsAreNoDanger) {
  const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
  const std::vector<Json> said =
      say("{\"id\":1,\"method\":\"set\",\"params\":{\"name\":\"BaseURL\",\"value\":" + deep + "}}\n");
  ASSERT_EQ(said.size(), 1u);
  EXPECT_EQ(said[0]["error"]["code"], -32700);
  EXPECT_EQ(get("BaseURL"), "http://");
}

TEST_F(ServerTest, PumpLetsTimePass) {
  const std::int64_t before = loop.now();
  result("pump", {{"ms", 250}});
  EXPECT_GE(loop.now(), before + 250);
}

}  // namespace
}  // namespace tvx::automation::test
