#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tvx/dom/document.h"

namespace tvx::dom {

/// One case of the public tree construction data.
struct ParseCase {
  std::string file;
  int line = 0;  // of its #data
  std::u16string data;
  std::optional<std::u16string> fragment;  // "div", "svg path"
  bool script_on = false;
  std::u16string tree;
};

/// Where the public test data is; empty if it isn't there.
std::filesystem::path vectors_folder(const char* name);
/// All cases without those that need a script engine to run.
std::vector<ParseCase> read_parse_cases();

/// The document or fragment that our parser makes of a case.
Ref<Node> parse_case(const ParseCase& test);
/// Its tree as printed.
std::u16string parse_and_print(const ParseCase& test);

}  // namespace tvx::dom
