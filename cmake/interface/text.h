#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Texts as code and comments are made of.
bool starts_with(std::string_view text, std::string_view start);
bool is_name(std::string_view text);
std::string trimmed(std::string_view text);
std::string lower(std::string text);
/// The pieces between separators, without white space around them; none for an empty text.
std::vector<std::string> split(const std::string& text, char separator);
std::string joined(const std::vector<std::string>& pieces, const std::string& between = ", ");
/// A declaration or a list in lines of at most 110 characters: broken after commas, what follows stands below
/// the first bracket.
std::string broken(const std::string& line);
/// A comment of documentation in lines of at most 110 characters.
std::string comment(const std::vector<std::string>& paragraphs, const std::string& indent);
/// As a text of 16-bit characters in C++.
std::string literal(std::string_view text);
