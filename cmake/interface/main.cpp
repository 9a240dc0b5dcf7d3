#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "text.h"
#include "writers.h"

/// Writes what is made of the description of the control's interface:
///   write_interface <description> <folder of *.h.in> <folder for pieces> <folder for headers>
/// What would be written as it stands is left alone, so that nothing that includes it is compiled anew.
namespace {

namespace fs = std::filesystem;

std::string content_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void write(const fs::path& path, const std::string& text) {
  if (fs::exists(path) && content_of(path) == text) return;
  std::ofstream file(path, std::ios::binary);
  if (!(file << text << std::flush)) throw std::runtime_error(path.string() + ": can't be written");
}

/// A header from its form: pieces in the place of the lines that name them.
std::string header(const fs::path& form, const Pieces& pieces) {
  std::ifstream file(form);
  if (!file) throw std::runtime_error(form.string() + ": can't be read");
  std::string text;
  for (std::string line; std::getline(file, line);) {
    if (line.size() > 2 && line.front() == '@' && line.back() == '@') {
      const auto piece = pieces.find(line.substr(1, line.size() - 2));
      if (piece == pieces.end()) throw std::runtime_error(form.string() + ": there is no piece " + line);
      text += piece->second;
    } else {
      text += line + "\n";
    }
  }
  return text;
}

void run(const fs::path& description, const fs::path& forms, const fs::path& folder,
         const fs::path& headers) {
  const Interface interface = read_interface(description.string());
  Pieces pieces;
  write_core(interface, pieces);
  write_library(interface, pieces);
  write_relays(interface, pieces);
  write_hosts(interface, pieces);
  write_c(interface, pieces);
  write_designer(interface, pieces);
  const std::string note = "// Written from src/library/tvxhtml.interface by the build.\n";
  for (const auto& [name, text] : pieces)
    if (name.ends_with(".inc")) write(folder / name, note + text);
  for (const auto& file : fs::directory_iterator(forms))
    if (file.path().extension() == ".in") write(headers / file.path().stem(), header(file.path(), pieces));
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 5) throw std::runtime_error("use: write_interface <description> <forms> <pieces> <headers>");
  run(arguments[1], arguments[2], arguments[3], arguments[4]);
  return 0;
} catch (const std::exception& failure) {
  std::cerr << "write_interface: " << failure.what() << "\n";
  return 1;
}
