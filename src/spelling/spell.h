#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/spelling/application.h"

namespace tvx::spelling {

/// Whether a word is right, and what it could have been: asks the application, which it starts and ends. It
/// has no dictionary of its own. A failure of the application reads as a wrong word without suggestions.
class clsSpell {
 public:
  explicit clsSpell(const StartApplication& start);
  ~clsSpell();
  clsSpell(const clsSpell&) = delete;
  clsSpell& operator=(const clsSpell&) = delete;

  /// True if the word is right or empty. Of a wrong word with suggestions, `count` is how many there are and
  /// `suggestions` holds them; the array counts from 1, so that its first entry stays what it was.
  bool SpellCheckWord(const std::u16string& word, std::vector<std::u16string>& suggestions,
                      std::int32_t& count);

  // --- lists that a caller may keep; the words count in any letters ---
  void ClearIgnoredWords() { ignored_.clear(); }
  bool IsWordIgnored(std::u16string_view word) const;
  void AddWordToIgnoredList(const std::u16string& word);
  void ClearChangedWords() { changed_.clear(); }
  bool IsWordChanged(std::u16string_view word) const;
  void AddWordToChangedList(const std::u16string& old_word, const std::u16string& new_word);
  /// Empty if there is none.
  std::u16string GetChangedWord(std::u16string_view word) const;

  // --- files of one word a line ---
  static bool DoesFileExists(std::u16string_view file);
  /// A bare name is a file of the current folder. A failure is swallowed.
  static void AppendToAddWordsFile(std::u16string_view file, std::u16string_view word);

  const std::u16string& NameOfCustomDict() const { return custom_dictionary_; }
  void set_NameOfCustomDict(std::u16string_view file) { custom_dictionary_ = file; }
  bool UseMainDictionaryOnly() const { return main_dictionary_only_; }
  void set_UseMainDictionaryOnly(bool only) { main_dictionary_only_ = only; }
  const std::u16string& NameOfAddWordsDict() const { return added_words_; }
  void set_NameOfAddWordsDict(std::u16string_view file) { added_words_ = file; }
  bool WordNotInstalled() const { return not_installed_; }
  void set_WordNotInstalled(bool missing) { not_installed_ = missing; }

  /// Null if it couldn't be started.
  SpellingApplication* application() const { return application_.get(); }

  /// What the application says of a word, without suggestions. Throws where it fails; there must be one.
  bool check(const std::u16string& word);

 private:
  /// Keys in upper case: as collections compare theirs.
  using Words = std::map<std::u16string, std::u16string, std::less<>>;

  bool main_dictionary_only_ = false;
  std::u16string custom_dictionary_, added_words_;
  Words ignored_, changed_;
  std::unique_ptr<SpellingApplication> application_;
  std::vector<std::u16string> found_;  // what the application suggested last
  bool not_installed_ = false;
};

}  // namespace tvx::spelling
