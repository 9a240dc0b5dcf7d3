#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The files of cases/, as cases/README.md says.
namespace tvx::editing::test {

/// What a person or a program does, as a line tells it.
struct Action {
  std::string kind, value;
};

struct Case {
  std::string file, title;
  int line = 0;
  std::string before, after;
  std::vector<Action> actions;
};

/// All files of cases/, by name.
std::vector<std::filesystem::path> case_files();
/// Throws with the line's number where a file can't be understood.
std::vector<Case> read_cases(const std::filesystem::path& path);

}  // namespace tvx::editing::test
