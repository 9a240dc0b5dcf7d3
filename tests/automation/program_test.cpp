#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <vector>

#include "support/http_server.h"

/// The program itself, with pipes.
namespace tvx::automation::test {
namespace {

struct Outcome {
  int exit_code = -1;
  std::vector<std::string> lines;
};

Outcome run(const std::string& arguments, const std::string& input) {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("htmled-cli-test-" + std::to_string(getpid()));
  std::ofstream(file) << input;
  const std::string command = std::string(TVX_BIN_DIR) + "/htmled-cli " + arguments + " <" + file.string();
  Outcome outcome;
  FILE* pipe = popen(command.c_str(), "r");
  std::string text;
  std::array<char, 4096> buffer;
  for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
    text.append(buffer.data(), count);
  outcome.exit_code = WEXITSTATUS(pclose(pipe));
  std::filesystem::remove(file);
  for (std::size_t start = 0, end; (end = text.find('\n', start)) != text.npos; start = end + 1)
    outcome.lines.push_back(text.substr(start, end - start));
  return outcome;
}

TEST(Program, AnswersLineByLineAndEndsWithItsInput) {
  const Outcome outcome =
      run("",
          "{\"id\":1,\"method\":\"set\",\"params\":{\"name\":\"DocumentHTML\",\"value\":\"<p>\u00e9</p>\"}}\n"
          "broken\n"
          "{\"id\":2,\"method\":\"document.dump\"}");
  EXPECT_EQ(outcome.exit_code, 0);
  ASSERT_GE(outcome.lines.size(), 3u);
  const auto last = nlohmann::json::parse(outcome.lines.back());
  EXPECT_EQ(last["id"], 2);
  EXPECT_EQ(last["result"]["html"], "<P>\u00e9</P>");
  EXPECT_EQ(nlohmann::json::parse(outcome.lines[outcome.lines.size() - 2])["error"]["code"], -32700);
}

TEST(Program, TheExampleOfItsHelpIsTrue) {
  const Outcome help = run("--help", "");
  EXPECT_EQ(help.exit_code, 0);
  std::string input, expected;
  for (const std::string& line : help.lines) {
    const std::size_t start = line.find('{');
    if (start == line.npos) continue;
    if (line.find("\"method\"") != line.npos) input += line.substr(start) + "\n";
    if (line.find("\"result\"") != line.npos) expected = line.substr(start);
  }
  const Outcome outcome = run("", input);
  ASSERT_FALSE(outcome.lines.empty());
  EXPECT_EQ(outcome.lines.back(), expected);
}

TEST(Program, TheConversationOfTheDocumentationIsTrue) {
  std::ifstream file(TVX_SOURCE_DIR "/docs/automation.md");
  std::string line, input, expected;
  while (expected.empty() && std::getline(file, line)) {
    if (line.starts_with("{\"jsonrpc\"") && line.find("\"method\"") != line.npos) input += line + "\n";
    if (line.starts_with("{\"jsonrpc\"") && line.find("\"result\"") != line.npos) expected = line;
  }
  const Outcome outcome = run("", input);
  ASSERT_FALSE(outcome.lines.empty());
  EXPECT_EQ(outcome.lines.back(), expected);
}

TEST(Program, SaysItsVersionAndRefusesTheRest) {
  const Outcome version = run("--version", "");
  EXPECT_EQ(version.exit_code, 0);
  ASSERT_EQ(version.lines.size(), 1u);
  EXPECT_TRUE(version.lines[0].starts_with("htmled-cli "));
  EXPECT_EQ(run("--nonsense 2>/dev/null", "").exit_code, 2);
}

// In the program itself, since its clock is the real one.
TEST(Program, NavigatesToServersAndIntoFrames) {
  setenv("no_proxy", "*", 1);
  HttpServer server;
  server.redirect("/old", "/page");
  server.serve("/page", "<p>there</p><iframe name=side src=''></iframe>");
  server.serve("/inner", "<p>inner");
  const auto navigate = [&](const std::string& path, const std::string& more = "") {
    return "{\"id\":1,\"method\":\"navigate\",\"params\":{\"url\":\"" + server.url(path) + "\"" + more +
           "}}\n";
  };
  const Outcome outcome =
      run("", navigate("/old") +
                  "{\"id\":2,\"method\":\"answer\",\"params\":{\"event\":\"BeforeNavigate\","
                  "\"set\":{\"CancelNavigate\":false}}}\n" +
                  navigate("/old") + navigate("/inner", ",\"frame\":\"side\"") + navigate("/missing") +
                  "{\"id\":3,\"method\":\"document.dump\"}\n");
  std::vector<nlohmann::json> answers, events;
  for (const std::string& line : outcome.lines) {
    const auto message = nlohmann::json::parse(line);
    if (message.contains("id"))
      answers.push_back(message["result"]);
    else if (message["method"] == "event")
      events.push_back(message["params"]);
  }
  ASSERT_EQ(answers.size(), 6u);
  EXPECT_EQ(answers[0]["cancelled"], true);
  EXPECT_EQ(answers[2], (nlohmann::json{{"cancelled", false}, {"url", server.url("/page")}}));
  EXPECT_EQ(answers[3], (nlohmann::json{{"cancelled", false}, {"url", server.url("/page")}}));
  EXPECT_EQ(server.count("/inner"), 1u);
  EXPECT_EQ(answers[4]["url"], server.url("/page"));
  EXPECT_EQ(answers[5]["html"], "<P>there</P><IFRAME name=\"side\" src=\"\"></IFRAME>");
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(events.back()["name"], "Error");
  EXPECT_EQ(events.back()["args"]["errNo"], 20000);
}

}  // namespace
}  // namespace tvx::automation::test
