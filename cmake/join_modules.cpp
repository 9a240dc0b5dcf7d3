// Joins the ES modules of a folder into one script: join_modules <entry.js> <joined.js>.
//
// The modules stand one after the other in one scope, each after those that it imports. So that this means
// what the modules mean by themselves, imports are named one by one from files beside them, no module
// declares a name twice at its top level, no two modules have one in common there, and a name that one
// exports is another's only where it is imported.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Module {
  std::string name;                            // of its file
  std::string code;                            // without imports
  std::string bare;                            // the code, blanks for comments and the insides of strings
  std::map<std::string, std::string> imports;  // name to file
  std::set<std::string> declared;              // at the top level
  std::set<std::string> exported;
};

[[noreturn]] void fail(const Module& module, std::size_t at, const std::string& what) {
  const auto line =
      1 + std::count(module.code.begin(), module.code.begin() + static_cast<std::ptrdiff_t>(at), '\n');
  throw std::runtime_error(module.name + ":" + std::to_string(line) + ": " + what);
}

bool is_word(char character) {
  return std::isalnum(static_cast<unsigned char>(character)) || character == '_' || character == '$';
}

void blank(std::string& text, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < std::min(to, text.size()); ++i) {
    if (text[i] != '\n') text[i] = ' ';
  }
}

/// The end of a string in quotes that starts at `at`.
std::size_t end_of_string(const std::string& code, std::size_t at) {
  std::size_t end = at + 1;
  while (end < code.size() && code[end] != code[at] && code[end] != '\n') end += code[end] == '\\' ? 2 : 1;
  return std::min(end + 1, code.size());
}

/// The end of the text of a template from `at`: after its last quote, or after "${".
std::size_t end_of_template_text(const std::string& code, std::size_t at) {
  while (at < code.size() && code[at] != '`' && code.compare(at, 2, "${") != 0)
    at += code[at] == '\\' ? 2 : 1;
  return std::min(at + (at < code.size() && code[at] == '$' ? 2 : 1), code.size());
}

std::string without_texts(const std::string& code) {
  std::string bare = code;
  std::vector<int> braces;  // open within the code of each template that surrounds the place
  for (std::size_t i = 0; i < code.size();) {
    std::size_t end = i;
    if (code.compare(i, 2, "//") == 0)
      end = std::min(code.find('\n', i), code.size());
    else if (code.compare(i, 2, "/*") == 0)
      end = std::min(code.find("*/", i), code.size() - 2) + 2;
    else if (code[i] == '\'' || code[i] == '"')
      end = end_of_string(code, i);
    else if (code[i] == '`' || (code[i] == '}' && !braces.empty() && braces.back() == 0)) {
      if (code[i] == '}') braces.pop_back();
      end = end_of_template_text(code, i + 1);
      if (code[end - 1] == '{') braces.push_back(0);
    } else if (!braces.empty() && (code[i] == '{' || code[i] == '}')) {
      braces.back() += code[i] == '{' ? 1 : -1;
    }
    blank(bare, i, end);
    i = std::max(end, i + 1);
  }
  return bare;
}

/// Takes the imports out, and leaves their lines empty.
void take_imports(Module& module) {
  static const std::regex form(R"(import \{([^}]*)\} from '\./(\w+\.js)';)");
  for (std::size_t at = 0; (at = module.code.find("import", at)) != std::string::npos; ++at) {
    if (at != 0 && module.code[at - 1] != '\n') continue;
    std::smatch match;
    const auto from = module.code.cbegin() + static_cast<std::ptrdiff_t>(at);
    if (!std::regex_search(from, module.code.cend(), match, form, std::regex_constants::match_continuous)) {
      fail(module, at, "an import reads: import { name, ... } from './file.js';");
    }
    std::istringstream names(match[1].str());
    for (std::string name; std::getline(names >> std::ws, name, ',');) {
      name.erase(name.find_last_not_of(" \n") + 1);
      if (!std::all_of(name.begin(), name.end(), is_word)) fail(module, at, "no name to import: " + name);
      if (!module.imports.emplace(name, match[2].str()).second) fail(module, at, "imported twice: " + name);
    }
    blank(module.code, at, at + static_cast<std::size_t>(match.length()));
  }
}

/// The names of one declaration: of a function or class its own, of variables each one.
std::vector<std::string> declared_names(const Module& module, std::size_t at, bool variables) {
  std::vector<std::string> names;
  const std::string& text = module.bare;
  int depth = 0;
  for (bool wanted = true; at < text.size(); ++at) {
    if (wanted && is_word(text[at])) {
      const std::size_t start = at;
      while (at + 1 < text.size() && is_word(text[at + 1])) ++at;
      names.push_back(text.substr(start, at + 1 - start));
      if (!variables) break;
      wanted = false;
    } else if (wanted && text[at] != ' ' && text[at] != '\n') {
      fail(module, at, "a name is declared at the top level by itself");
    } else if (std::string("([{").find(text[at]) != std::string::npos) {
      ++depth;
    } else if (std::string(")]}").find(text[at]) != std::string::npos) {
      --depth;
    } else if (depth == 0 && text[at] == ';') {
      break;
    } else if (depth == 0 && text[at] == ',') {
      wanted = true;
    }
  }
  return names;
}

/// Finds what stands at the top level, and takes the word "export" from before it.
void take_declarations(Module& module) {
  static const std::regex form(R"((export )?(function|class|const|let) )");
  for (std::size_t at = 0; at < module.bare.size();
       at = std::min(module.bare.find('\n', at), module.bare.size()) + 1) {
    std::smatch match;
    const auto from = module.bare.cbegin() + static_cast<std::ptrdiff_t>(at);
    if (!std::regex_search(from, module.bare.cend(), match, form, std::regex_constants::match_continuous)) {
      if (module.bare.compare(at, 6, "export") == 0)
        fail(module, at, "an export is a function, class, const or let");
      continue;
    }
    const bool variables = match[2] == "const" || match[2] == "let";
    const bool is_exported = match[1].matched;
    for (const auto& name :
         declared_names(module, at + static_cast<std::size_t>(match.length()), variables)) {
      if (!module.declared.insert(name).second) fail(module, at, "declared twice: " + name);
      if (is_exported) module.exported.insert(name);
    }
    if (is_exported) {
      module.bare.erase(at, 7);
      module.code.erase(at, 7);
    }
  }
}

Module read_module(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::ostringstream text;
  if (!file || !(text << file.rdbuf())) throw std::runtime_error(path.string() + ": can't be read");
  Module module{path.filename().string(), text.str(), {}, {}, {}, {}};
  take_imports(module);
  module.bare = without_texts(module.code);
  take_declarations(module);
  return module;
}

using Modules = std::map<std::string, Module>;

void check_imports(const Module& module, const Modules& all) {
  for (const auto& [name, file] : module.imports) {
    const auto from = all.find(file);
    if (from == all.end()) throw std::runtime_error(module.name + ": there is no " + file);
    if (!from->second.exported.count(name))
      throw std::runtime_error(module.name + ": " + file + " exports no " + name);
  }
}

/// Every name that another module declares is imported where it is used, and used where it is imported.
void check_names(const Module& module, const std::map<std::string, std::string>& owners) {
  std::set<std::string> used;
  const std::string& text = module.bare;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!is_word(text[at])) continue;
    const std::size_t start = at;
    while (at + 1 < text.size() && is_word(text[at + 1])) ++at;
    if (start > 0 && text[start - 1] == '.' && (start < 3 || text.compare(start - 3, 3, "...") != 0))
      continue;
    const std::string name = text.substr(start, at + 1 - start);
    const bool is_key = at + 1 < text.size() && text[at + 1] == ':';
    if (const auto owner = owners.find(name);
        owner != owners.end() && owner->second != module.name && !is_key) {
      if (!module.imports.count(name)) {
        fail(module, start,
             name + " is a name of " + owner->second + ": import it, or name this one otherwise");
      }
      used.insert(name);
    }
  }
  for (const auto& [name, file] : module.imports) {
    if (!used.count(name))
      throw std::runtime_error(module.name + ": imports " + name + " and doesn't use it");
  }
}

std::map<std::string, std::string> owners_of_names(const Modules& all) {
  std::map<std::string, std::string> owners;
  for (const auto& [file, module] : all) {
    for (const std::string& name : module.declared) {
      const auto [found, is_new] = owners.emplace(name, file);
      if (!is_new) throw std::runtime_error(file + ": " + found->second + " has a name " + name + " too");
    }
  }
  return owners;
}

/// Appends a module after those that it imports.
void append(const std::string& file, const Modules& all, std::set<std::string>& done, std::string& joined) {
  if (!done.insert(file).second) return;
  const Module& module = all.at(file);
  for (const auto& [name, from] : module.imports) append(from, all, done, joined);
  joined += "// --- " + file + " ---\n" + module.code + "\n";
}

std::string join(const std::filesystem::path& entry) {
  Modules all;
  for (const auto& file : std::filesystem::directory_iterator(entry.parent_path())) {
    if (file.path().extension() == ".js")
      all.emplace(file.path().filename().string(), read_module(file.path()));
  }
  const auto owners = owners_of_names(all);
  for (const auto& [file, module] : all) {
    check_imports(module, all);
    check_names(module, owners);
  }
  std::set<std::string> done;
  std::string joined = "'use strict';\n";
  append(entry.filename().string(), all, done, joined);
  for (const auto& [file, module] : all) {
    if (!done.count(file)) throw std::runtime_error(file + ": is imported by nobody");
  }
  return joined;
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 3) throw std::runtime_error("use: join_modules <entry.js> <joined.js>");
  const std::string joined = join(std::filesystem::absolute(arguments[1]));
  std::ofstream out(arguments[2], std::ios::binary);
  if (!(out << joined << std::flush))
    throw std::runtime_error(std::string(arguments[2]) + ": can't be written");
  return 0;
} catch (const std::exception& failure) {
  std::cerr << "join_modules: " << failure.what() << "\n";
  return 1;
}
