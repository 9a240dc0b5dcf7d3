#include "dom/parse_vectors.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "tvx/base/strings.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"

namespace tvx::dom {
namespace {

std::vector<std::string> lines_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

bool is_section(const std::string& line) {
  return line == "#data" || line == "#errors" || line == "#new-errors" || line == "#document-fragment" ||
         line == "#script-off" || line == "#script-on" || line == "#document";
}

// Reads one case from its #data line on and returns the index after it.
std::size_t read_case(const std::vector<std::string>& lines, std::size_t at, ParseCase& test) {
  test.line = static_cast<int>(at) + 1;
  std::string section, data, tree;
  for (; at < lines.size(); ++at) {
    const std::string& line = lines[at];
    const bool in_tree = section == "#document";
    if (in_tree && line.empty() && at + 1 < lines.size() && lines[at + 1] == "#data") break;
    // A text in the tree may hold lines that look like sections.
    if (!in_tree && is_section(line)) {
      section = line;
      if (section == "#script-on") test.script_on = true;
    } else if (section == "#data") {
      data += line + '\n';
    } else if (section == "#document-fragment") {
      test.fragment = from_utf8(line);
    } else if (in_tree) {
      tree += line + '\n';
    }
  }
  if (!data.empty()) data.pop_back();
  while (tree.ends_with('\n')) tree.pop_back();
  test.data = from_utf8(data);
  test.tree = from_utf8(tree);
  return at + 1;
}

FragmentContext context_named(std::u16string_view text) {
  FragmentContext context;
  if (text.starts_with(u"svg ")) {
    context.name_space = Namespace::Svg;
    text.remove_prefix(4);
  } else if (text.starts_with(u"math ")) {
    context.name_space = Namespace::MathMl;
    text.remove_prefix(5);
  }
  context.name = Name(text);
  return context;
}

}  // namespace

std::filesystem::path vectors_folder(const char* name) {
  const std::filesystem::path folder = std::filesystem::path(TVX_SHARED_DIR) / "vectors" / name;
  return std::filesystem::is_directory(folder) ? folder : std::filesystem::path();
}

std::vector<ParseCase> read_parse_cases() {
  std::vector<ParseCase> cases;
  const std::filesystem::path folder = vectors_folder("html-parsing");
  if (folder.empty()) return cases;
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const bool scripted = entry.path().parent_path().filename() == "scripted";
    if (entry.path().extension() == ".dat" && !scripted) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (const auto& path : files) {
    const std::vector<std::string> lines = lines_of(path);
    std::size_t at = 0;
    while (at < lines.size()) {
      ParseCase test;
      test.file = path.filename().string();
      at = read_case(lines, at, test);
      if (!test.script_on) cases.push_back(std::move(test));
    }
  }
  return cases;
}

Ref<Node> parse_case(const ParseCase& test) {
  if (!test.fragment) return parse_document(test.data);
  const Ref<Document> document = Document::create();
  return parse_fragment(*document, context_named(*test.fragment), test.data);
}

std::u16string parse_and_print(const ParseCase& test) { return print_tree(*parse_case(test)); }

}  // namespace tvx::dom
