// The program for scripts, found where the editor is installed.
#include <cstdio>
#include <string>

int main() {
  const std::string ask = R"({"jsonrpc":"2.0","id":1,"method":"get","params":{"name":"FTPPort"}})";
  FILE* answers = popen(("echo '" + ask + "' | " CLI).c_str(), "r");
  char line[1024] = "";
  const bool answered = answers && std::fgets(line, sizeof line, answers);
  std::fputs(line, stderr);
  if (answers) pclose(answers);
  return answered && std::string(line).find("\"value\":21") != std::string::npos ? 0 : 1;
}
