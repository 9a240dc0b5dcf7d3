#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "text.h"
#include "writers.h"

/// Writes what is made of the description of the control's interface:
///   write_interface <description> <folder of *.h.in> <folder for pieces> <folder for headers>
///                   [<folder of *.pyi.in> <folder for the Python module>]
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

/// A file from its form: pieces in the place of the lines that name them.
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

Pieces pieces_of(const Interface& interface) {
  Pieces pieces;
  write_core(interface, pieces);
  write_library(interface, pieces);
  write_relays(interface, pieces);
  write_hosts(interface, pieces);
  write_c(interface, pieces);
  write_designer(interface, pieces);
  write_python(interface, pieces);
  return pieces;
}

void write_forms(const fs::path& forms, const fs::path& folder, const Pieces& pieces) {
  for (const auto& file : fs::directory_iterator(forms))
    if (file.path().extension() == ".in") write(folder / file.path().stem(), header(file.path(), pieces));
}

void write_code(const Pieces& pieces, const fs::path& forms, const fs::path& folder,
                const fs::path& headers) {
  const std::string note = "// Written from src/library/tvxhtml.interface by the build.\n";
  for (const auto& [name, text] : pieces)
    if (name.ends_with(".inc")) write(folder / name, note + text);
  write_forms(forms, headers, pieces);
}

void write_module(const Pieces& pieces, const fs::path& forms, const fs::path& folder) {
  for (const auto& [name, text] : pieces)
    if (name.ends_with(".py")) write(folder / name, text);
  write_forms(forms, folder, pieces);
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 5 && count != 7)
    throw std::runtime_error(
        "use: write_interface <description> <forms> <pieces> <headers> [<forms> <module>]");
  const Pieces pieces = pieces_of(read_interface(arguments[1]));
  write_code(pieces, arguments[2], arguments[3], arguments[4]);
  if (count == 7) write_module(pieces, arguments[5], arguments[6]);
  return 0;
} catch (const std::exception& failure) {
  std::cerr << "write_interface: " << failure.what() << "\n";
  return 1;
}
