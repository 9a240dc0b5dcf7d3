#include "editing/case_file.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace tvx::editing::test {
namespace {

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    const char next = text[++i];
    result += next == 'n' ? '\n' : next == 'r' ? '\r' : next == 't' ? '\t' : next == 's' ? ' ' : next;
  }
  return result;
}

/// Line after line of one file; what it finds wrong it throws, with the line's number.
class CaseReader {
 public:
  explicit CaseReader(const std::filesystem::path& path) : path_(path) {}

  std::vector<Case> read() {
    std::ifstream in(path_);
    for (std::string line; std::getline(in, line);) {
      ++number_;
      take(line);
    }
    finish_case();
    return std::move(cases_);
  }

 private:
  [[noreturn]] void refuse(const std::string& why) const {
    throw std::runtime_error(path_.string() + ":" + std::to_string(number_) + ": " + why);
  }

  void take(const std::string& line) {
    if (line.starts_with("//")) return;
    if (line.find_first_not_of(' ') == line.npos) return;
    if (line.starts_with("# ")) {
      finish_case();
      title_ = line.substr(2);
      return;
    }
    const std::size_t word_end = std::min(line.find(' '), line.size());
    const std::string word = line.substr(0, word_end);
    const std::string rest = line.substr(std::min(line.find_first_not_of(' ', word_end), line.size()));
    if (word.empty()) {
      if (!open_) refuse("a line that goes on, but none before it");
      *open_ += unescaped(rest);
    } else if (word == "before") {
      finish_case();
      if (title_.empty()) refuse("a case without a title");
      case_ = {path_.string(), title_, number_, unescaped(rest), "", {}};
      open_ = &case_.before;
    } else if (word == "after") {
      if (case_.actions.empty()) refuse("nothing is done in this case");
      case_.after = unescaped(rest);
      open_ = &case_.after;
    } else if (word == "type" || word == "type-formatting" || word == "press" || word == "paste" ||
               word == "paste-text" || word == "command" || word == "button" || word == "table") {
      if (case_.before.empty()) refuse("a case starts with \"before\"");
      case_.actions.push_back({word, unescaped(rest)});
      open_ = &case_.actions.back().value;
    } else {
      refuse("unknown word \"" + word + "\"");
    }
  }

  void finish_case() {
    if (case_.before.empty()) return;
    if (case_.after.empty()) refuse("the case before this line has no \"after\"");
    cases_.push_back(std::exchange(case_, {}));
    open_ = nullptr;
  }

  std::filesystem::path path_;
  int number_ = 0;
  std::string title_;
  Case case_;
  std::string* open_ = nullptr;
  std::vector<Case> cases_;
};

const std::filesystem::path folder = std::filesystem::path(TVX_SOURCE_DIR) / "tests/editing/cases";

}  // namespace

std::vector<std::filesystem::path> case_files() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  std::ranges::sort(files);
  return files;
}

std::vector<Case> read_cases(const std::filesystem::path& path) { return CaseReader(path).read(); }

}  // namespace tvx::editing::test
