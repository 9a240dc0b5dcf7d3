#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace tvx::spelling {

/// The words of a file, one a line, in UTF-8 or the system code page. What is appended to the file, by
/// whichever program, counts at once.
class WordList {
 public:
  explicit WordList(std::string path) : path_(std::move(path)) {}

  /// A word in small letters counts with a capital too, and in capitals.
  bool has(std::u16string_view word);
  const std::string& path() const { return path_; }

 private:
  void read_if_changed();

  std::string path_;
  std::set<std::u16string, std::less<>> words_;
  std::int64_t size_ = -1, changed_ = 0;  // of the file as it was read
};

/// The lines of such a file's bytes, trimmed, without empty ones.
std::set<std::u16string, std::less<>> words_of_lines(std::string_view bytes);

/// The user's own words: a file in the user's data folder that all programs with this control share.
std::string user_words_path();
/// Makes the file where there is none. False where there can be none.
bool make_user_words();
/// False where it couldn't be written. Others may write at the same time: no word is lost.
bool add_to_user_words(std::u16string_view word);

}  // namespace tvx::spelling
