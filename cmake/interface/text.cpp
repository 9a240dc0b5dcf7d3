#include "text.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

constexpr std::size_t width = 110;

}  // namespace

bool starts_with(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool is_name(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char letter) {
    return std::isalnum(letter) || letter == '_';
  });
}

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == text.npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') + 1 - first));
}

std::string lower(std::string text) {
  for (char& letter : text) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  return text;
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> pieces;
  std::istringstream in(text);
  for (std::string piece; std::getline(in, piece, separator);) pieces.push_back(trimmed(piece));
  return pieces;
}

std::string joined(const std::vector<std::string>& pieces, const std::string& between) {
  std::string text;
  for (const std::string& piece : pieces) text += (text.empty() ? "" : between) + piece;
  return text;
}

std::string broken(const std::string& line) {
  const std::size_t bracket = line.find('(');
  if (line.size() <= width || bracket == line.npos) return line;
  std::string lines, rest = line;
  while (rest.size() > width) {
    const std::size_t comma = rest.rfind(", ", width - 1);
    if (comma == rest.npos || comma <= bracket) break;
    lines += rest.substr(0, comma + 1) + "\n";
    rest = std::string(bracket + 1, ' ') + rest.substr(comma + 2);
  }
  return lines + rest;
}

std::string comment(const std::vector<std::string>& paragraphs, const std::string& indent) {
  std::string lines, line = indent + "///";
  for (const std::string& paragraph : paragraphs) {
    std::istringstream words(paragraph);
    for (std::string word; words >> word;) {
      if (line.size() + 1 + word.size() > width) {
        lines += line + "\n";
        line = indent + "///";
      }
      line += " " + word;
    }
  }
  return lines + line + "\n";
}

std::string literal(std::string_view text) {
  std::string code = "u\"";
  for (const char letter : text) {
    if (letter == '"' || letter == '\\') code += '\\';
    code += letter;
  }
  return code + "\"";
}
